// The controls, made from the tables of settings.
import {choice, element} from './elements.js';
import {ColorField} from './color_field.js';
import {iconRow, iconsInTheme, materialRows} from './materials.js';
import {theme} from './theme.js';

let names = 0;

// Each control is {root, words, show()}.

function row(title, words, ...parts) {
  return {root: element('div', {class: 'row'}, ...parts), words: `${title} ${words}`.toLowerCase()};
}

function switchRow({key, title, note = '', fallback, inverted = false}) {
  const box = element('input', {type: 'checkbox', role: 'switch'});
  const made = row(title, `${key} ${note}`, element('label', {class: 'switch'}, element('span', {},
    element('span', {class: 'title'}, title), note && element('span', {class: 'note'}, note)), box));
  box.addEventListener('change', () => theme.change({[key]: inverted ? !box.checked : box.checked}, {label: title}));
  made.show = () => {
    const value = theme.value(key) ?? fallback;
    const isOn = value === true || value === 1 || value === 'true' || value === '1';
    box.checked = inverted ? !isOn : isOn;
  };
  return made;
}

function segments(label, options, choose) {
  const name = `choice-${++names}`;
  const inputs = choice(name, options, null, choose);
  const root = element('div', {class: 'choices', role: 'radiogroup', 'aria-label': label}, ...inputs);
  const show = (value) => {
    for (const input of root.querySelectorAll('input')) input.checked = input.value === value;
  };
  return {root, show};
}

function colorRow({key, title, words = '', fallback}) {
  const field = new ColorField({label: title, fallback,
                                change: (value, group) => theme.change({[key]: value}, {label: title, group})});
  const made = row(title, `${key} ${words} colour`, element('span', {class: 'title'}, title), field.root);
  made.show = () => field.show(theme.value(key));
  made.field = field;
  return made;
}

function iconColorRow(prefix = '') {
  const key = `${prefix}global_color_type`, title = 'Colour comes from';
  const options = [{value: '0', title: 'one colour'}, {value: '1', title: 'each icon'}];
  const group = segments(title, options, (value) => theme.change({[key]: Number(value)}, {label: title}));
  const made = row(title, key, element('span', {class: 'title'}, title), group.root);
  made.show = () => group.show(Number(theme.value(key) ?? 0) === 1 ? '1' : '0');
  return made;
}

const types = [{value: '0', title: 'follow'}, {value: '2', title: 'own'}, {value: '1', title: 'off'}];

function elementRow({title, type, color}, prefix = '') {
  const typeKey = prefix + type.key, colorKey = prefix + color.key;
  const group = segments(title, types, (value) =>
    theme.change({[typeKey]: Number(value)}, {label: `${title}: ${types.find((it) => it.value === value).title}`}));
  const field = new ColorField({label: `${title}: own colour`, fallback: color.fallback,
                                change: (value, step) => theme.change({[colorKey]: value}, {label: title, group: step})});
  const made = row(title, `${typeKey} ${colorKey}`, element('span', {class: 'title'}, title), group.root, field.root);
  made.root.classList.add('element');
  made.show = () => {
    const kind = Number(theme.value(typeKey) ?? 0);
    group.show(kind === 1 || kind === 2 ? `${kind}` : '0');
    field.root.hidden = kind !== 2;
    field.show(theme.value(colorKey));
  };
  return made;
}

function presetRow({name, dye, settings}) {
  const swatch = element('span', {class: 'swatch', 'aria-hidden': 'true'});
  swatch.style.setProperty('--color', dye);
  const button = element('button', {type: 'button', class: 'preset'}, swatch, name);
  button.addEventListener('click', () => theme.change(settings, {label: `Preset ${name}`}));
  return {root: button, words: `preset ${name} ${dye}`.toLowerCase(), show() {}};
}

export class Section {
  constructor(title, controls, {isOpen = true, list = 'rows'} = {}) {
    this.title = title;
    this.controls = controls;
    this.body = element('div', {class: list}, ...controls.map((control) => control.root));
    this.root = element('details', {class: 'section', open: isOpen}, element('summary', {}, element('h2', {}, title)), this.body);
    this.isOpen = isOpen;
  }

  add(control) {
    this.controls.push(control);
    this.body.append(control.root);
    control.show();
  }

