// The pictures: the screen that is looked at, large, and all of them, small. A picture that is asked
// for shows the newest settings; while it is on its way, nothing else is asked for it.
import {choice, element, find} from './elements.js';
import {theme} from './theme.js';

const wallpapers = [{value: 'light', title: 'Light'}, {value: 'dark', title: 'Dark'}];
export const situation = {wallpaper: 'light', plays: false, front: false, before: false};

class Picture {
  #isBusy = false;
  #shown = '';
  #tag = '';
  #url = '';

  constructor(image, scale) {
    this.image = image;
    this.scale = scale;
  }

  look(screen) {
    this.screen = screen;
    this.image.alt = screen.title;
  }

  get #wanted() {
    const {wallpaper, plays, front, before} = {...situation, ...this.peeked};
    return new URLSearchParams({wallpaper, scale: this.scale, revision: theme.state.revision, plays: Number(plays),
                                front: Number(front), before: Number(before)}).toString();
  }
  get isShown() { return this.#shown === `${this.screen.id}?${this.#wanted}`; }

  async refresh() {
    if (this.#isBusy) return;
    this.#isBusy = true;
    while (!this.isShown) {
      const revision = theme.state.revision, wanted = `${this.screen.id}?${this.#wanted}`;
      try {
        const response = await fetch(`picture/${wanted}&have=${this.#tag}`, {cache: 'no-store'});
        if (!response.ok) throw new Error((await response.json()).failure);
        if (response.status !== 204) {
          const url = URL.createObjectURL(await response.blob());
          const next = new Image();
          next.src = url;
          await next.decode();
          this.image.src = url;
          URL.revokeObjectURL(this.#url);
          this.#url = url;
          this.#tag = (response.headers.get('ETag') ?? '').slice(1, -1);
        }
        this.image.classList.remove('failed');
        this.image.title = '';
      } catch (error) {
        this.image.classList.add('failed');
        this.image.title = error.message;
        if (theme.isLost) break;
      }
      this.#shown = wanted;
      this.image.dataset.revision = revision;
    }
    this.#isBusy = false;
  }
}

let large, small = [], isRefreshing = false, isWanted = false;
export const pictures = () => [large, ...small];

// First the screen that is looked at, then the others. While a colour is dragged, they follow a few
// times a second.
const pause = 400;
// A processor more than there are, since one of the pictures waits for the process with the most screens.
const atOnce = 3;
let followed = 0;

// One picture of each process first, and of the one with the most screens before all: it takes longest
// to answer. The others of that process are drawn last.
function inOrder(pictures) {
  const byProcess = new Map();
  for (const picture of pictures) {
    const {bundle} = picture.screen;
    byProcess.set(bundle, [...byProcess.get(bundle) ?? [], picture]);
  }
  const processes = [...byProcess.values()].sort((one, other) => other.length - one.length);
  return [...processes.map(([first]) => first), ...processes.reverse().flatMap(([, ...rest]) => rest)];
}

async function refresh() {
  isWanted = true;
  theme.dispatchEvent(new Event('look'));
  large.refresh();
  if (isRefreshing) return;
  isRefreshing = true;
  while (isWanted) {
    isWanted = false;
    await large.refresh();
    if (isWanted && performance.now() - followed < pause) continue;
    const left = inOrder(small);
    const work = async () => {
      for (let next = left.shift(); next; next = left.shift()) await next.refresh();
    };
    await Promise.all(Array.from({length: atOnce}, work));
    followed = performance.now();
  }
  isRefreshing = false;
}

function lookAt(id) {
  large.peeked = lookedAt = undefined;
  const chosen = small.find(({screen}) => screen.id === id) ?? small[0];
  large.look(chosen.screen);
  find('.looked-at figcaption').textContent = chosen.screen.title;
  for (const picture of small) picture.button.setAttribute('aria-pressed', picture === chosen);
  history.replaceState(null, '', `#${chosen.screen.id}`);
  refresh();
}

// Shows another screen and wallpaper in the large picture until it is called without them.
let lookedAt;
export async function peek(screen, wallpaper) {
  const chosen = small.find((picture) => picture.screen.id === screen);
  lookedAt ??= large.screen;
  large.peeked = chosen && {before: false, ...wallpaper && {wallpaper}};
  large.look(chosen?.screen ?? lookedAt);
  find('.looked-at figcaption').textContent = large.screen.title;
  if (!chosen) lookedAt = undefined;
  theme.dispatchEvent(new Event('look'));
  await large.refresh();
}

function toggle(name, title) {
  const button = element('button', {type: 'button', class: 'toggle', 'aria-pressed': 'false'}, title);
  button.addEventListener('click', () => {
    situation[name] = !situation[name];
    button.setAttribute('aria-pressed', situation[name]);
    refresh();
  });
  return button;
}

export function showScreens(screens) {
  large = new Picture(find('.looked-at img'), 2);
  small = screens.map((screen) => {
    const picture = new Picture(element('img', {width: 375, height: 667}), 1);
    picture.look(screen);
    picture.image.alt = '';
    picture.button = element('button', {type: 'button', class: 'screen-button', 'data-screen': screen.id}, picture.image,
                             element('span', {class: 'name'}, screen.title));
    picture.button.addEventListener('click', () => lookAt(screen.id));
    return picture;
  });
  find('.others').append(...small.map(({button}) => button));
  find('.situation').append(
    element('div', {class: 'choices', role: 'radiogroup', 'aria-label': 'Wallpaper'}, ...choice('wallpaper', wallpapers, 'light', (value) => {
      situation.wallpaper = value;
      refresh();
    })),
    toggle('front', 'App in front'), toggle('plays', 'Music plays'), toggle('before', 'Without Varnix'));
  theme.addEventListener('change', refresh);
  lookAt(location.hash.slice(1));
}
