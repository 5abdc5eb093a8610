// What the page shows and changes.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {test} from 'node:test';
import {colorField, hasColor, large, sample, settled, small, value, withStudio, write} from './open.mjs';

const blue = '#1e88e5', green = '#12b457', violet = '#7a1fc3';
// The browser itself says so when an answer was 400 or 409.
const refusal = /the server responded with a status of 4/;

async function type(page, color, name) {
  await colorField(page, name).fill(color);
  await colorField(page, name).press('Enter');
  await settled(page);
}

test('a colour that is typed is in the pictures and in the file',
     () => withStudio({entries: {global_color: blue}}, async (page, {file}) => {
  assert.ok(await hasColor(page, large, blue));
  await type(page, green);
  assert.ok(await hasColor(page, large, green));
  assert.ok(!await hasColor(page, large, blue));
  assert.ok(await hasColor(page, small('twitter'), green));
  await page.getByText('is saved').waitFor();
  assert.match(fs.readFileSync(file, 'utf8'), /#12b457/);

  await colorField(page).fill('blue');
  await colorField(page).press('Enter');
  assert.equal(await colorField(page).getAttribute('aria-invalid'), 'true');
  assert.equal(await value(page, 'global_color'), green);
  await colorField(page).press('Escape');
  assert.equal(await colorField(page).inputValue(), green);
}));

test('what is being typed stays while other news comes', () => withStudio({entries: {global_color: blue}}, async (page, {file}) => {
  await colorField(page).focus();
  await page.keyboard.press('Control+a');
  await page.keyboard.type('#12b');
  write(file, {global_color: blue, cc_color: violet});
  await page.waitForFunction(async () => (await import('./theme.js')).theme.value('cc_color'));
  assert.equal(await colorField(page).inputValue(), '#12b');
  await page.keyboard.type('457');
  await page.keyboard.press('Enter');
  await settled(page);
  assert.equal(await value(page, 'global_color'), green);
  // The value itself is another matter.
  await page.keyboard.press('Backspace');
  write(file, {global_color: violet, cc_color: violet});
  await page.waitForFunction((wanted) => document.activeElement.value === wanted, violet);
}));

test('every step can be undone and done again', () => withStudio({entries: {global_color: blue}}, async (page) => {
  await type(page, green);
  await type(page, violet);
  await page.keyboard.press('Control+z');
  await settled(page);
  assert.equal(await value(page, 'global_color'), green);
  assert.ok(await hasColor(page, large, green));
  await page.getByRole('button', {name: 'Undo'}).click();
  await settled(page);
  assert.equal(await value(page, 'global_color'), blue);
  assert.ok(await page.getByRole('button', {name: 'Undo'}).isDisabled());
  await page.keyboard.press('Control+Shift+z');
  await page.keyboard.press('Control+y');
  await settled(page);
  assert.equal(await value(page, 'global_color'), violet);

  await page.getByRole('button', {name: 'Reset', exact: true}).click();
  await settled(page);
  assert.equal(await value(page, 'global_color'), undefined);
  await page.getByRole('button', {name: 'History'}).click();
  const states = page.locator('.states button');
  assert.deepEqual(await states.allTextContents(), ['As it was opened', 'Colour', 'Colour', 'Reset']);
  await states.nth(0).click();
  await settled(page);
  assert.equal(await value(page, 'global_color'), blue);
}));

test('while colours are dragged, the newest wins, and it is one step', () => withStudio({}, async (page, {requests}) => {
  requests.length = 0;
  await page.evaluate(async () => {
    const picker = document.querySelector('input[type=color]');
    for (let i = 0; i < 120; ++i) {
      picker.value = `#${(0x200000 + i).toString(16)}`;
      picker.dispatchEvent(new Event('input', {bubbles: true}));
      await new Promise((done) => setTimeout(done, 4));
    }
    picker.dispatchEvent(new Event('change', {bubbles: true}));
  });
  await settled(page);
  assert.ok(await hasColor(page, large, '#200077'));
  assert.ok(await hasColor(page, small('application'), '#200077'));
  assert.ok(requests.length < 9 * 120, `${requests.length} requests`);
  assert.equal(await page.evaluate(async () => (await import('./theme.js')).theme.state.history.length), 2);
}));

test('an image that is dropped on a colour gives it one, and offers others', () => withStudio({}, async (page) => {
  const bytes = fs.readFileSync(sample('covers/dusk.png')).toString('base64');
  const transfer = await page.evaluateHandle((text) => {
    const data = new DataTransfer();
    const image = Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
    data.items.add(new File([image], 'dusk.png', {type: 'image/png'}));
    return data;
  }, bytes);
  const field = page.locator('.color-field').first();
  await field.dispatchEvent('drop', {dataTransfer: transfer});
  const candidates = field.locator('.candidate');
  await candidates.first().waitFor();
  await settled(page);
  const first = await value(page, 'global_color');
  assert.match(await candidates.first().getAttribute('aria-label'), new RegExp(`^important: ${first}$`));
  assert.ok(await candidates.count() >= 5);
  await candidates.nth(1).click();
  await settled(page);
  const second = await value(page, 'global_color');
  assert.notEqual(second, first);
  assert.ok(await hasColor(page, large, second));
}));

// What its pixels are, in short.
const contents = (page, selector) => page.locator(selector).evaluate(async (image) => {
  const canvas = new OffscreenCanvas(image.naturalWidth, image.naturalHeight), drawing = canvas.getContext('2d');
  drawing.drawImage(image, 0, 0);
  const {data} = drawing.getImageData(0, 0, canvas.width, canvas.height);
  return Array.from(new Uint8Array(await crypto.subtle.digest('SHA-256', data))).join(' ');
});

test('a wallpaper and an icon stay with the theme', () => withStudio({complains: refusal}, async (page, {file}) => {
  const row = page.locator('.material-row', {hasText: 'Light wallpaper'});
  const before = await page.locator(small('home')).getAttribute('src');
  await row.locator('input[type=file]').setInputFiles(sample('covers/tides.png'));
  await row.locator('img[src]').waitFor();
  await settled(page);
  assert.notEqual(await page.locator(small('home')).getAttribute('src'), before);
  assert.equal(fs.readdirSync(`${file}.materials`).length, 2);
  await row.locator('input[type=file]').setInputFiles({name: 'a.png', mimeType: 'image/png', buffer: Buffer.from('x')});
  await row.getByText('neither PNG nor JPEG').waitFor();
  const own = await contents(page, small('home'));
  await row.getByRole('button', {name: 'Light wallpaper: the sample again'}).click();
  await row.locator('img[hidden]').waitFor({state: 'attached'});
  await settled(page);
  const index = () => JSON.parse(fs.readFileSync(`${file}.materials/materials.json`, 'utf8'));
  assert.deepEqual(index(), {});
  const sampled = await contents(page, small('home'));
  assert.notEqual(sampled, own);

  // Each is a step of the history, beside those of the settings.
  await type(page, '#123');
  await page.getByRole('button', {name: 'History'}).click();
  assert.deepEqual(await page.locator('.states button').allTextContents(),
                   ['As it was opened', 'Light wallpaper', 'Light wallpaper', 'Colour']);
  await page.keyboard.press('Escape');
  await page.keyboard.press('Control+z');
  await page.keyboard.press('Control+z');
  await settled(page);
  assert.deepEqual(Object.keys(index()), ['wallpaper/light']);
  await row.locator('img[src]').waitFor();
  assert.equal(await contents(page, small('home')), own);
  await page.keyboard.press('Control+z');
  await settled(page);
  assert.deepEqual(index(), {});
  assert.equal(await contents(page, small('home')), sampled);
  await page.keyboard.press('Control+Shift+z');
  await settled(page);
  assert.equal(await contents(page, small('home')), own);
}));

test("an editor's change shows, and what both changed is asked", () => withStudio({entries: {global_color: blue}, complains: refusal}, async (page, {file}) => {
  write(file, {global_color: green});
  await page.waitForFunction(() => document.querySelector('.hex').value === '#12b457');
  await settled(page);
  assert.ok(await hasColor(page, large, green));
  // Another page, whose change this one has not heard of.
  await page.evaluate(async () => {
    const {theme, post} = await import('./theme.js');
    const before = theme.state.revision;
    await post('changes', {page: 'another', revision: before, changes: {global_color: '#7a1fc3'}});
    theme.state.revision = before;
    theme.change({global_color: '#010203'});
  });
  const dialog = page.getByRole('dialog');
  await dialog.getByText('#7a1fc3').waitFor();
  await page.keyboard.press('Escape');
  assert.ok(await dialog.isVisible());
  await dialog.getByRole('button', {name: 'Keep those here'}).click();
  await settled(page);
  assert.equal(await value(page, 'global_color'), '#010203');
}));

test('an application has values of its own, or is left out', () => withStudio({}, async (page) => {
  await page.locator('summary', {hasText: 'Applications'}).click();
  await page.getByRole('textbox', {name: 'Identifier of an application'}).fill('com.example.other');
  await page.keyboard.press('Enter');
  const other = page.locator('.application', {hasText: 'com.example.other'});
  await other.getByRole('switch', {name: 'Dyed'}).click();
  assert.equal(await value(page, 'com.example.other_enabled'), false);
  const messages = page.locator('.application', {hasText: 'com.apple.MobileSMS'});
  await messages.locator('summary').click();
  await messages.getByRole('switch', {name: 'Values of its own'}).click();
  await messages.getByRole('textbox', {name: 'Colour', exact: true}).fill(green);
  await page.keyboard.press('Enter');
  await settled(page);
  assert.ok(await hasColor(page, small('messages'), green));
  assert.ok(!await hasColor(page, small('application'), green));
}));

test('search leaves what fits', () => withStudio({}, async (page) => {
  await page.keyboard.press('/');
  await page.keyboard.type('keyb');
  const rows = page.locator('.controls .row:visible');
  assert.deepEqual(await rows.locator('.title').allTextContents(), ['Keyboard']);
  await page.getByRole('searchbox').fill('nothing has this');
  assert.ok(await page.getByText('No setting has these words.').isVisible());
}));