  show() { for (const control of this.controls) control.show(); }

  // True if something is left.
  search(words) {
    let found = false;
    for (const control of this.controls) {
      const isFound = control.search ? control.search(words)
        : words.every((word) => `${this.title.toLowerCase()} ${control.words}`.includes(word));
      control.root.hidden = !isFound;
      found ||= isFound;
    }
    this.root.hidden = !found;
    this.root.open = words.length > 0 ? true : this.isOpen;
    return found;
  }
}

// An application: whether it is dyed, and its own values.
function application({id, title}, tables) {
  const scope = `${id}_scope_enabled`;
  const own = [colorRow({key: `${id}_global_color`, title: 'Colour', fallback: 'as for all'}), iconColorRow(`${id}_`),
               ...tables.elements.map((entry) => elementRow(entry, `${id}_`))];
  const dyed = switchRow({key: `${id}_enabled`, title: 'Dyed', fallback: true});
  const icon = iconRow(id);
  const scoped = switchRow({key: scope, title: 'Values of its own', fallback: false});
  const ownRows = element('div', {class: 'rows own'}, ...own.map((control) => control.root));
  const root = element('details', {class: 'application'},
                       element('summary', {}, element('span', {class: 'title'}, title),
                               title === id ? '' : element('code', {}, id)),
                       dyed.root, icon.root, scoped.root, ownRows);
  const controls = [dyed, icon, scoped, ...own];
  return {
    id, root, words: `application ${title} ${id}`.toLowerCase(),
    show() {
      for (const control of controls) control.show();
      ownRows.hidden = theme.value(scope) !== true && theme.value(scope) !== 1;
    },
  };
}

// The identifiers that the theme's keys name.
function namedApplications(tables) {
  const suffixes = ['_enabled', '_scope_enabled',
                    ...[...tables.general, ...tables.elements.flatMap(({type, color}) => [type, color])].map(({key}) => `_${key}`)];
  const plain = new Set(suffixes.map((suffix) => suffix.slice(1)));
  const found = new Set(iconsInTheme());
  for (const key of theme.keys) {
    if (plain.has(key)) continue;
    const suffix = suffixes.filter((it) => key.endsWith(it)).sort((a, b) => b.length - a.length)[0];
    if (suffix && key.length > suffix.length) found.add(key.slice(0, -suffix.length));
  }
  return found;
}

function applications(tables) {
  const section = new Section('Applications', [], {isOpen: false, list: 'applications'});
  const known = new Set();
  const add = (entry) => {
    if (known.has(entry.id)) return;
    known.add(entry.id);
    section.add(application(entry, tables));
  };
  for (const entry of tables.applications) add(entry);
  const identifier = element('input', {type: 'text', 'aria-label': 'Identifier of an application',
                                       placeholder: 'com.example.notes', spellcheck: 'false', autocomplete: 'off',
                                       pattern: '[A-Za-z0-9._\\-]+', maxlength: 200, required: true});
  const adding = element('form', {class: 'adding'}, identifier, element('button', {type: 'submit'}, 'Add'));
  adding.addEventListener('submit', (event) => {
    event.preventDefault();
    const id = identifier.value.trim();
    add({id, title: id});
    identifier.value = '';
    const details = section.controls.find((control) => control.id === id).root;
    details.open = true;
    details.querySelector('summary').focus();
  });
  section.root.append(adding);
  const show = section.show.bind(section);
  section.show = () => {
    for (const id of namedApplications(tables)) add({id, title: id});
    show();
  };
  return section;
}

export function makeSections(tables) {
  const fallback = (name) => tables.general.find(({key}) => key === name).fallback;
  return [
    new Section('Theme', [
      switchRow({key: 'enabled', title: 'Varnix is on', fallback: true}),
      iconColorRow(),
      colorRow({key: 'global_color', title: 'Colour', words: 'dye global', fallback: fallback('global_color')}),
      switchRow({key: 'use_album_art', title: 'Album art', note: 'Panels follow the playing track', fallback: false}),
    ]),
    new Section('Start from', tables.presets.map(presetRow), {list: 'presets'}),
    new Section('Elements', tables.elements.map((entry) => elementRow(entry))),
    applications(tables),
    new Section('Pictures', materialRows()),
  ];
}
