// The file that a desktop's browser is given leads to the page.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {test} from 'node:test';
import {chromium} from 'playwright-core';

test('the private file leads to the page', async () => {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'opening '));
  const opened = path.join(folder, 'opened');
  fs.writeFileSync(path.join(folder, 'xdg-open'), `#!/bin/sh\nprintf %s "$1" > '${opened}.new'; mv '${opened}.new' '${opened}'\n`, {mode: 0o755});
  const env = {...process.env, PATH: `${folder}:${process.env.PATH}`, DISPLAY: ':99', XDG_RUNTIME_DIR: folder};
  const child = spawn(process.env.VARNIX, ['studio'], {stdio: ['ignore', 'pipe', 'inherit'], env});
  const browser = await chromium.launch({executablePath: process.env.BROWSER});
  try {
    const address = await new Promise((done) => child.stdout.once('data', (text) => done(`${text}`.trim())));
    while (!fs.existsSync(opened)) await new Promise((done) => setTimeout(done, 10));
    const page = await browser.newPage();
    await page.goto(`file://${fs.readFileSync(opened, 'utf8')}`.replaceAll(' ', '%20'), {waitUntil: 'commit'});
    await page.waitForURL((url) => url.href.startsWith(address));
    await page.getByRole('searchbox', {name: 'Search settings'}).waitFor();
    // The screens come after the controls.
    await page.locator('.others img').first().waitFor({state: 'attached'});
    assert.ok(await page.locator('.others img').count() > 0);
  } finally {
    await browser.close();
    const ended = new Promise((done) => child.once('exit', done));
    child.kill('SIGTERM');
    await ended;
    fs.rmSync(folder, {recursive: true});
  }
});
