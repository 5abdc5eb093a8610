// The gallery

const wallpaperTitles = {light: 'Light', dark: 'Dark'};
const screens = new Map();
let gallery = {revision: '', follows: false, tabs: []}, shownShape;
let chosenTab = inAddress('tab'), wallpaper = inAddress('wallpaper');

// The address says what is shown: "#tab=ID&wallpaper=dark".
function inAddress(name) {
  return new URLSearchParams(location.hash.slice(1)).get(name) ?? '';
}

function keepInAddress() {
  history.replaceState(null, '', `#${new URLSearchParams({tab: chosenTab, wallpaper})}`);
}

function chooseTab(id) {
  chosenTab = gallery.tabs.some((tab) => tab.id === id) ? id : gallery.tabs[0]?.id;
  const strip = find('.settings');
  for (const tab of find('.tabs').children) {
    const chosen = tab.id === `tab-${chosenTab}`;
    tab.setAttribute('aria-selected', chosen);
    tab.tabIndex = chosen ? 0 : -1;
    if (chosen) strip.scrollLeft = tab.offsetLeft - (strip.clientWidth - tab.offsetWidth) / 2;
  }
  for (const panel of document.querySelectorAll('.panel')) panel.hidden = panel.id !== `panel-${chosenTab}`;
}

function makeTab({id, title}) {
  const tab = element('button', {type: 'button', role: 'tab', id: `tab-${id}`,
                                 'aria-controls': `panel-${id}`}, title);
  tab.addEventListener('click', () => {
    chooseTab(id);
    keepInAddress();
  });
  return tab;
}

function makePanel(tab) {
  const alone = gallery.tabs.length === 1;
  return element('section', {class: 'panel', id: `panel-${tab.id}`, role: alone ? 'region' : 'tabpanel',
                             'aria-label': alone ? tab.title : null,
                             'aria-labelledby': alone ? null : `tab-${tab.id}`},
                 element('p', {class: 'summary'}), sourceOf(), element('div', {class: 'screens'}),
                 surfaceList(tab));
}

// Which file the settings come from, and what is in it.
function sourceOf() {
  return element('details', {class: 'source'}, element('summary', {}, 'Settings of ', element('code', {class: 'file'})),
                 element('ul', {class: 'values'}));
}

function refreshSource(panel, {file, settings}) {
  panel.querySelector('.file').textContent = file;
  const lines = settings.length > 0 ? settings : ['Nothing is set.'];
  panel.querySelector('.values').replaceChildren(...lines.map((line) => element('li', {}, element('code', {}, line))));
}

find('.tabs').addEventListener('keydown', (event) => {
  const tabs = [...event.currentTarget.children];
  const from = tabs.indexOf(document.activeElement);
  const to = {ArrowRight: from + 1, ArrowLeft: from - 1, Home: 0, End: -1}[event.key];
  if (to === undefined) return;
  event.preventDefault();
  const next = tabs.at(to % tabs.length);
  next.focus();
  next.click();
});

addEventListener('hashchange', () => {
  chooseTab(inAddress('tab'));
  wallpaper = inAddress('wallpaper') || wallpaper;
  setUpWallpapers();
  updateScreens();
});

// The screens that look different from before.
function updateScreens() {
  return gallery.tabs.flatMap((tab) => tab.screens.map((screen) => {
    const shown = screens.get(`${tab.id}/${screen.id}`);
    return shown.update(screen, wallpaper) ? shown : null;
  })).filter(Boolean);
}

function setUpWallpapers() {
  const there = Object.keys(wallpaperTitles).filter(
    (name) => gallery.tabs.some((tab) => tab.screens.some((screen) => screen[name])));
  if (!there.includes(wallpaper)) wallpaper = there[0] ?? 'light';
  const options = there.map((value) => ({value, title: wallpaperTitles[value]}));
  find('.wallpapers').hidden = there.length < 2;
  find('.wallpapers .choices').replaceChildren(...choice('wallpaper', options, wallpaper, (value) => {
    wallpaper = value;
    keepInAddress();
    updateScreens();
  }));
}

const shapeOf = ({tabs}) => JSON.stringify(tabs.map(({id, title, screens: all}) =>
  [id, title, all.map((screen) => [screen.id, Object.keys(screen)])]));

function present(next) {
  const shape = shapeOf(next), sameShape = shape === shownShape;
  shownShape = shape;
  gallery = next;
  if (!sameShape) {
    find('.tabs').replaceChildren(...gallery.tabs.map(makeTab));
    find('.settings').hidden = gallery.tabs.length < 2;
    find('main').replaceChildren(...gallery.tabs.map(makePanel));
    if (gallery.tabs.length === 0) find('main').append(element('p', {class: 'notice'}, 'Nothing was drawn.'));
    setUpWallpapers();
    chooseTab(chosenTab);
  }
  for (const tab of gallery.tabs) {
    const panel = document.getElementById(`panel-${tab.id}`);
    panel.querySelector('.summary').textContent = tab.summary;
    refreshSource(panel, tab);
    setChildren(panel.querySelector('.screens'), tab.screens.map((screen) => {
      const key = `${tab.id}/${screen.id}`;
      if (!screens.has(key)) screens.set(key, new Screen(screen));
      return screens.get(key).figure;
    }));
    refreshSurfaces(tab);
  }
  return updateScreens();
}

present(JSON.parse(find('#data').textContent));
