// Two themes over each other.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {createRequire} from 'node:module';
import {test} from 'node:test';
import {colorField, settled, withStudio} from './open.mjs';

const axe = fs.readFileSync(createRequire(import.meta.url).resolve('axe-core'), 'utf8');
const blue = '#1e88e5', green = '#12b457';
const refusal = /the server responded with a status of 4/;
const list = (color) => `<plist version="1.0"><dict><key>global_color</key><string>${color}</string></dict></plist>`;

const divider = (page) => page.getByRole('slider', {name: /^Divider/});
const menu = (page) => page.locator('#compare');

// Waits until every screen has its other picture.
const compared = (page, screens = 14) => page.waitForFunction((count) => {
  const all = [...document.querySelectorAll('.over-picture')];
  return all.length === count + 1 && all.every((it) => it.dataset.shown && !it.matches('.failed'));
}, screens);

// The colours on both sides of the divider, in a row of pixels of the large picture's title bar.
async function colorsAt(page, share, of = '.looked-at img') {
  const box = await page.locator(of).boundingBox();
  const bytes = await page.screenshot({clip: {x: Math.round(box.x + box.width * share) - 12, y: box.y, width: 24, height: box.height}});
  return page.evaluate(async (base64) => {
    const image = new Image();
    image.src = `data:image/png;base64,${base64}`;
    await image.decode();
    const canvas = new OffscreenCanvas(image.naturalWidth, image.naturalHeight), drawing = canvas.getContext('2d');
    drawing.drawImage(image, 0, 0);
    const {data} = drawing.getImageData(0, 0, canvas.width, canvas.height), found = new Set();
    for (let i = 0; i < data.length; i += 4)
      found.add(`#${[data[i], data[i + 1], data[i + 2]].map((it) => it.toString(16).padStart(2, '0')).join('')}`);
    return [...found];
  }, bytes.toString('base64'));
}

async function paste(page, color) {
  await page.getByRole('button', {name: /^Compare/}).click();
  await menu(page).getByRole('textbox').fill(list(color));
  await menu(page).waitFor({state: 'hidden'});
  await compared(page);
}

test('one divider shows two themes on every screen, by mouse', () => withStudio({entries: {global_color: blue}}, async (page) => {
  await paste(page, green);
  // A switch is on the right, a segment on the left.
  assert.ok((await colorsAt(page, 0.87)).includes(green));
  assert.ok((await colorsAt(page, 0.13)).includes(blue));
  const box = await page.locator('.looked-at img').boundingBox();
  const drag = async (from, to) => {
    await page.mouse.move(box.x + box.width * from, box.y + 300);
    await page.mouse.down();
    await page.mouse.move(box.x + box.width * to, box.y + 320, {steps: 4});
    await page.mouse.up();
  };
  await drag(0.6, 0.99);
  assert.equal(await divider(page).getAttribute('aria-valuenow'), '99');
  assert.ok(!(await colorsAt(page, 0.87)).includes(green));
  assert.ok((await colorsAt(page, 0.87)).includes(blue));
  await drag(0.5, -0.4);
  assert.equal(await divider(page).getAttribute('aria-valuenow'), '0');
  assert.ok((await colorsAt(page, 0.13)).includes(green));
  const overs = await page.locator('.over-picture').evaluateAll((all) => all.map((it) => getComputedStyle(it).clipPath));
  assert.deepEqual([...new Set(overs)], ['inset(0px 0px 0px 0%)'], 'all of them');
  // Its place is exactly the picture's.
  for (const where of ['.looked-at', '[data-screen=home]', '[data-screen=settings]']) {
    const [one, other] = await page.locator(where).evaluate((it) => ['img', '.over-picture'].map(
      (name) => it.querySelector(name).getBoundingClientRect().toJSON()));
    for (const side of ['x', 'y', 'width', 'height']) assert.ok(Math.abs(one[side] - other[side]) < 0.6, `${where} ${side}`);
  }
  await page.getByRole('button', {name: 'Stop comparing'}).click();
  assert.equal(await page.locator('.over-picture').count(), 0);
  assert.ok((await colorsAt(page, 0.13)).includes(blue));
  assert.equal(await divider(page).count(), 0);
}));

