// Both pages in Firefox: what is tested in Chromium in detail, once through.
import assert from 'node:assert/strict';
import {execFileSync, spawn} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {after, before, test} from 'node:test';
import {pathToFileURL} from 'node:url';
import puppeteer from 'puppeteer-core';
import {enlarge, faultsOf, ringIsFree} from './measures.mjs';

const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'firefox '));
const downloads = path.join(folder, 'downloads');
let browser;

before(async () => {
  fs.mkdirSync(downloads);
  browser = await puppeteer.launch({
    browser: 'firefox', executablePath: process.env.FIREFOX, headless: true,
    extraPrefsFirefox: {
      'browser.download.dir': downloads,
      'browser.download.folderList': 2,
      'dom.events.testing.asyncClipboard': true,
      // Whatever the machine prefers.
      'layout.css.prefers-color-scheme.content-override': 1,
    },
  });
});

after(async () => {
  await browser.close();
  fs.rmSync(folder, {recursive: true});
});

async function until(what, isSo) {
  for (const end = Date.now() + 20_000; Date.now() < end;) {
    const found = await isSo();
    if (found) return found;
    await new Promise((done) => setTimeout(done, 25));
  }
  assert.fail(`not ${what} in time`);
}

async function opened(address, complaints) {
  const page = await browser.newPage();
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(error.message));
  await page.setViewport({width: 1440, height: 900});
  await page.goto(address);
  return page;
}

// Waits until every picture of the studio shows the newest settings.
const settled = (page) => page.evaluate(async () => {
  const {theme} = await import('./theme.js');
  const pictures = () => [...document.querySelectorAll('.looked-at img, .others img')];
  while (!theme.isAtRest || pictures().length < 2 ||
         !pictures().every((it) => Number(it.dataset.revision) === theme.state.revision && it.complete)) {
    await new Promise((done) => setTimeout(done, 10));
  }
});

const value = (page, key) => page.evaluate(async (name) => (await import('./theme.js')).theme.value(name) ?? null, key);

const hasColor = (page, color) => page.evaluate(async (wanted) => {
  const image = document.querySelector('.looked-at img');
  const canvas = new OffscreenCanvas(image.naturalWidth, image.naturalHeight), drawing = canvas.getContext('2d');
  drawing.drawImage(image, 0, 0);
  const {data} = drawing.getImageData(0, 0, canvas.width, canvas.height);
  const parts = [1, 3, 5].map((at) => Number.parseInt(wanted.slice(at, at + 2), 16));
  for (let i = 0; i < data.length; i += 4) {
    if (parts.every((part, at) => data[i + at] === part)) return true;
  }
  return false;
}, color);

// Presses Tab until a control of that name has the focus.
async function tabTo(page, name) {
  for (let i = 0; i < 100; ++i) {
    await page.keyboard.press('Tab');
    const focused = await page.evaluate(() => {
      const it = document.activeElement;
      return it.getAttribute('aria-label') ?? it.labels?.[0]?.textContent ?? it.textContent.trim();
    });
    if (focused === name) return;
  }
  assert.fail(`no focus on ${name}`);
}

