// Tabs, wallpapers, and galleries with few or many of them.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {changeData, withGallery} from './open.mjs';
import {at, clip, paths, shown, slider} from './parts.mjs';

test('tabs are changed by mouse and keyboard, and kept in the address', () => withGallery({}, async (page) => {
  const [first, second] = [page.getByRole('tab', {name: 'Global colour'}), page.getByRole('tab', {name: 'Album art'})];
  const panel = page.getByRole('tabpanel');
  assert.equal(await panel.count(), 1);
  assert.equal(await panel.getAttribute('aria-labelledby'), 'tab-global-color');
  assert.equal(await panel.locator('.summary').textContent(), 'One colour for everything.');
  await slider(page, 'Messages').fill('25');

  await second.click();
  assert.equal(await second.getAttribute('aria-selected'), 'true');
  assert.equal(await first.getAttribute('aria-selected'), 'false');
  assert.equal(await panel.getAttribute('aria-labelledby'), 'tab-album-art');
  // Text from outside is shown as text.
  assert.equal(await panel.locator('.summary').textContent(),
               'The colours of the track that plays. <b>&amp;</script>');
  await page.waitForFunction(() => [...document.querySelectorAll('.panel:not([hidden]) img')].every((i) => i.complete));
  assert.deepEqual(await shown(page, 'messages'),
                   paths('album-art/messages-light-before.png', 'album-art/messages-light-after.png'));
  assert.equal(await clip(page, 'messages'), at(25), 'the same screen is divided alike');

  for (const [key, tab] of [['ArrowRight', first], ['ArrowLeft', second], ['Home', first], ['End', second]]) {
    await page.keyboard.press(key);
    assert.equal(await tab.getAttribute('aria-selected'), 'true', key);
    assert.ok(await tab.evaluate((it) => it === document.activeElement));
  }
  assert.equal(await page.locator('[role=tab][tabindex="0"]').count(), 1);
  await page.reload();
  assert.equal(await second.getAttribute('aria-selected'), 'true');
}));

test('a tab says which file it shows, and what is in it', () => withGallery({}, async (page) => {
  const source = page.getByRole('tabpanel').locator('.source'), values = source.getByRole('listitem');
  assert.equal(await source.locator('summary').textContent(), 'Settings of themes/violet.plist');
  assert.equal(await values.count(), 0, 'folded');
  await source.locator('summary').click();
  assert.deepEqual(await values.allTextContents(), ['enabled = true', 'global_color = "#8e24aa"']);
  await page.getByRole('tab', {name: 'Album art'}).click();
  assert.equal(await source.locator('summary').textContent(), 'Settings of <b>.plist');
  await source.locator('summary').click();
  assert.deepEqual(await values.allTextContents(), ['Nothing is set.']);
}));

test('an address of no tab opens the first', () => withGallery({hash: '#tab=%ZZ&wallpaper=green'}, async (page) => {
  assert.equal(await page.getByRole('tab', {selected: true}).textContent(), 'Global colour');
  assert.ok(await page.getByRole('radio', {name: 'Light'}).isChecked());
  await page.evaluate(() => { location.hash = '#tab=album-art'; });
  await page.waitForFunction(() => document.querySelector('[aria-selected=true]').id === 'tab-album-art');
}));

test('the wallpaper is switched in every tab', () => withGallery({}, async (page) => {
  const wallpapers = page.getByRole('group', {name: 'Wallpaper'});
  await wallpapers.getByRole('radio', {name: 'Dark'}).check();
  const dark = paths('global-color/home-dark-before.png', 'global-color/home-dark-after.png');
  await page.waitForFunction(() => [...document.querySelectorAll('.panel:not([hidden]) img')]
    .every((image) => image.src.includes('-dark-') && image.complete));
  assert.deepEqual(await shown(page, 'home'), dark);
  await page.getByRole('tab', {name: 'Album art'}).click();
  await page.waitForFunction(() => [...document.querySelectorAll('.panel:not([hidden]) .after')]
    .every((image) => image.src.includes('album-art/') && image.src.includes('-dark-')));

  await wallpapers.getByRole('radio', {name: 'Dark'}).focus();
  await page.keyboard.press('ArrowLeft');
  assert.ok(await wallpapers.getByRole('radio', {name: 'Light'}).isChecked());
  await page.waitForFunction(() => document.querySelector('.panel:not([hidden]) .after').src.includes('-light-'));
}));

