// The page: controls on the left, the screens on the right.
import {find} from './elements.js';
import {showBar} from './bar.js';
import {showComparison} from './compare.js';
import {showContrast} from './contrast.js';
import {makeSections} from './controls.js';
import {showExports} from './exports.js';
import {showScreens} from './screens.js';
import {ask, theme} from './theme.js';

const {answer: tables} = await ask('tables');
await theme.begin();

const sections = makeSections(tables);
find('.sections').append(...sections.map(({root}) => root));
const show = () => { for (const section of sections) section.show(); };
theme.addEventListener('change', show);
show();

const search = find('.search input');
search.addEventListener('input', () => {
  const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
  const found = sections.map((section) => section.search(words));
  find('.nothing').hidden = found.includes(true);
});
addEventListener('keydown', (event) => {
  if (event.key !== '/' || event.target.matches('input')) return;
  event.preventDefault();
  search.focus();
});

showBar();
showExports();
showScreens(tables.screens);
showContrast();
showComparison(tables.presets);
