// The gallery, as people use it.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {createRequire} from 'node:module';
import path from 'node:path';
import {after, before, test} from 'node:test';
import {changeData, draw, startBrowser, stopBrowser, withGallery} from './open.mjs';

const axe = createRequire(import.meta.url).resolve('axe-core/axe.min.js');

before(startBrowser);
after(stopBrowser);

const slider = (page, screen) => page.getByRole('slider', {name: screen});
const figure = (page, screen) => page.locator(`.panel:not([hidden]) [data-screen=${screen}]`);
const pair = (page, screen) => figure(page, screen).locator('.pair');
const clip = (page, screen) =>
  figure(page, screen).locator('.after').evaluate((image) => getComputedStyle(image).clipPath);
const at = (share) => `inset(0px 0px 0px ${share}%)`;

// Where a share of the picture's width lies, in a bar of the sample.
async function point(page, screen, share) {
  const box = await pair(page, screen).boundingBox();
  return {x: box.x + box.width * share, y: box.y + box.height * 0.15};
}

async function pixels(page, {x, y}) {
  return (await page.screenshot({clip: {x: x - 2, y: y - 2, width: 4, height: 4}})).toString('base64');
}

async function shown(page, screen) {
  return figure(page, screen).locator('img').evaluateAll(
    (images) => images.map((image) => ({path: image.getAttribute('src').split('?')[0],
                                        read: image.complete && image.naturalWidth > 0})));
}

const paths = (...names) => names.map((name) => ({path: name, read: true}));

test('a mouse drags the divider anywhere in the picture', () => withGallery({}, async (page) => {
  assert.equal(await clip(page, 'messages'), at(50));
  const left = await point(page, 'messages', 0.3), right = await point(page, 'messages', 0.7);
  const [dyed, plain] = [await pixels(page, right), await pixels(page, left)];
  assert.notEqual(dyed, plain);

  await page.mouse.move(left.x, left.y);
  await page.mouse.down();
  await page.mouse.move(left.x - 20, left.y + 30);
  const aFifth = await point(page, 'messages', 0.2);
  await page.mouse.move(aFifth.x, aFifth.y);
  await page.mouse.up();
  const value = Number(await slider(page, 'Messages').inputValue());
  assert.ok(Math.abs(value - 20) <= 0.5, `${value}`);
  assert.equal(await clip(page, 'messages'), at(value));
  assert.equal(await pixels(page, left), dyed, 'the dyed picture shows right of the divider');

  // A button that is not held moves nothing; neither does the other screen's divider move.
  await page.mouse.move(right.x, right.y);
  assert.equal(await clip(page, 'messages'), at(value));
  assert.equal(await clip(page, 'home'), at(50));

  // Out of the picture on the right: nothing is dyed.
  await page.mouse.move(right.x, right.y);
  await page.mouse.down();
  await page.mouse.move(right.x + 800, right.y, {steps: 4});
  await page.mouse.up();
  assert.equal(await clip(page, 'messages'), at(100));
  assert.equal(await pixels(page, right), plain);
}));

test('a finger drags the divider sideways, and scrolls the page up and down',
     () => withGallery({hasTouch: true, viewport: {width: 375, height: 667}}, async (page, {context}) => {
  const session = await context.newCDPSession(page);
  const touch = (type, points) => session.send('Input.dispatchTouchEvent', {type, touchPoints: points});
  const drag = async (from, to) => {
    await touch('touchStart', [from]);
    for (let step = 1; step <= 10; ++step) {
      await touch('touchMove', [{x: from.x + (to.x - from.x) * step / 10,
                                 y: from.y + (to.y - from.y) * step / 10}]);
      await page.waitForTimeout(16);
    }
    await touch('touchEnd', []);
    await page.waitForTimeout(100);
  };
  await pair(page, 'messages').scrollIntoViewIfNeeded();
  await drag(await point(page, 'messages', 0.5), await point(page, 'messages', 0.8));
  assert.equal(Math.round(await slider(page, 'Messages').inputValue()), 80);

  const from = await point(page, 'messages', 0.3);
  const scrolled = await page.evaluate(() => scrollY);
  await drag({x: from.x, y: from.y + 150}, from);
  assert.ok(await page.evaluate(() => scrollY) > scrolled + 50);
  assert.equal(Math.round(await slider(page, 'Messages').inputValue()), 80);

  const tapped = await point(page, 'messages', 0.4);
  await page.touchscreen.tap(tapped.x, tapped.y + 100);
  assert.equal(Math.round(await slider(page, 'Messages').inputValue()), 40);
}));

