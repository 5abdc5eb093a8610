// A field for a colour: hex digits, the browser's picker, or an image dropped on it.
import {element} from './elements.js';
import {takesImages} from './dropping.js';
import {ask} from './theme.js';

const form = /^#?([0-9a-f]{6})(:(?:0|1|0?\.\d+|1\.0+|0\.?\d*))?$/i;
const short = /^#([0-9a-f])([0-9a-f])([0-9a-f])(:.*)?$/i;

// "#rrggbb" for the picker; nothing for what is no colour.
export function opaque(text) {
  const three = short.exec(text ?? '');
  if (three) return `#${three[1]}${three[1]}${three[2]}${three[2]}${three[3]}${three[3]}`.toLowerCase();
  const found = form.exec(text ?? '');
  return found ? `#${found[1].toLowerCase()}` : undefined;
}

const alphaOf = (text) => /:(.*)$/.exec(text ?? '')?.[1] ?? '';

let groups = 0;

export class ColorField {
  // change(value, group): null for none. Those of one group are one step.
  constructor({label, fallback, change}) {
    this.fallback = fallback;
    this.change = change;
    this.picker = element('input', {type: 'color', 'aria-label': `${label}: pick`});
    this.text = element('input', {type: 'text', class: 'hex', 'aria-label': label, spellcheck: 'false',
                                  autocomplete: 'off', placeholder: fallback, maxlength: 24});
    this.clear = element('button', {type: 'button', class: 'clear', 'aria-label': `${label}: as it was`,
                                    title: 'As it was'}, '×');
    this.candidates = element('div', {class: 'candidates', role: 'group', hidden: true,
                                      'aria-label': `${label}: colours of the image`});
    this.note = element('p', {class: 'note', role: 'status', hidden: true});
    this.root = element('div', {class: 'color-field'}, this.picker, this.text);
    const choose = takesImages(this.root, {
      label: `${label}: from an image`, text: 'Image…', take: (file) => this.#pick(file),
      report: (text) => {
        this.note.textContent = text;
        this.note.hidden = !text;
      }});
    this.root.append(choose, this.clear, this.candidates, this.note);
    let group = '';
    this.picker.addEventListener('input', () => {
      group ||= `pick ${++groups} ${performance.now()}`;
      const alpha = alphaOf(this.value ?? '');
      this.change(this.picker.value + (alpha && `:${alpha}`), group);
    });
    this.picker.addEventListener('change', () => { group = ''; });
    this.text.addEventListener('input', () => this.text.setCustomValidity(''));
    this.text.addEventListener('change', () => this.#typed());
    this.text.addEventListener('keydown', (event) => {
      if (event.key === 'Enter') this.#typed();
      if (event.key === 'Escape') this.#reset(this.value);
    });
    this.clear.addEventListener('click', () => {
      this.change(null, '');
      this.text.focus();
    });
  }

  // The colour that the library would take is used at once; the others are offered.
  async #pick(file) {
    const {answer} = await ask('pick', {method: 'POST', body: file});
    const named = ['important', 'background', 'primary', 'secondary', 'average'].map((name) => [answer[name], name]);
    const others = answer.runnersUp.map(({color}) => [color, 'frequent']);
    const seen = new Set();
    const buttons = [...named, ...others].filter(([color]) => !seen.has(color) && seen.add(color)).map(([color, name]) => {
      const value = opaque(color.slice(0, 7));
      const button = element('button', {type: 'button', class: 'candidate', title: `${name}: ${value}`,
                                        'aria-label': `${name}: ${value}`});
      button.style.setProperty('--color', value);
      button.addEventListener('click', () => this.change(value, ''));
      return button;
    });
    this.candidates.replaceChildren(...buttons);
    this.candidates.hidden = false;
    this.change(opaque(answer.important.slice(0, 7)), '');
  }

  #reset(value) {
    this.text.value = value ?? '';
    this.text.setAttribute('aria-invalid', 'false');
    this.text.setCustomValidity('');
  }

  #typed() {
    const text = this.text.value.trim();
    if (text === (this.value ?? '')) return;
    const isColor = text === '' || opaque(text);
    this.text.setCustomValidity(isColor ? '' : 'A colour is #RRGGBB or #RGB, with :0.5 after it for half of it.');
    this.text.setAttribute('aria-invalid', !isColor);
    if (!isColor) return this.text.reportValidity();
    this.change(text === '' ? null : text, '');
  }

  // What is being typed stays, unless the value has become another.
  show(value) {
    const next = typeof value === 'string' ? value : undefined;
    const isTyping = document.activeElement === this.text && this.text.value !== (this.value ?? '');
    if (!isTyping || next !== this.value) this.#reset(next);
    this.value = next;
    const shown = opaque(this.value) ?? opaque(this.fallback);
    if (shown && this.picker.value !== shown) this.picker.value = shown;
    this.root.classList.toggle('unset', this.value === undefined);
    this.clear.disabled = this.value === undefined;
  }
}