test('an address opens a tab and a wallpaper, and says what is chosen', () => withGallery({
  hash: '#tab=album-art&wallpaper=dark',
}, async (page) => {
  const dark = page.getByRole('radio', {name: 'Dark'}), light = page.getByRole('radio', {name: 'Light'});
  assert.equal(await page.getByRole('tab', {selected: true}).textContent(), 'Album art');
  assert.ok(await dark.isChecked());
  assert.deepEqual(await shown(page, 'home'),
                   paths('album-art/home-dark-before.png', 'album-art/home-dark-after.png'));
  const address = () => page.evaluate(() => location.hash);
  await light.check();
  assert.equal(await address(), '#tab=album-art&wallpaper=light');
  await page.getByRole('tab', {name: 'Global colour'}).click();
  assert.equal(await address(), '#tab=global-color&wallpaper=light');
  await page.evaluate(() => { location.hash = '#tab=album-art&wallpaper=dark'; });
  await page.waitForFunction(() => document.querySelector('[aria-selected=true]').id === 'tab-album-art');
  assert.ok(await dark.isChecked());
  assert.equal((await shown(page, 'home'))[1].path, 'album-art/home-dark-after.png');
  await page.evaluate(() => { location.hash = '#tab=global-color'; });
  await page.waitForFunction(() => document.querySelector('[aria-selected=true]').id === 'tab-global-color');
  assert.ok(await dark.isChecked(), 'an address without a wallpaper leaves it');
}));

test('one tab, one wallpaper, and texts from outside', () => withGallery({
  prepare: (folder) => changeData(folder, (data) => {
    data.tabs.pop();
    const [tab] = data.tabs;
    tab.title = tab.screens[0].title = '<img src=x onerror=alert(1)>';
    tab.surfaces[0].class = 'A'.repeat(300);
    for (const screen of tab.screens) delete screen.light;
  }),
}, async (page) => {
  assert.equal(await page.getByRole('tab').count(), 0);
  assert.equal(await page.getByRole('group', {name: 'Wallpaper'}).count(), 0);
  assert.equal(await page.getByRole('region', {name: '<img src=x onerror=alert(1)>'}).count(), 1);
  assert.equal((await shown(page, 'home'))[0].path, 'global-color/home-dark-before.png');
  assert.equal(await page.locator('img[src=x]').count(), 0);
  await page.setViewportSize({width: 375, height: 800});
  assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
}));

test('more tabs than fit are scrolled to', () => withGallery({
  viewport: {width: 375, height: 600},
  hash: '#tab=last',
  prepare: (folder) => changeData(folder, ({tabs}) => {
    tabs.push({...tabs[1], id: 'more', title: 'Yet another colour'}, {...tabs[1], id: 'last', title: 'The last colour'});
  }),
}, async (page) => {
  const inView = async (name) => {
    const {x, width} = await page.getByRole('tab', {name}).boundingBox();
    return x >= 0 && x + width <= 375;
  };
  assert.ok(await inView('The last colour'));
  assert.ok(!await inView('Global colour'));
  await page.getByRole('tab', {name: 'The last colour'}).press('Home');
  assert.ok(await inView('Global colour'));
  assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 375);
}));

test('a gallery of nothing says so', () => withGallery({
  prepare: (folder) => changeData(folder, (data) => { data.tabs = []; }),
}, async (page) => {
  assert.equal(await page.locator('main').textContent(), 'Nothing was drawn.');
}));