test('the keyboard moves the divider', () => withGallery({}, async (page) => {
  const range = slider(page, 'Messages');
  for (let i = 0; i < 10 && !await range.evaluate((it) => it === document.activeElement); ++i) {
    await page.keyboard.press('Tab');
  }
  for (const [key, value] of [['ArrowRight', 51], ['ArrowLeft', 50], ['Home', 0], ['End', 100]]) {
    await page.keyboard.press(key);
    assert.equal(await range.inputValue(), `${value}`);
    assert.equal(await clip(page, 'messages'), at(value));
  }
  assert.equal(await range.getAttribute('aria-valuetext'), '0 % of it after');
  assert.equal(await pair(page, 'messages').evaluate((it) => getComputedStyle(it).outlineStyle), 'solid');
}));

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
  // Text from outside stays text.
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

test('an address of no tab opens the first', () => withGallery({hash: '#%ZZ'}, async (page) => {
  assert.equal(await page.getByRole('tab', {selected: true}).textContent(), 'Global colour');
  await page.evaluate(() => { location.hash = '#album-art'; });
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

test('the table names, shows and measures the surfaces', () => withGallery({}, async (page) => {
  const rows = page.getByRole('tabpanel').getByRole('row');
  const texts = async (name) => (await rows.filter({hasText: name}).locator('td').evaluateAll(
    (cells) => cells.map((cell) => [...cell.querySelectorAll(':not([aria-hidden])')]
      .filter((part) => part.children.length === 0).map((part) => part.textContent).join(' '))));
  assert.deepEqual(await page.getByRole('tabpanel').getByRole('columnheader').allTextContents(),
                   ['Surface', 'Before', 'After', 'Contrast', 'Same hue at 4.5']);
  assert.deepEqual(await texts('UIView'), ['#007aff', '#8e24aa', '7.03', 'as it is']);
  assert.deepEqual(await texts('UISwitch'), ['#ff3b30', '#ffd60a', '1.41 below 3.0', '#8c7500']);
  assert.deepEqual(await texts('UIButton'), ['#007aff', '#007aff', '4.01 below 4.5', '#0072ef']);
  assert.deepEqual(await texts('UIKeyboard'), ['yes', 'no', '\u2013', '\u2013']);
  assert.deepEqual(await texts('SBHUDView'), ['none', 'none', '\u2013', '\u2013']);
  const [was, is] = await rows.filter({hasText: 'UISwitch'}).locator('.swatch').evaluateAll(
    (swatches) => swatches.map((it) => getComputedStyle(it).backgroundImage));
  assert.match(was, /rgb\(255, 59, 48\)/);
  assert.match(is, /rgb\(255, 214, 10\)/);
  const sample = await rows.filter({hasText: 'SBControlCenterContentContainerView'}).locator('.sample').first()
    .evaluate((it) => [getComputedStyle(it).color, getComputedStyle(it).backgroundColor]);
  assert.deepEqual(sample, ['rgba(30, 136, 229, 0.5)', 'rgb(32, 48, 64)']);

  // Headers, two processes and what the filter takes.
  assert.equal(await rows.count(), 11);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Dyed'}).check();
  assert.equal(await rows.count(), 9);
  await page.getByRole('tabpanel').getByRole('radio', {name: 'Below 4.5'}).check();
  assert.equal(await rows.count(), 6);
  await page.getByRole('tab', {name: 'Album art'}).click();
  assert.ok(await page.getByRole('tabpanel').getByRole('radio', {name: 'Below 4.5'}).isChecked());
}));

for (const colorScheme of ['light', 'dark']) {
  for (const width of [375, 900, 1600]) {
    test(`the rules of accessibility are kept at ${width}, ${colorScheme}`,
         () => withGallery({colorScheme, viewport: {width, height: 900}}, async (page) => {
      await page.addScriptTag({path: axe});
      for (const tab of ['Global colour', 'Album art']) {
        await page.getByRole('tab', {name: tab}).click();
        // Samples show how poor a contrast is: that is what they are for.
        const {violations, passes} = await page.evaluate(() => axe.run({exclude: '.sample'}));
        const found = violations.map(({id, nodes}) => `${id}: ${nodes.map((node) => node.html).join('; ')}`);
        assert.deepEqual(found, []);
        assert.ok(passes.some(({id}) => id === 'color-contrast'));
      }
      // Whatever the layout, it is a table.
      const table = page.getByRole('tabpanel').getByRole('table');
      assert.equal(await table.getByRole('columnheader').count(), 5);
      assert.equal(await table.getByRole('row', {name: 'UISwitch'}).getByRole('cell').count(), 4);
    }));
  }
}

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
  hash: '#last',
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
