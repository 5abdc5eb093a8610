'use strict';

// Elements

function element(name, attributes = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (value === true) made.setAttribute(key, '');
    else if (value !== false && value !== null) made.setAttribute(key, value);
  }
  made.append(...children);
  return made;
}

// Moves nothing that is in its place already: what is moved loses the focus.
function setChildren(parent, children) {
  if (children.length === parent.children.length &&
      children.every((child, i) => child === parent.children[i])) {
    return;
  }
  parent.replaceChildren(...children);
}

const find = (selector) => document.querySelector(selector);

// Pictures

const address = ({path, revision}) =>
  `${path.split('/').map(encodeURIComponent).join('/')}?${revision}`;

// Shows the picture when it has been read, so that the place is never empty. Its revision stands in
// the address: a picture that was drawn anew is read anew. True where it is another than before.
function show(image, picture) {
  const wanted = address(picture);
  const asked = image.dataset.asked;
  if (asked === wanted) return false;
  image.dataset.asked = wanted;
  if (asked === undefined) {
    image.src = wanted;
    return false;
  }
  const next = new Image();
  next.src = wanted;
  const swap = () => {
    if (image.dataset.asked === wanted) image.src = wanted;
  };
  next.decode().then(swap, swap);
  return true;
}

// A screen: two pictures, one on the other, of which the upper one shows right of the handle.

const positions = new Map();

class Screen {
  constructor(screen) {
    this.before = element('img', {class: 'before', draggable: 'false'});
    this.after = element('img', {class: 'after', draggable: 'false'});
    this.range = element('input', {type: 'range', min: 0, max: 100, step: 1});
    this.pair = element('div', {class: 'pair'}, this.before, this.after, this.range,
                        element('span', {class: 'handle', 'aria-hidden': 'true'}));
    this.name = element('span', {class: 'name'});
    this.figure = element('figure', {class: 'screen', 'data-screen': screen.id}, this.pair,
                          element('figcaption', {},
                                  element('span', {class: 'side', 'aria-hidden': 'true'}, 'before'),
                                  this.name,
                                  element('span', {class: 'side', 'aria-hidden': 'true'}, 'after')));
    this.id = screen.id;
    this.range.addEventListener('input', () => this.moveAll(this.range.valueAsNumber));
    this.followPointer();
    this.move(positions.get(this.id) ?? 50);
  }

  update(screen, wallpaper) {
    const pictures = screen[wallpaper] ?? screen.light ?? screen.dark;
    this.figure.hidden = !pictures;
    this.name.textContent = screen.title;
    this.before.alt = `${screen.title}, before`;
    this.after.alt = `${screen.title}, after`;
    this.range.setAttribute('aria-label', `${screen.title}: from before to after`);
    if (!pictures) return false;
    const changed = [show(this.before, pictures.before), show(this.after, pictures.after)];
    return changed.includes(true);
  }

  glow() {
    this.pair.classList.remove('redrawn');
    // Asked for, the layout takes note of the class being away, and the glow starts anew.
    void this.pair.offsetWidth;
    this.pair.classList.add('redrawn');
  }

  move(position) {
    this.range.value = position;
    this.pair.style.setProperty('--at', `${this.range.value}%`);
    this.range.setAttribute('aria-valuetext', `${100 - this.range.value} % of it after`);
  }

  // The same screen stands alike in every tab, so that settings can be compared.
  moveAll(position) {
    positions.set(this.id, position);
    for (const screen of screens.values()) {
      if (screen.id === this.id) screen.move(position);
    }
  }

