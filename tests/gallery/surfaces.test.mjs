// The table of surfaces.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {withGallery} from './open.mjs';

test('the table names, shows and measures the surfaces', () => withGallery({}, async (page) => {
  const rows = page.getByRole('tabpanel').getByRole('row');
  const texts = async (name) => (await rows.filter({hasText: name}).locator('td').evaluateAll(
    (cells) => cells.map((cell) => [...cell.querySelectorAll(':not([aria-hidden])')]
      .filter((part) => part.children.length === 0).map((part) => part.textContent).join(' '))));
  assert.deepEqual(await page.getByRole('tabpanel').getByRole('columnheader').allTextContents(),
                   ['Surface', 'Before', 'After', 'Contrast', 'Same hue at 4.5']);
  assert.deepEqual(await texts('UIView'), ['#007aff', '#8e24aa', '7.03', 'as it is']);
  assert.deepEqual(await texts('UISwitch'), ['#ff3b30', '#ffd60a', '1.41 below 3.0', '#8c7500']);
  assert.deepEqual(await texts('UIButton'), ['#007aff', '#007aff', '\u2013', '\u2013']);
  assert.deepEqual(await texts('UITabBar'), ['#007aff', '#e91e63', '4.34 below 4.5', '#e6175d']);
  assert.deepEqual(await texts('UIKeyboard'), ['yes', 'no', '\u2013', '\u2013']);
  assert.deepEqual(await texts('SBHUDView'), ['none', 'none', '\u2013', '\u2013']);
  const [was, is] = await rows.filter({hasText: 'UISwitch'}).locator('.swatch').evaluateAll(
    (swatches) => swatches.map((it) => getComputedStyle(it).backgroundImage));
  assert.match(was, /rgb\(255, 59, 48\)/);
  assert.match(is, /rgb\(255, 214, 10\)/);
  const sample = await rows.filter({hasText: 'SBControlCenterContentContainerView'}).locator('.sample').first()
    .evaluate((it) => [getComputedStyle(it).color, getComputedStyle(it).backgroundColor]);
  assert.deepEqual(sample, ['rgba(30, 136, 229, 0.5)', 'rgb(32, 48, 64)']);

  // Headers, two processes and the rows that pass the filter.
  assert.equal(await rows.count(), 12);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Dyed'}).check();
  assert.equal(await rows.count(), 10);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Below 4.5'}).check();
  assert.equal(await rows.count(), 6);
  await page.getByRole('tab', {name: 'Album art'}).click();
  assert.ok(await page.getByRole('tabpanel').getByRole('radio', {name: 'Below 4.5'}).isChecked());
}));
