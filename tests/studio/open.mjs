// Starts a studio and opens its page.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {after, before} from 'node:test';
import {chromium} from 'playwright-core';

let browser;

before(async () => {
  browser = await chromium.launch({executablePath: process.env.BROWSER});
});

after(() => browser.close());

export const sample = (name) => path.join(process.env.SAMPLES, name);
const list = (entries) => `<plist version="1.0"><dict>${Object.entries(entries).map(
  ([key, value]) => `<key>${key}</key><string>${value}</string>`).join('')}</dict></plist>`;

export function write(file, entries) {
  fs.writeFileSync(`${file}.new`, list(entries));
  fs.renameSync(`${file}.new`, file);
}

// Calls `use` with the page of a theme with these entries, its file and the addresses that it
// requested. Fails if the console said anything else than `complains`, or if a request went anywhere
// else.
export async function withStudio(options, use) {
  const {entries = {}, hash = '', complains = /^$/, ...contextOptions} = options;
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'studio '));
  const file = path.join(folder, 'theme.plist');
  write(file, entries);
  const child = spawn(process.env.VARNIX, ['studio', '--no-browser', file], {stdio: ['ignore', 'pipe', 'inherit']});
  const context = await browser.newContext({viewport: {width: 1440, height: 900}, ...contextOptions});
  try {
    const address = await new Promise((done) => child.stdout.once('data', (text) => done(`${text}`.trim())));
    const page = await context.newPage();
    const complaints = [], requests = [];
    page.on('console', (message) => complaints.push(message.text()));
    page.on('pageerror', (error) => complaints.push(error.stack));
    page.on('request', (request) => requests.push(request.url()));
    await page.goto(address + hash);
    await settled(page);
    await use(page, {file, requests, complaints, address, context});
    assert.deepEqual(complaints.filter((text) => !complains.test(text)), []);
    assert.deepEqual(requests.filter((url) => !url.startsWith(address) && !/^(data|blob):/.test(url)), []);
  } finally {
    await context.close();
    const ended = new Promise((done) => child.once('exit', done));
    child.kill('SIGTERM');
    await ended;
    fs.rmSync(folder, {recursive: true});
  }
}

// Waits until every picture shows the newest settings.
export async function settled(page) {
  await page.waitForFunction(() => document.querySelectorAll('.others img').length > 0);
  await page.evaluate(async () => {
    const {theme} = await import('./theme.js');
    const isSettled = () => theme.isAtRest && [...document.querySelectorAll('.looked-at img, .others img')].every(
      (it) => Number(it.dataset.revision) === theme.state.revision && it.complete);
    while (!isSettled()) await new Promise((done) => setTimeout(done, 5));
  });
}

export const value = (page, key) => page.evaluate(async (name) => (await import('./theme.js')).theme.value(name), key);

// Whether the picture has a pixel of that colour.
export const hasColor = (page, selector, color) => page.evaluate(async ([where, wanted]) => {
  const image = document.querySelector(where);
  await image.decode();
  const canvas = new OffscreenCanvas(image.naturalWidth, image.naturalHeight), drawing = canvas.getContext('2d');
  drawing.drawImage(image, 0, 0);
  const {data} = drawing.getImageData(0, 0, canvas.width, canvas.height);
  const [red, green, blue] = [1, 3, 5].map((at) => Number.parseInt(wanted.slice(at, at + 2), 16));
  for (let i = 0; i < data.length; i += 4) {
    if (data[i] === red && data[i + 1] === green && data[i + 2] === blue) return true;
  }
  return false;
}, [selector, color]);

export const large = '.looked-at img';
export const small = (screen) => `[data-screen=${screen}] img`;
export const colorField = (page, name = 'Colour') => page.getByRole('textbox', {name, exact: true}).first();
