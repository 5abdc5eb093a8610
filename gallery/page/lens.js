// The picture with the place that a row is about, while the row is pointed at or has the focus. Escape
// takes it away.

const lens = element('figure', {class: 'lens', hidden: true, 'aria-hidden': 'true'},
                     element('div', {class: 'marked'}, element('img', {alt: ''}), element('div', {class: 'marks'})),
                     element('figcaption', {}));
document.body.append(lens);

function showPlace(reading) {
  const tab = gallery.tabs.find(({id}) => id === chosenTab);
  const screen = tab?.screens.find(({id}) => id === reading.screen);
  const pictures = screen?.[reading.wallpaper ?? wallpaper] ?? screen?.light ?? screen?.dark;
  lens.hidden = !pictures;
  if (!pictures) return;
  lens.querySelector('img').src = address(pictures.after);
  lens.querySelector('.marks').replaceChildren(...placeMarks(reading));
  lens.querySelector('figcaption').textContent = placeName(reading);
}

function hidePlace() { lens.hidden = true; }

function pointsAt(row, reading) {
  const show = () => showPlace(reading);
  row.addEventListener('pointerenter', show);
  row.addEventListener('focusin', show);
  row.addEventListener('pointerleave', hidePlace);
  row.addEventListener('focusout', hidePlace);
}

addEventListener('keydown', ({key}) => { if (key === 'Escape') hidePlace(); });
