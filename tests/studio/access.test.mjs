// The whole page by keyboard, and the rules of accessibility.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {createRequire} from 'node:module';
import {test} from 'node:test';
import {enlarge, faultsOf, ringIsFree} from './measures.mjs';
import {hasColor, large, settled, value, withStudio} from './open.mjs';

const axe = fs.readFileSync(createRequire(import.meta.url).resolve('axe-core'), 'utf8');

const focused = (page) => page.evaluate(() => {
  const it = document.activeElement;
  return {name: it.getAttribute('aria-label') ?? it.labels?.[0]?.textContent ?? it.textContent.trim(),
          outline: getComputedStyle(it.matches('.choices input') ? it.nextElementSibling : it).outlineStyle};
});

// Presses Tab until that control has the focus.
async function tabTo(page, wanted, key = 'Tab') {
  for (let i = 0; i < 150; ++i) {
    await page.keyboard.press(key);
    const {name} = await focused(page);
    if (wanted.test(name)) return;
  }
  assert.fail(`no focus on ${wanted}`);
}

test('everything is reached by Tab, visibly, and nothing keeps the focus', () => withStudio({}, async (page) => {
  const seen = [];
  for (let i = 0; i < 200; ++i) {
    await page.keyboard.press('Tab');
    const {name, outline} = await focused(page);
    if (await page.evaluate(() => document.activeElement === document.body)) break;
    assert.notEqual(outline, 'none', name);
    if (await page.evaluate(() => document.activeElement.matches('button, summary, a'))) assert.ok(await ringIsFree(page), `the ring on ${name}`);
    assert.notEqual(name, '');
    seen.push(name);
  }
  for (const name of ['History', 'Reset', 'Search settings', 'Varnix is on', 'Colour: pick', 'Colour', 'Ember', 'Status bar: own colour',
                      'Light wallpaper: choose an image', 'Home screen', 'Timeline']) {
    if (name !== 'Status bar: own colour') assert.ok(seen.includes(name), `${name} of ${seen.join(', ')}`);
  }
  assert.ok(seen.length < 200);
}));

test('a theme is made by keyboard alone', () => withStudio({}, async (page) => {
  await tabTo(page, /^Colour$/);
  await page.keyboard.type('#12b457');
  await page.keyboard.press('Enter');
  await settled(page);
  assert.ok(await hasColor(page, large, '#12b457'));
  await tabTo(page, /^Meadow$/);
  await page.keyboard.press('Enter');
  await settled(page);
  assert.equal(await value(page, 'global_color'), '#2f9e44');
  await page.keyboard.press('/');
  await page.keyboard.type('volume');
  await tabTo(page, /^follow$/);
  await page.keyboard.press('ArrowRight');
  assert.equal(await value(page, 'volume_color_type'), 2);
  await tabTo(page, /^Volume HUD: own colour$/);
  await page.keyboard.type('#abc');
  await page.keyboard.press('Enter');
  await settled(page);
  assert.equal(await value(page, 'volume_color'), '#abc');
  await tabTo(page, /^Volume$/);
  await page.keyboard.press('Enter');
  assert.equal(await page.locator('.looked-at figcaption').textContent(), 'Volume');
  await tabTo(page, /^History$/, 'Shift+Tab');
  await page.keyboard.press('Enter');
  await tabTo(page, /^As it was opened$/);
  await page.keyboard.press('Enter');
  await settled(page);
  assert.equal(await value(page, 'global_color'), undefined);
  await page.keyboard.press('Escape');
  assert.equal(await page.locator('#states:popover-open').count(), 0);
}));

// What opens over the page, and that it keeps the rules.
async function expectInView(page, id) {
  const {box, width, violations} = await page.evaluate(async (name) => {
    const it = document.getElementById(name);
    it.showPopover();
    const shown = it.getBoundingClientRect();
    const found = await window.axe.run(it);
    it.hidePopover();
    return {box: {left: shown.left, right: shown.right, height: shown.height}, width: innerWidth,
            violations: found.violations.map((one) => one.id)};
  }, id);
  assert.ok(box.left >= 0 && box.right <= width && box.height > 20, `${id}: ${JSON.stringify(box)}`);
  assert.deepEqual(violations, []);
}

for (const colorScheme of ['light', 'dark']) {
  for (const width of [375, 768, 1440]) {
    test(`the rules hold at ${width} px, ${colorScheme}`,
         () => withStudio({viewport: {width, height: 900}, colorScheme, entries: {statusbar_color: '#fff'}}, async (page) => {
      await page.evaluate(() => { for (const it of document.querySelectorAll('details')) it.open = true; });
      // The page's own policy lets no text become a script.
      await page.evaluate(axe);
      const {violations} = await page.evaluate(() => window.axe.run());
      assert.deepEqual(violations.map(({id, nodes}) => [id, nodes.map(({target}) => target.join(' '))]), []);
      assert.deepEqual(await faultsOf(page), []);
      for (const id of ['states', 'exports']) await expectInView(page, id);
      await enlarge(page);
      for (const id of ['states', 'exports']) await expectInView(page, id);
      assert.deepEqual(await faultsOf(page), [], 'text of 200 %');
    }));
  }
}
