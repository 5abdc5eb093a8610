// The table of surfaces

const columns = ['Surface', 'Before', 'After', 'Contrast', 'Same hue at 4.5'];

function swatch(color) {
  const made = element('span', {class: 'swatch', 'aria-hidden': 'true'});
  made.style.setProperty('--color', color);
  return made;
}

// Sample text in the colour, on what is behind it.
function sample(color, behind) {
  const made = element('span', {class: 'sample', 'aria-hidden': 'true'}, 'Aa');
  made.style.color = color;
  made.style.background = behind;
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