  // The whole picture can be dragged, which a range's own track does not allow everywhere. A finger
  // moves the divider when it taps, or goes sideways: up and down it scrolls the page, of which the
  // first moves come here all the same.
  followPointer() {
    const sideways = 6;
    let held = null;
    const moveTo = ({clientX}) => {
      const {left, width} = this.pair.getBoundingClientRect();
      this.moveAll(Math.round((clientX - left) / width * 1000) / 10);
    };
    this.pair.addEventListener('pointerdown', (event) => {
      if (!event.isPrimary || event.button !== 0) return;
      const {pointerId: id, clientX: x, clientY: y, pointerType} = event;
      held = {id, x, y, moves: pointerType !== 'touch', taps: true};
      this.pair.setPointerCapture(id);
      if (held.moves) moveTo(event);
    });
    this.pair.addEventListener('pointermove', (event) => {
      if (event.pointerId !== held?.id) return;
      const across = Math.abs(event.clientX - held.x), along = Math.abs(event.clientY - held.y);
      if (Math.max(across, along) > sideways) {
        held.moves ||= held.taps && across > along;
        held.taps = false;
      }
      if (held.moves) moveTo(event);
    });
    this.pair.addEventListener('pointerup', (event) => {
      if (event.pointerId !== held?.id) return;
      if (held.moves || held.taps) moveTo(event);
      held = null;
      this.range.focus({preventScroll: true, focusVisible: false});
    });
    this.pair.addEventListener('pointercancel', () => { held = null; });
  }
}

// The table of surfaces

const columns = ['Surface', 'Before', 'After', 'Contrast', 'Same hue at 4.5'];

function swatch(color) {
  const made = element('span', {class: 'swatch', 'aria-hidden': 'true'});
  made.style.setProperty('--color', color);
  return made;
}

// Text in the colour on what lies behind it.
function sample(color, behind) {
  const made = element('span', {class: 'sample', 'aria-hidden': 'true'}, 'Aa');
  made.style.color = color;
  made.style.background = behind;
  return made;
}

// An opaque colour without its alpha.
const shortHex = (color) => color.length === 9 && color.endsWith('ff') ? color.slice(0, 7) : color;

const hex = (color) => element('code', {}, shortHex(color));

const none = (text) => element('span', {class: 'none'}, text);

function answer(value) {
  if (value === null) return none('none');
  if (typeof value === 'boolean') return element('span', {}, value ? 'yes' : 'no');
  return element('span', {class: 'color'}, swatch(value), hex(value));
}

function contrast({after, behind, contrast: ratio, below}) {
  if (ratio === null) return none('\u2013');
  const parts = [sample(after, behind), element('span', {class: 'ratio'}, ratio.toFixed(2))];
  if (below !== null) {
    parts.push(element('span', {class: below === 3 ? 'mark bad' : 'mark poor'},
                       `below ${below.toFixed(1)}`));
  }
  return element('span', {class: 'color'}, ...parts);
}

function nearest({behind, contrast: ratio, nearest: color}) {
  if (color !== null) return element('span', {class: 'color'}, sample(color, behind), hex(color));
  return none(ratio === null ? '\u2013' : 'as it is');
}

const isDyed = (surface) => surface.before !== surface.after;

function row(surface) {
  const cells = [answer(surface.before), answer(surface.after), contrast(surface), nearest(surface)];
  return element('tr', {role: 'row'},
                 element('th', {role: 'rowheader', scope: 'row'},
                         element('code', {class: 'class'}, surface.class),
                         element('span', {class: 'property'}, surface.property),
                         element('span', {class: 'case'}, surface.case ?? '')),
                 ...cells.map((cell, i) => element(
                   'td', {role: 'cell'},
                   element('span', {class: 'column', 'aria-hidden': 'true'}, columns[i + 1]), cell)));
}

function group(process, surfaces) {
  return element('tbody', {role: 'rowgroup'},
                 element('tr', {role: 'row', class: 'process'},
                         element('th', {role: 'rowheader', scope: 'rowgroup', colspan: columns.length},
                                 process)),
                 ...surfaces.map(row));
}

const filters = {
  all: {title: 'All', takes: () => true},
  dyed: {title: 'Dyed', takes: isDyed},
  poor: {title: 'Below 4.5', takes: (surface) => surface.below !== null},
};
let filter = 'all';