test('by keyboard: choosing, moving, ending', () => withStudio({entries: {global_color: blue}}, async (page) => {
  await page.getByRole('button', {name: 'Compare', exact: true}).focus();
  await page.keyboard.press('Enter');
  await menu(page).getByRole('button', {name: 'Meadow'}).press('Enter');
  await compared(page);
  const range = divider(page);
  assert.ok(await range.evaluate((it) => it === document.activeElement));
  assert.equal(await range.getAttribute('aria-label'), 'Divider between this theme and Meadow');
  for (const [key, wanted] of [['ArrowRight', 51], ['ArrowLeft', 50], ['PageUp', 60], ['Shift+ArrowLeft', 50], ['Home', 0],
                               ['ArrowLeft', 0], ['End', 100]]) {
    await page.keyboard.press(key);
    assert.equal(await range.getAttribute('aria-valuenow'), `${wanted}`, key);
  }
  assert.equal(await range.getAttribute('aria-valuetext'), '100 % of it this theme');
  assert.equal(await page.locator('.divided').evaluate((it) => getComputedStyle(it).outlineStyle), 'solid');
  await page.keyboard.press('Home');
  assert.ok((await colorsAt(page, 0.13)).includes('#2f9e44'));
  // A change of this theme leaves the other as it is; another screen and wallpaper have both.
  await colorField(page).fill('#7a1fc3');
  await colorField(page).press('Enter');
  await settled(page);
  assert.ok((await colorsAt(page, 0.13)).includes('#2f9e44'));
  await page.locator('[data-screen=home]').press('Enter');
  await page.getByRole('radio', {name: 'Dark'}).check();
  await page.waitForFunction(() => /^home.*wallpaper=dark/.test(document.querySelector('.looked-at .over-picture').dataset.shown));
  await page.getByRole('button', {name: 'Stop comparing'}).press('Enter');
  assert.ok(await page.getByRole('button', {name: 'Compare', exact: true}).evaluate((it) => it === document.activeElement));
}));

test('with how it was, a file, or text; what is no theme is refused',
     () => withStudio({entries: {global_color: blue}, complains: refusal}, async (page) => {
  await colorField(page).fill(green);
  await colorField(page).press('Enter');
  await settled(page);
  const choose = async (name) => {
    await page.getByRole('button', {name: /^Compare/}).click();
    await menu(page).getByRole('button', {name, exact: true}).click();
    await menu(page).waitFor({state: 'hidden'});
    await compared(page);
  };
  await choose('As it was opened');
  await divider(page).press('Home');
  await page.waitForTimeout(300);
  assert.ok((await colorsAt(page, 0.13)).includes(blue));
  await page.getByText('is saved').waitFor();
  await choose('The file as it is now');
  await page.waitForTimeout(300);
  assert.ok((await colorsAt(page, 0.13)).includes(green));

  await page.getByRole('button', {name: /^Compared/}).click();
  await menu(page).getByRole('textbox').fill('no theme');
  await menu(page).getByRole('alert').filter({hasText: 'no theme'}).waitFor();
  assert.ok(await menu(page).isVisible());
  await menu(page).locator('input[type=file]').setInputFiles({name: 'a.plist', mimeType: 'text/xml', buffer: Buffer.from(list('#ff00aa'))});
  await menu(page).waitFor({state: 'hidden'});
  await page.getByRole('button', {name: 'Compared with a.plist'}).waitFor();
  await page.waitForTimeout(600);
  assert.ok((await colorsAt(page, 0.13)).includes('#ff00aa'));

  // A list that is dropped on the button.
  const drop = async (text) => {
    const transfer = await page.evaluateHandle((contents) => {
      const data = new DataTransfer();
      data.items.add(new File([contents], 'dropped.plist'));
      return data;
    }, text);
    await page.locator('.compare').dispatchEvent('drop', {dataTransfer: transfer});
  };
  await drop('nothing');
  await menu(page).getByRole('alert').filter({hasText: 'no theme'}).waitFor();
  await drop(list('#00aaff'));
  await page.getByRole('button', {name: 'Compared with dropped.plist'}).waitFor();
  await menu(page).waitFor({state: 'hidden'});
  await page.waitForTimeout(600);
  assert.ok((await colorsAt(page, 0.13)).includes('#00aaff'));
}));

for (const colorScheme of ['light', 'dark']) {
  test(`comparing is accessible, ${colorScheme}`, () => withStudio({colorScheme}, async (page) => {
    await paste(page, green);
    for (const width of [375, 768, 1440]) {
      await page.setViewportSize({width, height: 900});
      await page.getByRole('button', {name: /^Compared/}).click();
      await page.evaluate(axe);
      const {violations} = await page.evaluate(() => window.axe.run());
      assert.deepEqual(violations.map(({id, nodes}) => [id, nodes.map(({target}) => target.join(' '))]), []);
      await page.keyboard.press('Escape');
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width}`);
    }
  }));
}
