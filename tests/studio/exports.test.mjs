// What is handed on of a theme.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import fs from 'node:fs';
import {test} from 'node:test';
import {colorField, settled, withStudio} from './open.mjs';

const entries = {global_color: '#1e88e5', cc_color: '#12b457'};
const largest = 6_000_000;
// The browser itself says so when an answer was 500.
const refusal = /the server responded with a status of 5/;

const button = (page, name) => page.locator('#exports').getByRole('button', {name, exact: true});
const open = (page) => page.getByRole('button', {name: 'Export', exact: true}).click();

async function download(page, name) {
  const [saved] = await Promise.all([page.waitForEvent('download'), button(page, name).click()]);
  return {name: saved.suggestedFilename(), bytes: fs.readFileSync(await saved.path())};
}

// Everything that an element of the page refers to.
const references = (page) => page.evaluate(() => [...document.querySelectorAll('*')].flatMap((it) =>
  [...it.attributes].filter(({name}) => ['src', 'href', 'srcset', 'data', 'action', 'poster'].includes(name)).map(({value}) => value)));

test('the text for the phone is imported as the theme, and the list is the file',
     () => withStudio({entries, permissions: ['clipboard-read', 'clipboard-write']}, async (page, {file}) => {
  await open(page);
  await button(page, 'Copy for the phone').click();
  await page.getByText('Copied. On the phone').waitFor();
  const copied = await page.evaluate(() => navigator.clipboard.readText());
  fs.writeFileSync(`${file}.text`, copied);
  execFileSync(process.env.VARNIX, ['theme', 'import', `${file}.text`, '--out', `${file}.imported`]);
  assert.equal(`${execFileSync(process.env.VARNIX, ['theme', 'diff', file, `${file}.imported`])}`, '');

  const list = await download(page, 'Settings file');
  assert.equal(list.name, 'theme.plist');
  assert.match(`${list.bytes}`, /#1e88e5/);
  fs.writeFileSync(`${file}.exported`, list.bytes);
  assert.equal(`${execFileSync(process.env.VARNIX, ['theme', 'diff', file, `${file}.exported`])}`, '');
}));

test('a page has all screens and values in it, and needs nothing else', () => withStudio({entries}, async (page, {context}) => {
  await colorField(page).fill('#7a1fc3');
  await page.keyboard.press('Enter');
  await settled(page);
  await open(page);
  const {name, bytes} = await download(page, 'Page with pictures');
  assert.equal(name, 'theme.html');
  assert.ok(bytes.length <= largest, `${bytes.length} bytes`);
  assert.doesNotMatch(`${bytes}`, /<script|url\(|@import|\ssrcset=/i);

  const requested = [];
  const offline = await context.browser().newContext({javaScriptEnabled: true, offline: true});
  const shown = await offline.newPage();
  shown.on('request', (request) => requested.push(request.url()));
  await shown.setContent(`${bytes}`);
  assert.deepEqual((await references(shown)).filter((it) => !it.startsWith('data:')), []);
  assert.deepEqual(requested.filter((url) => !url.startsWith('data:')), []);
  const pictures = await shown.evaluate(() => Promise.all([...document.images].map(async (it) => {
    await it.decode();
    return [it.alt, it.naturalWidth, it.naturalHeight];
  })));
  assert.equal(pictures.length, 18);
  assert.deepEqual(new Set(pictures.map(([, ...size]) => `${size}`)), new Set(['375,667']));
  assert.ok(pictures.some(([title]) => title === 'Control Centre, dark wallpaper'));
  assert.equal(new Set(pictures.map(([title]) => title)).size, 18);
  const rows = await shown.locator('tr').allTextContents();
  assert.deepEqual(rows.map((row) => row.trim()), ['global_color"#7a1fc3"', 'cc_color"#12b457"']);
  assert.match(await shown.locator('pre').textContent(), /<string>#7a1fc3<\/string>/);
  for (const width of [375, 768, 1440]) {
    await shown.setViewportSize({width, height: 900});
    assert.ok(await shown.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width} px`);
  }
  await offline.close();
}));

test('a page with photographs is small enough too', () => withStudio({entries}, async (page, {file}) => {
  for (const wallpaper of ['Light', 'Dark']) {
    const noise = await page.evaluate(() => {
      const canvas = document.createElement('canvas');
      Object.assign(canvas, {width: 375, height: 667});
      const drawing = canvas.getContext('2d'), image = drawing.createImageData(375, 667);
      for (let i = 0; i < image.data.length; ++i) image.data[i] = i % 4 === 3 ? 255 : Math.random() * 256;
      drawing.putImageData(image, 0, 0);
      return canvas.toDataURL().replace(/^.*,/, '');
    });
    const row = page.locator('.material-row', {hasText: `${wallpaper} wallpaper`});
    await row.locator('input[type=file]').setInputFiles({name: 'a.png', mimeType: 'image/png', buffer: Buffer.from(noise, 'base64')});
    await row.locator('img[src]').waitFor();
  }
  assert.equal(fs.readdirSync(`${file}.materials`).length, 3);
  await settled(page);
  await open(page);
  const {bytes} = await download(page, 'Page with pictures');
  assert.ok(bytes.length <= largest, `${bytes.length} bytes`);
}));

test('one picture has all screens, by keyboard', () => withStudio({entries}, async (page) => {
  await page.getByRole('button', {name: 'Export', exact: true}).focus();
  await page.keyboard.press('Enter');
  for (let i = 0; i < 4; ++i) await page.keyboard.press('Tab');
  const [saved] = await Promise.all([page.waitForEvent('download'), page.keyboard.press('Enter')]);
  assert.equal(saved.suggestedFilename(), 'theme.png');
  const bytes = fs.readFileSync(await saved.path());
  // Its head says the size: six pictures in a row, in three rows.
  assert.deepEqual([bytes.toString('latin1', 1, 4), bytes.readUInt32BE(16), bytes.readUInt32BE(20)], ['PNG', 2474, 2305]);
  await page.getByText('theme.png is made.').waitFor();
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('#exports:popover-open').count(), 0);
}));

test('a theme in which nothing is set is not handed on', () => withStudio({complains: refusal}, async (page) => {
  await open(page);
  for (const name of ['Copy for the phone', 'Page with pictures']) {
    await button(page, name).click();
    await page.locator('.exported', {hasText: 'no setting in'}).waitFor();
  }
}));
