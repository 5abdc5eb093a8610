// Parts of the page, and what they show.
export const slider = (page, screen) => page.getByRole('slider', {name: screen});
export const figure = (page, screen) => page.locator(`.panel:not([hidden]) [data-screen=${screen}]`);
export const pair = (page, screen) => figure(page, screen).locator('.pair');
export const clip = (page, screen) =>
  figure(page, screen).locator('.after').evaluate((image) => getComputedStyle(image).clipPath);
export const at = (share) => `inset(0px 0px 0px ${share}%)`;

// The point at a share of the picture's width, in a bar of the sample.
export async function point(page, screen, share) {
  const box = await pair(page, screen).boundingBox();
  return {x: box.x + box.width * share, y: box.y + box.height * 0.15};
}

export async function pixels(page, {x, y}) {
  return (await page.screenshot({clip: {x: x - 2, y: y - 2, width: 4, height: 4}})).toString('base64');
}

export async function shown(page, screen) {
  return figure(page, screen).locator('img').evaluateAll(
    (images) => images.map((image) => ({path: image.getAttribute('src').split('?')[0],
                                        read: image.complete && image.naturalWidth > 0})));
}

export const paths = (...names) => names.map((name) => ({path: name, read: true}));
