// An open page shows later drawings.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import {test} from 'node:test';
import {changeData, draw, withGallery} from './open.mjs';
import {pair, pixels, slider} from './parts.mjs';

for (const reducedMotion of ['no-preference', 'reduce']) {
  test(`an open page follows what is drawn anew, motion: ${reducedMotion}`,
       () => withGallery({reducedMotion}, async (page, {folder, requests}) => {
    const range = slider(page, 'Messages');
    await range.focus();
    await page.keyboard.press('ArrowRight');
    await page.evaluate(() => { window.sameDocument = true; });
    await page.waitForFunction(() => [...document.querySelectorAll('.panel:not([hidden]) img')].every((i) => i.complete));
    const middle = await pair(page, 'messages').boundingBox();
    const stroke = {x: middle.x + middle.width * 0.8, y: middle.y + middle.height * 0.5};
    const old = await pixels(page, stroke);
    await page.waitForTimeout(600);
    const asked = requests.length;

    draw(folder, 'ff0000');
    const begun = Date.now();
    await page.waitForFunction(() => document.querySelector('.followed').textContent.includes('Messages'));
    const changed = await pair(page, 'messages').evaluate((it) => it.getAnimations().length);
    assert.equal(changed, reducedMotion === 'reduce' ? 0 : 1);
    while (await pixels(page, stroke) === old) assert.ok(Date.now() - begun < 5000, 'it never came');
    console.log(`followed after ${Date.now() - begun} ms`);

    assert.equal(await page.evaluate(() => window.sameDocument), true);
    assert.ok(await range.evaluate((it) => it === document.activeElement));
    assert.equal(await range.inputValue(), '51');
    assert.match(await page.getByRole('status').textContent(), /^Drawn anew at .*: Messages$/);
    const pictures = requests.slice(asked).filter((url) => url.includes('.png')).map((url) => url.replace(/.*\/|\?.*/g, ''));
    assert.deepEqual([...new Set(pictures)], ['messages-light-after.png'], 'nothing else is read again');
  }));
}

test('a page that follows takes screens in and leaves them out', () => withGallery({}, async (page, {folder}) => {
  await page.getByRole('tab', {name: 'Album art'}).click();
  const file = path.join(folder, 'gallery.js');
  const data = JSON.parse(fs.readFileSync(file, 'utf8').match(/^varnixGallery\((.*)\);\n$/)[1]);
  const publish = (revision) => {
    data.revision = revision;
    fs.writeFileSync(file, `varnixGallery(${JSON.stringify(data)});\n`);
    fs.writeFileSync(path.join(folder, 'state.js'), `varnixState("${revision}");\n`);
  };
  const screens = page.getByRole('tabpanel').locator('figure');
  const taken = data.tabs[1].screens.pop();
  publish('fewer');
  await page.waitForFunction(() => document.querySelectorAll('.panel:not([hidden]) figure').length === 1);
  assert.equal(await page.getByRole('tab', {selected: true}).textContent(), 'Album art');
  data.tabs[1].screens.push(taken);
  data.tabs[1].title = 'Cover';
  publish('more');
  await page.waitForFunction(() => document.querySelectorAll('.panel:not([hidden]) figure').length === 2);
  assert.equal(await screens.count(), 2);
  assert.equal(await page.getByRole('tab', {selected: true}).textContent(), 'Cover');
}));

test('a page taken away from its folder asks less and less', () => withGallery({}, async (page, {folder, requests, complaints}) => {
  fs.rmSync(path.join(folder, 'state.js'));
  await page.waitForTimeout(300);
  const asked = requests.length;
  await page.waitForTimeout(3000);
  assert.ok(requests.length - asked <= 4, `${requests.length - asked}`);
  draw(folder, '00ff00');
  await page.waitForFunction(() => document.querySelector('.followed').textContent.includes('Messages'));
  complaints.length = 0;
}));

test('a page that nobody draws anew asks for nothing', () => withGallery({
  prepare: (folder) => changeData(folder, (data) => { data.follows = false; }),
}, async (page, {requests}) => {
  await page.waitForTimeout(1000);
  assert.deepEqual(requests.filter((url) => url.includes('.js')), []);
}));
