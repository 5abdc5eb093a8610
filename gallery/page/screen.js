// Pictures

const address = ({path, revision}) =>
  `${path.split('/').map(encodeURIComponent).join('/')}?${revision}`;

// Shows the picture once it has been read, so that its place is never empty. Its address contains
// the revision, so that a new drawing is read again. True if it differs from before.
function show(image, picture) {
  const wanted = address(picture);
  const asked = image.dataset.asked;
  if (asked === wanted) return false;
  image.dataset.asked = wanted;
  if (asked === undefined) {
    image.src = wanted;
    return false;
  }
  const next = new Image();
  next.src = wanted;
  const swap = () => {
    if (image.dataset.asked === wanted) image.src = wanted;
  };
  next.decode().then(swap, swap);
  return true;
}

// A screen: two pictures on top of each other. The upper one shows to the right of the handle.

const positions = new Map();

class Screen {
  constructor(screen) {
    this.before = element('img', {class: 'before', draggable: 'false'});
    this.after = element('img', {class: 'after', draggable: 'false'});
    this.range = element('input', {type: 'range', min: 0, max: 100, step: 1});
    this.pair = element('div', {class: 'pair'}, this.before, this.after, this.range,
                        element('span', {class: 'handle', 'aria-hidden': 'true'}));
    this.name = element('span', {class: 'name'});
    this.figure = element('figure', {class: 'screen', 'data-screen': screen.id}, this.pair,
                          element('figcaption', {},
                                  element('span', {class: 'side', 'aria-hidden': 'true'}, 'before'),
                                  this.name,
                                  element('span', {class: 'side', 'aria-hidden': 'true'}, 'after')));
    this.id = screen.id;
    this.range.addEventListener('input', () => this.moveAll(this.range.valueAsNumber));
    this.followPointer();
    this.move(positions.get(this.id) ?? 50);
  }

  update(screen, wallpaper) {
    const pictures = screen[wallpaper] ?? screen.light ?? screen.dark;
    this.figure.hidden = !pictures;
    this.name.textContent = screen.title;
    this.before.alt = `${screen.title}, before`;
    this.after.alt = `${screen.title}, after`;
    this.range.setAttribute('aria-label', `${screen.title}: from before to after`);
    if (!pictures) return false;
    const changed = [show(this.before, pictures.before), show(this.after, pictures.after)];
    return changed.includes(true);
  }

  glow() {
    this.pair.classList.remove('redrawn');
    // Reading the layout makes the browser notice that the class is gone, so the glow starts again.
    void this.pair.offsetWidth;
    this.pair.classList.add('redrawn');
  }

  move(position) {
    this.range.value = position;
    this.pair.style.setProperty('--at', `${this.range.value}%`);
    this.range.setAttribute('aria-valuetext', `${100 - this.range.value} % of it after`);
  }

  // The same screen is set alike in every tab, so that settings can be compared.
  moveAll(position) {
    positions.set(this.id, position);
    for (const screen of screens.values()) {
      if (screen.id === this.id) screen.move(position);
    }
  }

  // The whole picture can be dragged, which a range's own track does not allow everywhere. A finger
  // moves the divider by tapping or moving sideways. Moving up and down scrolls the page, but the
  // first of those moves arrive here too.
  followPointer() {
    const sideways = 6;
    let held = null;
    const moveTo = ({clientX}) => {
      const {left, width} = this.pair.getBoundingClientRect();
      this.moveAll(Math.round((clientX - left) / width * 1000) / 10);
    };
    this.pair.addEventListener('pointerdown', (event) => {
      if (!event.isPrimary || event.button !== 0) return;
      const {pointerId: id, clientX: x, clientY: y, pointerType} = event;
      held = {id, x, y, moves: pointerType !== 'touch', taps: true};
      this.pair.setPointerCapture(id);
      if (held.moves) moveTo(event);
    });
    this.pair.addEventListener('pointermove', (event) => {
      if (event.pointerId !== held?.id) return;
      const across = Math.abs(event.clientX - held.x), along = Math.abs(event.clientY - held.y);
      if (Math.max(across, along) > sideways) {
        held.moves ||= held.taps && across > along;
        held.taps = false;
      }
      if (held.moves) moveTo(event);
    });
    this.pair.addEventListener('pointerup', (event) => {
      if (event.pointerId !== held?.id) return;
      if (held.moves || held.taps) moveTo(event);
      held = null;
      this.range.focus({preventScroll: true, focusVisible: false});
    });
    this.pair.addEventListener('pointercancel', () => { held = null; });
  }
}
