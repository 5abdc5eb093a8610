// What of the theme is handed on: a text on the clipboard, or a file to save.
import {element, find} from './elements.js';
import {ask, theme} from './theme.js';

const files = {
  list: {path: 'export', ending: 'plist'},
  page: {path: 'export/page', ending: 'html'},
  sheet: {path: 'export/sheet', ending: 'png'},
};

const name = () => (theme.state.file ?? 'theme').replace(/^.*\//, '').replace(/\.plist$/, '');

function save(blob, file) {
  const link = element('a', {href: URL.createObjectURL(blob), download: file});
  link.click();
  // The browser has to have read it.
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}

async function settled() {
  while (!theme.isAtRest) await new Promise((done) => theme.addEventListener('change', done, {once: true}));
}

async function exported(what) {
  await settled();
  if (what === 'text') {
    // The browser lets a page write only soon after a click, and so it is given what will come.
    const text = ask('export/text').then(({answer}) => answer.text());
    await Promise.all([text, navigator.clipboard.write([new ClipboardItem({'text/plain': text})])]);
    return 'Copied. On the phone, choose Paste Settings.';
  }
  const {path, ending} = files[what];
  const file = `${name()}.${ending}`;
  save((await ask(path)).answer, file);
  return `${file} is made.`;
}

export function showExports() {
  const said = find('.exported'), buttons = [...document.querySelectorAll('[data-export]')];
  for (const button of buttons) {
    button.addEventListener('click', async () => {
      // Not disabled, which would lose the focus.
      if (said.ariaBusy === 'true') return;
      said.ariaBusy = 'true';
      said.textContent = 'Please wait\u2026';
      try {
        said.textContent = await exported(button.dataset.export);
      } catch (error) {
        said.textContent = error.message;
      }
      said.ariaBusy = 'false';
    });
  }
  find('#exports').addEventListener('beforetoggle', () => { said.textContent = ''; });
}