function table(tab) {
  const processes = new Map();
  for (const surface of tab.surfaces.filter(filters[filter].takes)) {
    const process = surface.process ?? '';
    processes.set(process, [...processes.get(process) ?? [], surface]);
  }
  if (processes.size === 0) return element('p', {class: 'notice'}, 'There are none.');
  return element('table', {role: 'table'},
                 element('caption', {class: 'unseen'}, `Surfaces with ${tab.title}`),
                 element('thead', {role: 'rowgroup'},
                         element('tr', {role: 'row'},
                                 ...columns.map((name) => element(
                                   'th', {role: 'columnheader', scope: 'col'}, name)))),
                 ...[...processes].map(([process, surfaces]) => group(process, surfaces)));
}

function counted(number, one, many) { return `${number} ${number === 1 ? one : many}`; }

function countText(surfaces) {
  const below = surfaces.filter(filters.poor.takes);
  const bad = below.filter((surface) => surface.below === 3).length;
  const text = `${counted(surfaces.length, 'surface', 'surfaces')}, ${surfaces.filter(isDyed).length} dyed`;
  if (below.length === 0) return text;
  return `${text}, ${below.length} with a contrast below 4.5` +
    (bad === 0 ? '' : `, ${bad} of these below 3.0`);
}

function surfaceList(tab) {
  const body = element('div', {class: 'rows'}, table(tab));
  const choices = choice(`filter-${tab.id}`, Object.entries(filters).map(
    ([value, {title}]) => ({value, title})), filter, (value) => {
    filter = value;
    for (const other of gallery.tabs) refreshSurfaces(other);
  });
  return element('section', {class: 'surfaces', 'aria-labelledby': `surfaces-${tab.id}`},
                 element('div', {class: 'heading'},
                         element('div', {}, element('h2', {id: `surfaces-${tab.id}`}, 'Surfaces'),
                                 element('p', {class: 'count'}, countText(tab.surfaces))),
                         element('fieldset', {}, element('legend', {class: 'unseen'}, 'Surfaces shown'),
                                 element('div', {class: 'choices'}, ...choices))),
                 body);
}

function refreshSurfaces(tab) {
  const section = document.getElementById(`panel-${tab.id}`).querySelector('.surfaces');
  section.querySelector('.rows').replaceChildren(table(tab));
  section.querySelector('.count').textContent = countText(tab.surfaces);
  section.querySelector(`input[value=${filter}]`).checked = true;
}

// Radio buttons side by side

function choice(name, options, chosen, choose) {
  return options.map(({value, title}) => {
    const input = element('input', {type: 'radio', name, value, checked: value === chosen});
    input.addEventListener('change', () => choose(value));
    return element('label', {}, input, element('span', {}, title));
  });
}

// The gallery

const wallpaperTitles = {light: 'Light', dark: 'Dark'};
const screens = new Map();
let gallery = {revision: '', tabs: []}, shownShape;
let wallpaper = 'light';
let chosenTab = tabInAddress();

function tabInAddress() {
  try {
    return decodeURIComponent(location.hash.slice(1));
  } catch {
    return '';
  }
}

function chooseTab(id) {
  chosenTab = gallery.tabs.some((tab) => tab.id === id) ? id : gallery.tabs[0]?.id;
  const strip = find('.settings');
  for (const tab of find('.tabs').children) {
    const chosen = tab.id === `tab-${chosenTab}`;
    tab.setAttribute('aria-selected', chosen);
    tab.tabIndex = chosen ? 0 : -1;
    if (chosen) strip.scrollLeft = tab.offsetLeft - (strip.clientWidth - tab.offsetWidth) / 2;
  }
  for (const panel of document.querySelectorAll('.panel')) panel.hidden = panel.id !== `panel-${chosenTab}`;
}

function makeTab({id, title}) {
  const tab = element('button', {type: 'button', role: 'tab', id: `tab-${id}`,
                                 'aria-controls': `panel-${id}`}, title);
  tab.addEventListener('click', () => {
    chooseTab(id);
    history.replaceState(null, '', `#${encodeURIComponent(id)}`);
  });
  return tab;
}

function makePanel(tab) {
  const alone = gallery.tabs.length === 1;
  return element('section', {class: 'panel', id: `panel-${tab.id}`, role: alone ? 'region' : 'tabpanel',
                             'aria-label': alone ? tab.title : null,
                             'aria-labelledby': alone ? null : `tab-${tab.id}`},
                 element('p', {class: 'summary'}), element('div', {class: 'screens'}), surfaceList(tab));
}