test('a theme is made, undone and handed on by keyboard', async () => {
  const file = path.join(folder, 'theme.plist');
  fs.writeFileSync(file, '<plist version="1.0"><dict><key>global_color</key><string>#1e88e5</string></dict></plist>');
  const child = spawn(process.env.VARNIX, ['studio', '--no-browser', file], {stdio: ['ignore', 'pipe', 'inherit']});
  const complaints = [];
  try {
    const address = await new Promise((done) => child.stdout.once('data', (text) => done(`${text}`.trim())));
    const page = await opened(address, complaints);
    await settled(page);
    assert.ok(await hasColor(page, '#1e88e5'));

    await tabTo(page, 'Colour');
    await page.keyboard.down('Control');
    await page.keyboard.press('a');
    await page.keyboard.up('Control');
    await page.keyboard.type('#12b457');
    await page.keyboard.press('Enter');
    await settled(page);
    assert.equal(await value(page, 'global_color'), '#12b457');
    assert.ok(await hasColor(page, '#12b457'));
    assert.ok(!await hasColor(page, '#1e88e5'));
    await until('saved', () => fs.readFileSync(file, 'utf8').includes('#12b457'));

    await page.evaluate(() => document.activeElement.blur());
    await page.keyboard.down('Control');
    await page.keyboard.press('z');
    await page.keyboard.up('Control');
    await until('undone', async () => await value(page, 'global_color') === '#1e88e5');
    await settled(page);
    assert.ok(await hasColor(page, '#1e88e5'));

    await page.keyboard.press('/');
    await page.keyboard.type('keyb');
    assert.deepEqual(await page.$$eval('.controls .row .title', (titles) => titles.filter((it) => it.checkVisibility()).map((it) => it.textContent)), ['Keyboard']);
    await page.$eval('.search input', (it) => { it.value = ''; it.dispatchEvent(new Event('input')); it.blur(); });

    await page.evaluate(() => document.querySelector('.reset').focus());
    await tabTo(page, 'Export');
    assert.ok(await ringIsFree(page));
    await page.keyboard.press('Enter');
    await tabTo(page, 'Copy for the phone');
    await page.keyboard.press('Enter');
    await until('copied', () => page.$eval('.exported', (it) => it.textContent.startsWith('Copied')));
    assert.match(await page.evaluate(() => navigator.clipboard.readText()), /<string>#1e88e5<\/string>/);
    await tabTo(page, 'Page with pictures');
    await page.keyboard.press('Enter');
    await until('made', () => page.$eval('.exported', (it) => it.textContent === 'theme.html is made.'));
    const saved = path.join(downloads, 'theme.html');
    await until('downloaded', () => fs.existsSync(saved) && fs.readFileSync(saved, 'utf8').endsWith('</html>\n'));
    assert.ok(fs.statSync(saved).size <= 6_000_000);
    await page.keyboard.press('Escape');

    for (const width of [375, 768, 1440]) {
      await page.setViewport({width, height: 900});
      assert.deepEqual(await faultsOf(page), [], `${width} px`);
    }
    await enlarge(page);
    assert.deepEqual(await faultsOf(page), [], 'text of 200 %');
    await page.close();

    const handedOn = await opened(pathToFileURL(saved).href, complaints);
    assert.equal(await handedOn.$$eval('img', (images) => images.filter((it) => it.naturalWidth === 375).length), 18);
    await handedOn.close();
    assert.deepEqual(complaints, []);
  } finally {
    const ended = new Promise((done) => child.once('exit', done));
    child.kill('SIGTERM');
    await ended;
  }
});

test('the gallery opens a tab and a wallpaper, and divides a screen', async () => {
  const gallery = path.join(folder, 'gallery'), complaints = [];
  execFileSync(process.env.DRAW, [gallery]);
  const page = await opened(`${pathToFileURL(path.join(gallery, 'index.html')).href}#tab=album-art&wallpaper=dark`, complaints);
  assert.equal(await page.$eval('[role=tab][aria-selected=true]', (it) => it.textContent), 'Album art');
  assert.ok(await page.$eval('input[value=dark]', (it) => it.checked));
  await page.focus('[role=tab][aria-selected=true]');
  await page.keyboard.press('ArrowLeft');
  assert.equal(await page.$eval('[role=tab][aria-selected=true]', (it) => it.textContent), 'Global colour');
  assert.match(await page.evaluate(() => location.hash), /^#tab=global-color&wallpaper=dark$/);
  for (const width of [375, 768, 1440]) {
    await page.setViewport({width, height: 900});
    assert.deepEqual(await faultsOf(page), [], `${width} px`);
  }
  await page.close();
  assert.deepEqual(complaints, []);
});
