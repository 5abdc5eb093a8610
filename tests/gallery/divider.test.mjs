// The divider between before and after: with mouse, finger and keyboard.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {withGallery} from './open.mjs';
import {at, clip, pair, pixels, point, slider} from './parts.mjs';

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

  // Without a pressed button nothing moves, and the other screen's divider never moves.
  await page.mouse.move(right.x, right.y);
  assert.equal(await clip(page, 'messages'), at(value));
  assert.equal(await clip(page, 'home'), at(50));

  // Beyond the picture's right edge, nothing is dyed.
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
