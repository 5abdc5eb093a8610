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

function hide() {
  find('.looked-at .marks').replaceChildren();
  peek();
}

function pointsAt(row, reading) {
  const show = async () => {
    find('.looked-at .marks').replaceChildren(...placeMarks(reading));
    await peek(reading.screen, reading.wallpaper);
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
  button.addEventListener('click', async () => {
    button.disabled = true;
    place.textContent = 'Drawing…';
    try {
      const {answer: {changes}} = await ask(`advice?${query({process, surface: `${name} ${property}`})}`);
      if (changes === null) place.textContent = 'No shade of its colour holds everywhere.';
      else place.replaceChildren(useButton(changes));
      button.remove();
    } catch (error) {
      place.textContent = error.message;
      button.disabled = false;
    }
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
  const made = element('li', {class: 'surface'},
                       element('code', {}, `${reading.class} ${reading.property}`),
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
  find('.contrast .rows').replaceChildren(element('ul', {}, ...rows.sort((a, b) => reach(a) - reach(b)).map(row)));
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
    if (asked === wanted()) {
      show(answer.rows);
      shown = asked;
    }
  } catch (error) {
    find('.contrast .measured').textContent = error.message;
  }
  find('.contrast').setAttribute('aria-busy', 'false');
  isBusy = false;
  if (shown !== wanted()) plan();
}

function plan() {
  clearTimeout(timer);
  timer = setTimeout(measure, pause);
}

export function showContrast() {
  find('.contrast').addEventListener('toggle', measure);
  theme.addEventListener('change', () => { if (find('.contrast').open && shown !== wanted()) plan(); });
  find('.situation').addEventListener('click', plan);
}
