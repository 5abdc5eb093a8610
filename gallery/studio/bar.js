// The bar: the file, the history, and what went wrong.
import {element, find} from './elements.js';
import {theme} from './theme.js';

const labels = (state) => state.history.map((label, i) => i === 0 ? 'As it was opened'
  : label === 'file' ? 'Changed in the file' : label || 'Change');

function showHistory() {
  const list = find('.states');
  list.replaceChildren(...labels(theme.state).map((label, i) => {
    const button = element('button', {type: 'button', 'aria-current': i === theme.state.position ? 'step' : null}, label);
    button.addEventListener('click', () => theme.goTo(i));
    return element('li', {}, button);
  }));
}

const words = (value) => value === null || value === undefined ? 'not set'
  : typeof value === 'object' ? value.text : `${value}`;

function disputes() {
  if (theme.overruled) {
    return Object.entries(theme.overruled.changes).map(([key, ours]) => ({key, ours, theirs: theme.state.values[key]}));
  }
  return theme.state.conflict;
}

function showConflict() {
  const dialog = find('.conflict'), keys = disputes();
  if (!keys) return dialog.close();
  dialog.querySelector('tbody').replaceChildren(...keys.map(({key, ours, theirs}) => element('tr', {},
    element('th', {scope: 'row'}, element('code', {}, key)), element('td', {}, words(ours)), element('td', {}, words(theirs)))));
  if (!dialog.open) dialog.showModal();
}

function show() {
  const {state} = theme;
  find('.file-name').textContent = state.file ?? 'Unnamed theme';
  find('.saved').textContent = state.file === null ? 'is kept until the studio ends' : state.isSaved ? 'is saved' : 'is not saved yet';
  find('.undo').disabled = state.position === 0;
  find('.redo').disabled = state.position === state.history.length - 1;
  const problem = theme.isLost ? 'The studio has ended, or does not answer.' : theme.failure || state.problem;
  find('.problem').textContent = problem;
  find('.problem').hidden = !problem;
  if (find('#states').matches(':popover-open')) showHistory();
  showConflict();
}

function step(event) {
  if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
  const key = event.key.toLowerCase();
  const isRedo = key === 'y' || (key === 'z' && event.shiftKey);
  if (!isRedo && key !== 'z') return;
  // A text that is being typed has a history of its own.
  const field = event.target;
  if (field.matches?.('input[type=search], .adding input')) return;
  event.preventDefault();
  if (isRedo) theme.redo();
  else theme.undo();
}

export function showBar() {
  find('.undo').addEventListener('click', () => theme.undo());
  find('.redo').addEventListener('click', () => theme.redo());
  find('.reset').addEventListener('click', () =>
    theme.change(Object.fromEntries([...theme.keys].map((key) => [key, null])), {label: 'Reset'}));
  find('#states').addEventListener('beforetoggle', showHistory);
  const answer = (isKept) => () => theme.overruled ? theme.keepOverruled(isKept) : theme.settle(isKept ? 'theme' : 'file');
  find('.keep-theme').addEventListener('click', answer(true));
  find('.keep-file').addEventListener('click', answer(false));
  // It stays until it is answered.
  find('.conflict').addEventListener('cancel', (event) => event.preventDefault());
  addEventListener('keydown', step);
  theme.addEventListener('change', show);
  show();
}
