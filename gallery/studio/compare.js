// Another theme over this one: every screen is drawn with both, and one divider shows more of this or
// that on all of them. Left of it is this theme.
import {element, find} from './elements.js';
import {divider, makeDivider} from './divider.js';
import {pictures, situation} from './screens.js';
import {ask, post, theme} from './theme.js';

const largest = 16 * 1024 * 1024;

// The other theme's picture over a picture of this one.
class Over {
  #isBusy = false;
  #shown = '';
  #tag = '';
  #url = '';

  constructor(picture) {
    this.picture = picture;
    this.root = element('span', {class: 'over-picture'});
    picture.image.after(this.root);
  }

  get #wanted() {
    const {wallpaper, plays, front} = {...situation, ...this.picture.peeked};
    return `${this.picture.screen.id}?${new URLSearchParams({
      wallpaper, scale: this.picture.scale, revision, plays: Number(plays), front: Number(front), other: 1})}`;
  }

  async refresh() {
    if (this.#isBusy) return;
    this.#isBusy = true;
    while (revision > 0 && this.#shown !== this.#wanted && !theme.isLost) {
      const wanted = this.#wanted;
      try {
        const {answer, status, tag} = await ask(`picture/${wanted}&have=${this.#tag}`);
        if (status !== 204) {
          const url = URL.createObjectURL(answer);
          const next = new Image();
          next.src = url;
          await next.decode();
          this.root.style.backgroundImage = `url("${url}")`;
          URL.revokeObjectURL(this.#url);
          this.#url = url;
          this.#tag = tag;
        }
        this.root.classList.remove('failed');
      } catch {
        this.root.classList.add('failed');
      }
      this.#shown = wanted;
      this.root.dataset.shown = wanted;
    }
    this.#isBusy = false;
  }

  remove() {
    URL.revokeObjectURL(this.#url);
    this.root.remove();
  }
}

let revision = 0, name = '', over = [];

async function refresh() {
  if (revision === 0) return;
  const [large, ...small] = over;
  await large.refresh();
  const work = async () => {
    for (let next = small.shift(); next; next = small.shift()) await next.refresh();
  };
  await Promise.all([work(), work()]);
}

// What it is compared with

function show() {
  const isOn = revision > 0;
  document.body.classList.toggle('comparing', isOn);
  find('.divided').hidden = !isOn;
  find('.compare').textContent = isOn ? `Compared with ${name}` : 'Compare';
  find('.stop-comparing').hidden = !isOn;
  divider.setAttribute('aria-label', `Divider between this theme and ${name}`);
}

async function compareWith(choice, title) {
  const answer = choice instanceof Blob ? await ask('other', {method: 'PUT', body: choice}) : await post('other', choice);
  revision = answer.answer.revision;
  name = title;
  if (over.length === 0) over = pictures().map((picture) => new Over(picture));
  show();
  refresh();
}

function stop() {
  revision = 0;
  for (const one of over) one.remove();
  over = [];
  show();
  find('.compare').focus();
}

// A list that is dropped, chosen or pasted.
function listField(use, report) {
  const chooser = element('input', {type: 'file', hidden: true, tabindex: -1, accept: '.plist,.xml,.txt'});
  const button = element('button', {type: 'button', class: 'choose'}, 'Choose a list…');
  const text = element('textarea', {rows: 3, spellcheck: 'false', 'aria-label': 'A list of settings as text',
                                    placeholder: 'Or paste or drop one here'});
  const takeFile = (file) => {
    if (!file) return;
    if (file.size > largest) return report('A list may have 16 MB.');
    use(file, file.name);
  };
  button.addEventListener('click', () => chooser.click());
  chooser.addEventListener('change', () => {
    takeFile(chooser.files[0]);
    chooser.value = '';
  });
  text.addEventListener('input', () => { if (text.value.trim()) use(new Blob([text.value]), 'the pasted list'); });
  const takesDrops = (place) => {
    place.addEventListener('dragover', (event) => event.preventDefault());
    place.addEventListener('drop', (event) => {
      if (!event.dataTransfer.files.length) return;
      event.preventDefault();
      event.stopPropagation();
      takeFile(event.dataTransfer.files[0]);
    });
  };
  return {parts: [chooser, button, text], takesDrops};
}

export function showComparison(presets) {
  const menu = find('#compare'), note = element('p', {class: 'note', role: 'alert', hidden: true});
  const report = (text) => {
    note.textContent = text;
    note.hidden = !text;
  };
  const use = async (choice, title) => {
    report('');
    try {
      await compareWith(choice, title);
      menu.hidePopover();
      divider.focus();
    } catch (error) {
      // A list that was dropped on the button has not opened it.
      menu.showPopover();
      report(error.message);
    }
  };
  const entry = (title, choice) => {
    const button = element('button', {type: 'button'}, title);
    button.addEventListener('click', () => use(choice(), title));
    return button;
  };
  const lists = listField(use, report);
  const saved = entry('The file as it is now', () => ({saved: true}));
  menu.append(entry('As it was opened', () => ({position: 0})),
              entry('As it is now', () => ({position: theme.state.position})), saved,
              element('div', {class: 'presets'}, ...presets.map(({name: title}) => entry(title, () => ({preset: title})))),
              ...lists.parts, note);
  menu.addEventListener('beforetoggle', () => {
    saved.hidden = theme.state.file === null;
    report('');
  });
  const open = element('button', {type: 'button', class: 'compare', popovertarget: 'compare'}, 'Compare');
  const end = element('button', {type: 'button', class: 'stop-comparing', hidden: true}, 'Stop');
  end.setAttribute('aria-label', 'Stop comparing');
  end.addEventListener('click', stop);
  for (const place of [menu, open]) lists.takesDrops(place);
  find('.situation').append(open, end);
  makeDivider(find('.divided'));
  theme.addEventListener('look', refresh);
}
