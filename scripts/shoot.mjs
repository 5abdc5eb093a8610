// node shoot.mjs ADDRESS WIDTH HEIGHT OUT [PRESSED POINTED]   a picture of a page, once all its images are
// there. PRESSED is pressed first, and the first POINTED is waited for and pointed at; both are selectors. To
// be copied beside the packages of tests/gallery.
import {chromium} from 'playwright-core';

const [, , address, width, height, out, pressed, pointed] = process.argv;
const browser = await chromium.launch({executablePath: process.env.BROWSER});
try {
  const page = await browser.newPage({viewport: {width: Number(width), height: Number(height)}});
  await page.goto(address);
  // Those that show nothing yet have no source.
  await page.waitForFunction(() => {
    const images = [...document.querySelectorAll('figure:not([hidden]) img, button img')];
    return images.length > 0 && images.every((it) => it.src && it.complete && it.naturalWidth > 0);
  });
  if (pressed) {
    await page.locator(pressed).click();
    await page.locator(pointed).first().hover();
    await page.waitForTimeout(1000);
  }
  await page.screenshot({path: out});
} finally {
  await browser.close();
}