find('.tabs').addEventListener('keydown', (event) => {
  const tabs = [...event.currentTarget.children];
  const from = tabs.indexOf(document.activeElement);
  const to = {ArrowRight: from + 1, ArrowLeft: from - 1, Home: 0, End: -1}[event.key];
  if (to === undefined) return;
  event.preventDefault();
  const next = tabs.at(to % tabs.length);
  next.focus();
  next.click();
});

addEventListener('hashchange', () => chooseTab(tabInAddress()));

// The screens that look otherwise than before.
function updateScreens() {
  return gallery.tabs.flatMap((tab) => tab.screens.map((screen) => {
    const shown = screens.get(`${tab.id}/${screen.id}`);
    return shown.update(screen, wallpaper) ? shown : null;
  })).filter(Boolean);
}

function setUpWallpapers() {
  const there = Object.keys(wallpaperTitles).filter(
    (name) => gallery.tabs.some((tab) => tab.screens.some((screen) => screen[name])));
  if (!there.includes(wallpaper)) wallpaper = there[0] ?? 'light';
  const options = there.map((value) => ({value, title: wallpaperTitles[value]}));
  find('.wallpapers').hidden = there.length < 2;
  find('.wallpapers .choices').replaceChildren(...choice('wallpaper', options, wallpaper, (value) => {
    wallpaper = value;
    updateScreens();
  }));
}

const shapeOf = ({tabs}) => JSON.stringify(tabs.map(({id, title, screens: all}) =>
  [id, title, all.map((screen) => [screen.id, Object.keys(screen)])]));

function present(next) {
  const shape = shapeOf(next), sameShape = shape === shownShape;
  shownShape = shape;
  gallery = next;
  if (!sameShape) {
    find('.tabs').replaceChildren(...gallery.tabs.map(makeTab));
    find('.settings').hidden = gallery.tabs.length < 2;
    find('main').replaceChildren(...gallery.tabs.map(makePanel));
    if (gallery.tabs.length === 0) find('main').append(element('p', {class: 'notice'}, 'Nothing was drawn.'));
    setUpWallpapers();
    chooseTab(chosenTab);
  }
  for (const tab of gallery.tabs) {
    const panel = document.getElementById(`panel-${tab.id}`);
    panel.querySelector('.summary').textContent = tab.summary;
    setChildren(panel.querySelector('.screens'), tab.screens.map((screen) => {
      const key = `${tab.id}/${screen.id}`;
      if (!screens.has(key)) screens.set(key, new Screen(screen));
      return screens.get(key).figure;
    }));
    refreshSurfaces(tab);
  }
  return updateScreens();
}

present(JSON.parse(find('#data').textContent));

// Following what is drawn anew: scripts can be read from disk where other files cannot. state.js
// holds the revision alone; gallery.js is read when that is another.

const kPause = 250, kLongestPause = 30000;
let pause = kPause;

function readScript(name, mark) {
  return new Promise((resolve) => {
    const script = element('script', {src: `${name}?${mark}`});
    script.onload = script.onerror = (event) => {
      script.remove();
      resolve(event.type === 'load');
    };
    document.head.append(script);
  });
}

let state = gallery.revision;
window.varnixState = (revision) => { state = revision; };
window.varnixGallery = (next) => {
  const changed = present(next);
  for (const screen of changed) screen.glow();
  const names = [...new Set(changed.map((screen) => screen.name.textContent))];
  const time = new Date().toLocaleTimeString();
  find('.followed').textContent = [`Drawn anew at ${time}`, names.join(', ')].filter(Boolean).join(': ');
};

async function follow() {
  if (!document.hidden) {
    const there = await readScript('state.js', Date.now());
    if (there && state !== gallery.revision) await readScript('gallery.js', state);
    // A page that was taken away from its folder need not ask so often.
    pause = there ? kPause : Math.min(pause * 2, kLongestPause);
  }
  setTimeout(follow, pause);
}
setTimeout(follow, pause);
