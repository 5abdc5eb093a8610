// Draws the sample gallery, opens it, and watches what the page does.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {after, before} from 'node:test';
import {pathToFileURL} from 'node:url';
import {chromium} from 'playwright-core';

let browser;

before(async () => {
  browser = await chromium.launch({executablePath: process.env.BROWSER});
});

after(() => browser.close());

export const draw = (folder, ...colors) => execFileSync(process.env.DRAW, [folder, ...colors]);

// Calls `use` with the page, its folder and the addresses that it requested. Fails if the console
// was not silent, or if a request was for something outside the page's folder or did not succeed.
export async function withGallery(options, use) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'gallery #1 '));
  const {prepare = () => {}, hash = '', ...contextOptions} = options;
  const context = await browser.newContext({viewport: {width: 1200, height: 900}, ...contextOptions});
  try {
    draw(folder);
    prepare(folder);
    const page = await context.newPage();
    const complaints = [], requests = [];
    page.on('console', (message) => complaints.push(message.text()));
    page.on('pageerror', (error) => complaints.push(error.stack));
    page.on('requestfailed', (request) => {
      // When a page is closed, its unfinished requests are aborted.
      const {errorText} = request.failure();
      if (errorText !== 'net::ERR_ABORTED') complaints.push(`not read: ${request.url()}: ${errorText}`);
    });
    page.on('request', (request) => requests.push(request.url()));
    await page.goto(pathToFileURL(path.join(folder, 'index.html')).href + hash);
    await use(page, {folder, requests, context, complaints});
    assert.deepEqual(complaints, []);
    const beside = `${pathToFileURL(folder).href}/`;
    const elsewhere = requests.filter((url) => !url.startsWith(beside) && !url.startsWith('data:'));
    assert.deepEqual(elsewhere, []);
  } finally {
    await context.close();
    fs.rmSync(folder, {recursive: true});
  }
}

// Changes the data in the page, as if another gallery had been drawn.
export function changeData(folder, change) {
  const file = path.join(folder, 'index.html');
  const text = fs.readFileSync(file, 'utf8');
  const [, start, json, end] = text.match(/^([^]*id="data">)([^]*?)(<\/script>[^]*)$/);
  const data = JSON.parse(json);
  change(data);
  fs.writeFileSync(file, start + JSON.stringify(data).replaceAll('<', '\\u003c') + end);
}
