// How well text and symbols can be read, measured on what is drawn. It is measured while this part is
// open and nobody changes anything.
import {element, find} from './elements.js';
import {placeMarks, placeName, ratio} from './place.js';
import {peek, situation} from './screens.js';
import {ask, theme} from './theme.js';

// After the last change, in milliseconds, so that the pictures come first.
const pause = 700;

const query = (more = {}) => new URLSearchParams({
  plays: Number(situation.plays), front: Number(situation.front), ...more});

// Where the large picture is out of sight, on narrow pages, a small one comes up.
const lens = element('figure', {class: 'lens', hidden: true, 'aria-hidden': 'true'},
                     element('div', {class: 'marked'}, element('img', {alt: ''}), element('div', {class: 'marks'})));

function isInSight(it) {
  const {top, bottom} = it.getBoundingClientRect();
  return top < innerHeight / 2 && bottom > innerHeight / 2;
}

const mark = (marks) => {
  for (const place of [find('.looked-at .marks'), lens.querySelector('.marks')])
    place.replaceChildren(...marks());
};

function hide() {
  lens.hidden = true;
  mark(() => []);
  peek();
}

function pointsAt(row, reading) {
  const show = () => {
    mark(() => placeMarks(reading));
    lens.hidden = isInSight(find('.looked-at img'));
    peek(reading.screen, reading.wallpaper);
  };
  row.addEventListener('pointerenter', show);
  row.addEventListener('focusin', show);
  row.addEventListener('pointerleave', hide);
  row.addEventListener('focusout', hide);
}

const words = ([key, value]) => `${key} = ${value}`;

// Looking takes some seconds: whatever a shade changes is drawn with it.
function helper({process, class: name, property}) {
  const place = element('span', {class: 'help', role: 'status'});
  const button = element('button', {type: 'button'}, 'Find a colour');
  let isLooking = false;
  button.addEventListener('click', async () => {
    if (isLooking) return;
    isLooking = true;
    button.setAttribute('aria-disabled', 'true');
    place.textContent = 'Drawing…';
    try {
      const {answer: {changes}} = await ask(`advice?${query({process, surface: `${name} ${property}`})}`);
      const found = changes === null
        ? element('span', {tabindex: -1}, 'No shade of its colour holds everywhere.') : useButton(changes);
      const isFocused = document.activeElement === button;
      place.replaceChildren(found);
      button.remove();
      if (isFocused) found.focus();
    } catch (error) {
      place.textContent = error.message;
      button.setAttribute('aria-disabled', 'false');
    }
    isLooking = false;
  });
  return element('span', {class: 'advice'}, button, place);
}

function useButton(changes) {
  const color = Object.values(changes).find((value) => typeof value === 'string').slice(0, 7);
  const swatch = element('span', {class: 'swatch', 'aria-hidden': 'true'});
  swatch.style.setProperty('--color', color);
  const button = element('button', {type: 'button', class: 'use'}, swatch, `Use ${Object.entries(changes).map(words).join(', ')}`);
  button.addEventListener('click', () => theme.change(changes, {label: 'Contrast'}));
  return button;
}

function row(reading) {
  const name = `${reading.class} ${reading.property}`;
  const made = element('li', {class: 'surface', 'data-surface': `${reading.process} ${name}`},
                       element('span', {}, element('code', {}, name), element('span', {class: 'process'}, reading.process)),
                       element('span', {class: 'reading'}, ...ratio(reading),
                               element('button', {type: 'button', class: 'where'}, placeName(reading))));
  if (!reading.holds) made.append(helper(reading));
  pointsAt(made, reading);
  return made;
}

const reach = ({ratio: found, needed}) => found / needed;

function show(rows) {
  const faint = rows.filter(({holds}) => !holds);
  find('.contrast .measured').textContent = faint.length === 0
    ? `Everything that is dyed can be read: ${rows.length} surfaces on both wallpapers.`
    : `${faint.length} of ${rows.length} dyed surfaces are too faint somewhere.`;
  // What is replaced neither keeps a mark nor takes the focus with it.
  const focused = document.activeElement.closest('.contrast .surface')?.dataset.surface;
  hide();
  const list = element('ul', {}, ...rows.sort((a, b) => reach(a) - reach(b)).map(row));
  find('.contrast .rows').replaceChildren(list);
  if (focused) [...list.children].find((it) => it.dataset.surface === focused)?.querySelector('.where').focus();
}

let timer, shown = '', isBusy = false;

const wanted = () => `${theme.state.revision} ${query()}`;

async function measure() {
  if (isBusy || !find('.contrast').open || shown === wanted() || theme.isLost) return;
  if (!theme.isAtRest) return plan();
  isBusy = true;
  const asked = wanted();
  find('.contrast').setAttribute('aria-busy', 'true');
  try {
    const {answer} = await ask(`contrast?${query()}`);
    if (asked === wanted()) show(answer.rows);
  } catch (error) {
    if (asked === wanted()) find('.contrast .measured').textContent = error.message;
  }
  shown = asked;
  find('.contrast').setAttribute('aria-busy', 'false');
  isBusy = false;
  if (shown !== wanted()) plan();
}

function plan() {
  clearTimeout(timer);
  timer = setTimeout(measure, pause);
}

export function showContrast() {
  const large = find('.looked-at img');
  large.addEventListener('load', () => { lens.querySelector('img').src = large.src; });
  find('.stage').append(lens);
  addEventListener('keydown', ({key}) => { if (key === 'Escape') lens.hidden = true; });
  find('.contrast').addEventListener('toggle', measure);
  theme.addEventListener('change', () => { if (find('.contrast').open && shown !== wanted()) plan(); });
  find('.situation').addEventListener('click', plan);
}
