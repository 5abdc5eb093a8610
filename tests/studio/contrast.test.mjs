// How well the theme can be read, in the studio.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {createRequire} from 'node:module';
import {test} from 'node:test';
import {colorField, large, settled, value, withStudio} from './open.mjs';

const axe = fs.readFileSync(createRequire(import.meta.url).resolve('axe-core'), 'utf8');

const rows = (page) => page.locator('.contrast .surface');
const rowOf = (page, name) => rows(page).filter({hasText: name});
const measured = (page, text) => page.locator('.contrast .measured').filter({hasText: text}).waitFor();

async function open(page) {
  await page.locator('.contrast > summary').focus();
  await page.keyboard.press('Enter');
  await rows(page).first().waitFor();
}

test('nothing is measured until it is asked for, and then the worst comes first',
     () => withStudio({entries: {global_color: '#00897b'}}, async (page, {requests}) => {
  await page.waitForTimeout(1500);
  assert.deepEqual(requests.filter((url) => /contrast\?|advice/.test(url)), []);
  await open(page);
  const ratios = (await page.locator('.contrast .ratio').allTextContents()).map(Number);
  assert.equal(ratios[0], 1.79, 'the status bar on the dark bar of the photo feed');
  assert.ok(await rows(page).first().getByRole('button', {name: 'Photo feed, text'}).isVisible());
  assert.ok(ratios.length > 20);

  // A change is measured once it has come to rest.
  await colorField(page).fill('#000000');
  await colorField(page).press('Enter');
  await measured(page, /^3 of/);
  assert.ok(await rowOf(page, 'SBHUDView').locator('.bad').isVisible());
}));

for (const width of [600, 1440]) {
  test(`a row shows its place on the large picture, by mouse and keyboard, ${width} px wide`,
       () => withStudio({viewport: {width, height: 900}, entries: {global_color: '#000000'}}, async (page) => {
    await open(page);
    const caption = page.locator('.looked-at figcaption');
    const first = await page.locator(large).getAttribute('src');
    const isShown = async () => {
      await page.waitForFunction(() => document.querySelector('.looked-at figcaption').textContent === 'Volume');
      // On a narrow page the large picture is further up.
      const where = width < 800 ? '.lens' : '.looked-at';
      assert.equal(await page.locator('.lens').isVisible(), width < 800);
      const [picture, place] = await page.evaluate((parent) => ['img', '.place-mark'].map(
        (name) => document.querySelector(`${parent} ${name}`).getBoundingClientRect().toJSON()), where);
      assert.ok(picture.top >= 0 && picture.bottom <= 900, 'it is in sight');
      const x = ((place.left + place.right) / 2 - picture.left) / picture.width * 375;
      const y = ((place.top + place.bottom) / 2 - picture.top) / picture.height * 667;
      // The word in the upper part of the panel, which is in the middle.
      assert.ok(x > 110 && x < 265 && y > 256 && y < 300, `${x} ${y}`);
    };
    await rowOf(page, 'SBHUDView').hover();
    await isShown();
    await page.waitForFunction((src) => [...document.querySelectorAll('.looked-at img, .lens img')].every(
      (it) => it.src !== src), first);
    await page.mouse.move(5, 5);
    assert.equal(await caption.textContent(), 'Application');
    assert.equal(await page.locator('.place-mark').count(), 0);
    await rowOf(page, 'SBHUDView').getByRole('button', {name: 'Volume, text, dark wallpaper'}).focus();
    await isShown();
  }));
}

test('a colour that is found is used, and then the surface can be read',
     () => withStudio({entries: {global_color: '#000000'}}, async (page) => {
  await open(page);
  const row = rowOf(page, 'SBHUDView');
  await row.getByRole('button', {name: 'Find a colour'}).press('Enter');
  const use = row.getByRole('button', {name: /^Use volume_color = #/});
  await use.waitFor({timeout: 60000});
  assert.ok(await use.evaluate((it) => it === document.activeElement), 'it takes the focus over');
  await page.keyboard.press('Enter');
  await settled(page);
  assert.equal(await value(page, 'volume_color_type'), 2);
  await measured(page, /^2 of/);
  assert.equal(await rowOf(page, 'SBHUDView').locator('.mark').count(), 0);
  assert.ok(await rowOf(page, 'SBHUDView').locator('.where').evaluate((it) => it === document.activeElement));

  // None is given where none holds.
  const bar = rowOf(page, 'UIStatusBar').first();
  await bar.getByRole('button', {name: 'Find a colour'}).click();
  await bar.getByText('No shade of its colour holds everywhere.').waitFor({timeout: 60000});
}));

for (const colorScheme of ['light', 'dark']) {
  test(`its list is accessible, ${colorScheme}`,
       () => withStudio({colorScheme, entries: {global_color: '#00897b'}}, async (page) => {
    for (const width of [375, 1440]) {
      await page.setViewportSize({width, height: 900});
      if (width === 375) await open(page);
      await page.evaluate(axe);
      const {violations} = await page.evaluate(() => window.axe.run('.stage'));
      assert.deepEqual(violations.map(({id, nodes}) => [id, nodes.map(({target}) => target.join(' '))]), []);
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
    }
  }));
}
