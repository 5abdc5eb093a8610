// node measure.mjs VARNIX OUT
//
// Milliseconds from a change in the studio's page until its new pictures are on the screen: of the one
// that is looked at, and of all; and how many pictures a second a drag through colours shows. Prints
// the medians beside their goals and writes them to OUT as JSON.
import {spawn} from 'node:child_process';
import {writeFileSync} from 'node:fs';
import {chromium} from 'playwright-core';

const [, , varnix, out] = process.argv;
const rounds = process.env.VARNIX_BENCH === 'short' ? 1 : 25;
const goals = {one: 150, all: 600};

// In the page: each round changes the colour and waits until the pictures have been painted.
async function measureChanges(count) {
  const {theme} = await import('./theme.js');
  const painted = () => new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
  const times = {one: [], all: []};
  for (let i = 0; i < count; ++i) {
    const start = performance.now(), wanted = theme.state.revision + 1;
    theme.change({global_color: `#${(0x102030 + i * 0x090705).toString(16).padStart(6, '0')}`});
    for (const [name, selector] of [['one', '.looked-at img'], ['all', '.looked-at img, .others img']]) {
      const pictures = [...document.querySelectorAll(selector)];
      while (pictures.some((it) => Number(it.dataset.revision) < wanted)) await new Promise((done) => setTimeout(done, 1));
      await painted();
      times[name].push(performance.now() - start);
    }
    // The theme is saved meanwhile.
    await new Promise((done) => setTimeout(done, 250));
  }
  return times;
}

// In the page: how many different pictures of the screen that is looked at appear while a colour
// changes at each frame of the display.
async function measureDrag(milliseconds) {
  const {theme} = await import('./theme.js');
  const image = document.querySelector('.looked-at img');
  const seen = new Set();
  const start = performance.now();
  for (let i = 0; performance.now() - start < milliseconds; ++i) {
    theme.change({global_color: `#20${(i % 0x10000).toString(16).padStart(4, '0')}`}, {group: 'drag'});
    await new Promise(requestAnimationFrame);
    seen.add(image.src);
  }
  return (seen.size - 1) / milliseconds * 1000;
}

const median = (values) => values.sort((a, b) => a - b)[Math.floor(values.length / 2)];

const child = spawn(varnix, ['studio', '--no-browser'], {stdio: ['ignore', 'pipe', 'inherit']});
const ended = new Promise((done) => child.once('exit', done));
const browser = await chromium.launch({executablePath: process.env.BROWSER});
try {
  const address = await new Promise((done) => child.stdout.once('data', (text) => done(`${text}`.trim())));
  const figures = [];
  for (const [id, title] of [['application', 'an application'], ['control-centre', 'Control Centre']]) {
    const page = await browser.newPage({viewport: {width: 1440, height: 900}});
    await page.goto(`${address}#${id}`);
    await page.waitForFunction(() => document.querySelectorAll('.others img').length > 0 &&
      [...document.querySelectorAll('.looked-at img, .others img')].every((it) => 'revision' in it.dataset));
    await page.evaluate(measureChanges, 3);
    const times = await page.evaluate(measureChanges, rounds);
    figures.push({measure: `studio, ${title}: change to picture, ms`, value: median(times.one), goal: goals.one},
                 {measure: `studio, ${title}: change to all pictures, ms`, value: median(times.all), goal: goals.all},
                 {measure: `studio, ${title}: pictures a second in a drag`, value: await page.evaluate(measureDrag, rounds === 1 ? 200 : 2000)});
    await page.close();
  }
  console.log(`\n${'measure'.padEnd(60)} ${'value'.padStart(10)} ${'goal'.padStart(9)}`);
  for (const {measure, value, goal} of figures) {
    const verdict = goal === undefined ? '' : value <= goal ? 'held' : 'MISSED';
    console.log(`${measure.padEnd(60)} ${value.toFixed(2).padStart(10)} ${(goal ? `<= ${goal}` : '').padStart(9)}  ${verdict}`);
  }
  writeFileSync(out, `${JSON.stringify(figures, null, 2)}\n`);
} finally {
  await browser.close();
  child.kill('SIGTERM');
  await ended;
}
