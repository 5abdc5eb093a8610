// The table of surfaces

const columns = ['Surface', 'Before', 'After', 'Contrast', 'What would help'];

function swatch(color) {
  const made = element('span', {class: 'swatch', 'aria-hidden': 'true'});
  made.style.setProperty('--color', color);
  return made;
}

// A colour that leaves its alpha out if it is opaque.
const shortHex = (color) => color.length === 9 && color.endsWith('ff') ? color.slice(0, 7) : color;

const hex = (color) => element('code', {}, shortHex(color));

const none = (text) => element('span', {class: 'none'}, text);

function answer(value) {
  if (value === null) return none('none');
  if (typeof value === 'boolean') return element('span', {}, value ? 'yes' : 'no');
  return element('span', {class: 'color'}, swatch(value), hex(value));
}

function contrast({contrast: reading}) {
  if (reading === null) return none('\u2013');
  return element('span', {class: 'reading'}, ...ratio(reading),
                 element('button', {type: 'button', class: 'where'}, placeName(reading)));
}

// A suggestion was drawn before it was made.
function help({contrast: reading}) {
  if (reading === null) return none('\u2013');
  if (reading.holds) return none('as it is');
  if (reading.advice === undefined) return none('not looked for');
  if (reading.advice === null) return none('no shade of its colour holds everywhere');
  return element('span', {class: 'advice'}, ...Object.entries(reading.advice).map(([key, value]) => element(
    'span', {class: 'color'}, ...typeof value === 'string' ? [swatch(value.slice(0, 7))] : [],
    element('code', {}, `${key} = ${value}`))));
}

const isDyed = (surface) => surface.before !== surface.after;

// Without the last one where nothing was looked for.
const columnsOf = ({surfaces}) => surfaces.some(({contrast: reading}) => reading?.advice !== undefined)
  ? columns : columns.slice(0, -1);

function row(surface, names) {
  const cells = [answer(surface.before), answer(surface.after), contrast(surface), help(surface)];
  const made = element('tr', {role: 'row'},
                       element('th', {role: 'rowheader', scope: 'row'},
                               element('code', {class: 'class'}, surface.class),
                               element('span', {class: 'property'}, surface.property),
                               element('span', {class: 'case'}, surface.case ?? '')),
                       ...names.slice(1).map((name, i) => element(
                         'td', {role: 'cell'},
                         element('span', {class: 'column', 'aria-hidden': 'true'}, name), cells[i])));
  if (surface.contrast !== null) pointsAt(made, surface.contrast);
  return made;
}

function group(process, surfaces, names) {
  return element('tbody', {role: 'rowgroup'},
                 element('tr', {role: 'row', class: 'process'},
                         element('th', {role: 'rowheader', scope: 'rowgroup', colspan: names.length},
                                 process)),
                 ...surfaces.map((surface) => row(surface, names)));
}

const filters = {
  all: {title: 'All', takes: () => true},
  dyed: {title: 'Dyed', takes: isDyed},
  poor: {title: 'Too faint', takes: ({contrast: reading}) => reading !== null && !reading.holds},
};
let filter = 'all';

function table(tab) {
  const processes = new Map();
  for (const surface of tab.surfaces.filter(filters[filter].takes)) {
    const process = surface.process ?? '';
    processes.set(process, [...processes.get(process) ?? [], surface]);
  }
  if (processes.size === 0) return element('p', {class: 'notice'}, 'There are none.');
  const names = columnsOf(tab);
  return element('table', {role: 'table'},
                 element('caption', {class: 'unseen'}, `Surfaces with ${tab.title}`),
                 element('thead', {role: 'rowgroup'},
                         element('tr', {role: 'row'},
                                 ...names.map((name) => element(
                                   'th', {role: 'columnheader', scope: 'col'}, name)))),
                 ...[...processes].map(([process, surfaces]) => group(process, surfaces, names)));
}

function counted(number, one, many) { return `${number} ${number === 1 ? one : many}`; }

function countText(surfaces) {
  const below = surfaces.filter(filters.poor.takes);
  const text = `${counted(surfaces.length, 'surface', 'surfaces')}, ${surfaces.filter(isDyed).length} dyed`;
  return below.length === 0 ? text : `${text}, ${below.length} too faint`;
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
