// The page without scripts.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {enlarge, faultsOf} from './measures.mjs';
import {withGallery} from './open.mjs';

for (const width of [375, 1200]) {
  test(`without scripts every picture is there, ${width} px wide`, () => withGallery({
    javaScriptEnabled: false, viewport: {width, height: 900},
  }, async (page) => {
    const figures = page.locator('figure');
    assert.equal(await figures.count(), 8);
    assert.equal(await page.getByRole('heading', {level: 2}).count(), 2);
    await figures.last().scrollIntoViewIfNeeded();
    const [before, after] = [page.getByAltText('Before').last(), page.getByAltText('After').last()];
    const [left, right] = [await before.boundingBox(), await after.boundingBox()];
    assert.equal(left.y, right.y, 'side by side');
    assert.ok(left.x + left.width <= right.x && right.x + right.width <= width);
    assert.ok(left.width > 100);
    assert.deepEqual(await faultsOf(page), []);
    await enlarge(page);
    assert.deepEqual(await faultsOf(page), [], 'text of 200 %');
  }));
}

test('without scripts links lead to a tab and a wallpaper', () => withGallery({
  javaScriptEnabled: false, viewport: {width: 768, height: 900}, hash: '#tab=album-art&wallpaper=dark',
}, async (page) => {
  const target = page.locator('figure:target');
  assert.match(await target.locator('figcaption').textContent(), /dark wallpaper/);
  const box = await target.boundingBox();
  assert.ok(box.y > -1 && box.y < 900, `${box.y}`);
  await page.getByRole('listitem').filter({hasText: 'Global colour'}).getByRole('link', {name: 'light wallpaper'}).click();
  assert.equal(await target.locator('img').first().getAttribute('src'), 'global-color/messages-light-before.png');
  assert.ok((await target.boundingBox()).y < 900);
  assert.deepEqual(await page.locator('section > p > code').allTextContents(), ['themes/violet.plist', '<b>.plist']);
}));
