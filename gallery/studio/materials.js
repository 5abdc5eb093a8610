// The pictures that belong to the theme: wallpapers, the playing track's cover, icons.
import {element} from './elements.js';
import {takesImages} from './dropping.js';
import {theme} from './theme.js';

function materialRow(place, title, words) {
  const picture = element('img', {class: 'material', alt: '', hidden: true});
  const note = element('span', {class: 'note', role: 'status'});
  const remove = element('button', {type: 'button', class: 'clear', 'aria-label': `${title}: the sample again`, title: 'The sample again'}, '×');
  const root = element('div', {class: 'row material-row'}, picture,
                       element('span', {}, element('span', {class: 'title'}, title), note));
  const report = (text) => { note.textContent = text; };
  root.append(takesImages(root, {label: `${title}: choose an image`, text: 'Image…', report,
                                 take: (file) => theme.putMaterial(place, file)}), remove);
  remove.addEventListener('click', () => theme.removeMaterial(place).catch((error) => report(error.message)));
  return {
    place, root, words: `material picture image ${title} ${words}`.toLowerCase(),
    show() {
      const name = theme.state.materials?.[place];
      remove.disabled = !name;
      picture.hidden = !name;
      if (name && picture.dataset.name !== name) picture.src = `material/${place}?${name}`;
      picture.dataset.name = name ?? '';
    },
  };
}

export function materialRows() {
  return [materialRow('wallpaper/light', 'Light wallpaper', 'background'),
          materialRow('wallpaper/dark', 'Dark wallpaper', 'background'),
          materialRow('cover', 'Album cover', 'artwork music track')];
}

export const iconRow = (id) => materialRow(`icon/${id}`, 'Icon', id);

export const iconsInTheme = () => Object.keys(theme.state.materials ?? {})
  .filter((place) => place.startsWith('icon/')).map((place) => place.slice('icon/'.length));
