// The table of surfaces, and where on the pictures they can be read worst.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {changeData, withGallery} from './open.mjs';

const rowsOf = (page) => page.getByRole('tabpanel').getByRole('row');
const rowOf = (page, name) => rowsOf(page).filter({hasText: name});

test('the table names, shows and measures the surfaces', () => withGallery({}, async (page) => {
  const rows = rowsOf(page);
  const texts = async (name) => (await rowOf(page, name).locator('td').evaluateAll(
    (cells) => cells.map((cell) => [...cell.querySelectorAll(':not([aria-hidden])')]
      .filter((part) => part.children.length === 0).map((part) => part.textContent).join(' '))));
  assert.deepEqual(await page.getByRole('tabpanel').getByRole('columnheader').allTextContents(),
                   ['Surface', 'Before', 'After', 'Contrast', 'What would help']);
  const where = 'Home screen, text, dark wallpaper', symbol = 'Home screen, symbol, dark wallpaper';
  assert.deepEqual(await texts('UIView'), ['#007aff', '#8e24aa', `7.03 ${where}`, 'as it is']);
  assert.deepEqual(await texts('UINavigationBar'), ['#007aff', '#8e24aa', `4.34 below 4.5 ${where}`,
                                                    'no shade of its colour holds everywhere']);
  assert.deepEqual(await texts('UISwitch'), ['#ff3b30', '#ffd60a', `1.41 below 3.0 ${symbol}`,
                                             'sms_color = #8c7500 sms_color_type = 2']);
  assert.deepEqual(await texts('UIButton'), ['#007aff', '#007aff', '\u2013', '\u2013']);
  assert.deepEqual(await texts('UITabBar'), ['#007aff', '#e91e63', `2.99 below 3.0 ${symbol}`, 'not looked for']);
  assert.deepEqual(await texts('UIKeyboard'), ['yes', 'no', '\u2013', '\u2013']);
  assert.deepEqual(await texts('SBHUDView'), ['none', 'none', '\u2013', '\u2013']);
  const [was, is] = await rowOf(page, 'UISwitch').locator('td .swatch').evaluateAll(
    (swatches) => swatches.map((it) => getComputedStyle(it).backgroundImage));
  assert.match(was, /rgb\(255, 59, 48\)/);
  assert.match(is, /rgb\(255, 214, 10\)/);
  const sample = await rowOf(page, 'SBControlCenterContentContainerView').locator('.sample').first()
    .evaluate((it) => [getComputedStyle(it).color, getComputedStyle(it).backgroundColor]);
  assert.deepEqual(sample, ['rgb(16, 32, 48)', 'rgb(143, 176, 208)'], 'as it is seen on the picture');

  // Headers, two processes and the rows that pass the filter.
  assert.equal(await rows.count(), 12);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Dyed'}).check();
  assert.equal(await rows.count(), 10);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Too faint'}).check();
  assert.equal(await rows.count(), 5);
  await page.getByRole('tab', {name: 'Album art'}).click();
  assert.ok(await page.getByRole('tabpanel').getByRole('radio', {name: 'Too faint'}).isChecked());
}));

test('a table for which nothing was looked has no column for it', () => withGallery({
  prepare: (folder) => changeData(folder, ({tabs}) => {
    for (const {contrast} of tabs[0].surfaces) delete contrast?.advice;
  }),
}, async (page) => {
  const headers = page.getByRole('tabpanel').getByRole('columnheader');
  assert.deepEqual(await headers.allTextContents(), ['Surface', 'Before', 'After', 'Contrast']);
  assert.equal(await rowOf(page, 'UISwitch').getByRole('cell').count(), 3);
  await page.getByRole('tab', {name: 'Album art'}).click();
  assert.equal(await headers.count(), 5);
}));

for (const width of [375, 1200]) {
  test(`a row that is pointed at or focused shows its place, ${width} px wide`,
       () => withGallery({viewport: {width, height: 900}}, async (page) => {
    const lens = page.locator('.lens');
    const isMarked = async () => {
      await lens.waitFor({state: 'visible'});
      const [picture, place, word] = await lens.evaluate((it) => ['img', '.place-mark', '.word-mark'].map(
        (name) => it.querySelector(name).getBoundingClientRect().toJSON()));
      assert.match(await lens.locator('img').getAttribute('src'), /^global-color\/home-dark-after\.png/);
      // The middle of the sample's place, in points.
      const x = (place.left + place.right) / 2 - picture.left, y = (place.top + place.bottom) / 2 - picture.top;
      assert.ok(Math.abs(x / picture.width * 375 - 186) < 2 && Math.abs(y / picture.height * 667 - 333) < 2, `${x} ${y}`);
      assert.ok(word.width > place.width && picture.right <= width && picture.bottom <= 900);
    };
    await rowOf(page, 'UISwitch').hover();
    await isMarked();
    await rowOf(page, 'UIButton').hover();
    assert.ok(await lens.isHidden(), 'there is nothing to show');
    const button = rowOf(page, 'UIView').getByRole('button', {name: 'Home screen, text, dark wallpaper'});
    await button.focus();
    await isMarked();
    await page.keyboard.press('Escape');
    assert.ok(await lens.isHidden());
    await page.keyboard.press('Shift+Tab');
    await page.keyboard.press('Tab');
    assert.ok(await button.evaluate((it) => it === document.activeElement));
    await isMarked();
  }));
}
