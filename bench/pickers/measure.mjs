// node measure.mjs WIDTH HEIGHT FILE...
//
// How long other pickers take for decoded pictures: each file holds WIDTH x HEIGHT pixels of red,
// green, blue, alpha. Prints, as JSON, one list for each file of {name, version, call, best,
// median, color}; times are in milliseconds.
import { readFileSync } from 'node:fs';
import { performance } from 'node:perf_hooks';
import { getColor } from 'colorthief';
import { Vibrant } from 'node-vibrant/node';

const WARM_UP_MS = 500;
const MEASURED_MS = 1500;

const versionOf = (name) =>
  JSON.parse(readFileSync(new URL(`node_modules/${name}/package.json`, import.meta.url))).version;

// node-vibrant with an image class that returns the pixels instead of decoding a file. Everything
// else is its own: scaled down to a fifth, filtered, quantised to 64 colours, named swatches.
const NodeImage = Vibrant.DefaultOpts.ImageClass;
const onePixel = Buffer.from(
  'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg==',
  'base64',
);
const Bitmap = (await new NodeImage().load(onePixel))._image.constructor;

class Pixels extends NodeImage {
  load({ data, width, height }) {
    return new Promise((resolve, reject) => {
      this._image = new Bitmap({ data, width, height }, (error) =>
        error ? reject(error) : resolve(this),
      );
    });
  }
}

const pickers = [
  {
    name: 'node-vibrant',
    call: 'getPalette(), default options, pixels through an image class',
    async pick(picture) {
      const palette = await new Vibrant(picture, { ImageClass: Pixels }).getPalette();
      return (palette.Vibrant ?? palette.Muted)?.hex ?? '';
    },
  },
  {
    name: 'colorthief',
    call: 'getColor(), default options, pixels through a loader',
    async pick(picture) {
      const color = await getColor('', { loader: { load: async () => picture } });
      return color?.hex() ?? '';
    },
  },
];

async function measure(pick, picture) {
  const round = async () => {
    const start = performance.now();
    const color = await pick(picture);
    return { color, time: performance.now() - start };
  };
  let { color } = await round();
  for (const end = performance.now() + WARM_UP_MS; performance.now() < end; ) await round();
  const times = [];
  for (const end = performance.now() + MEASURED_MS; performance.now() < end; ) {
    times.push((await round()).time);
  }
  times.sort((a, b) => a - b);
  return { best: times[0], median: times[times.length >> 1], color };
}

const [width, height, ...files] = process.argv.slice(2);
const answer = [];
for (const file of files) {
  const picture = { data: readFileSync(file), width: Number(width), height: Number(height) };
  const list = [];
  for (const { name, call, pick } of pickers) {
    list.push({ name, version: versionOf(name), call, ...(await measure(pick, picture)) });
  }
  answer.push(list);
}
console.log(JSON.stringify(answer));
