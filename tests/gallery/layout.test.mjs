// Any width, light or dark, and accessible to everybody.
import assert from 'node:assert/strict';
import {createRequire} from 'node:module';
import {test} from 'node:test';
import {enlarge, faultsOf, ringIsFree} from './measures.mjs';
import {withGallery} from './open.mjs';

const axe = createRequire(import.meta.url).resolve('axe-core/axe.min.js');

for (const colorScheme of ['light', 'dark']) {
  for (const width of [375, 900, 1600]) {
    test(`the rules of accessibility are kept at ${width}, ${colorScheme}`,
         () => withGallery({colorScheme, viewport: {width, height: 900}}, async (page) => {
      await page.addScriptTag({path: axe});
      for (const tab of ['Global colour', 'Album art']) {
        await page.getByRole('tab', {name: tab}).click();
        const {violations, passes} = await page.evaluate(() => axe.run());
        const found = violations.map(({id, nodes}) => `${id}: ${nodes.map((node) => node.html).join('; ')}`);
        assert.deepEqual(found, []);
        assert.ok(passes.some(({id}) => id === 'color-contrast'));
      }
      // It is a table in every layout.
      const table = page.getByRole('tabpanel').getByRole('table');
      assert.equal(await table.getByRole('columnheader').count(), 5);
      assert.equal(await table.getByRole('row', {name: 'UISwitch'}).getByRole('cell').count(), 4);
    }));
  }
}

for (const colorScheme of ['light', 'dark']) {
  for (const width of [375, 768, 1440]) {
    test(`nothing is cut off or lies on something else at ${width}, ${colorScheme}, text of both sizes`,
         () => withGallery({colorScheme, viewport: {width, height: 900}}, async (page) => {
      await page.evaluate(() => { for (const it of document.querySelectorAll('details')) it.open = true; });
      assert.deepEqual(await faultsOf(page), []);
      await enlarge(page);
      assert.deepEqual(await faultsOf(page), [], 'text of 200 %');
    }));
  }
}

test('the ring around a control leaves its letters free', () => withGallery({}, async (page) => {
  const seen = [];
  for (let i = 0; i < 30; ++i) {
    await page.keyboard.press('Tab');
    const name = await page.evaluate(() => document.activeElement.matches('[role=tab], summary, button') && document.activeElement.textContent);
    if (name === false) continue;
    seen.push(name);
    assert.ok(await ringIsFree(page), name);
  }
  assert.ok(seen.includes('Global colour') && seen.length >= 2, `${seen}`);
}));

test('no width from 375 to 1600 scrolls sideways', () => withGallery({}, async (page) => {
  for (let width = 375; width <= 1600; width += 35) {
    await page.setViewportSize({width, height: 800});
    const wide = await page.evaluate(() => [...document.querySelectorAll('body, body *')]
      .filter((it) => !it.closest('.unseen, thead, .settings') &&
                      it.getBoundingClientRect().right > document.documentElement.clientWidth + 0.5)
      .map((it) => it.outerHTML.slice(0, 80)));
    assert.deepEqual(wide, [], `${width}`);
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width}`);
  }
}));

test('it follows the system from light to dark', () => withGallery({}, async (page) => {
  const ground = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  const light = await ground();
  await page.emulateMedia({colorScheme: 'dark'});
  assert.notEqual(await ground(), light);
}));
