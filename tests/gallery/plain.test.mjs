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
  }));
}
