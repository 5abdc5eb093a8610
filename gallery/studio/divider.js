// The divider between two themes: on the large picture, for all of them.
import {element, find} from './elements.js';

export const divider = element('div', {class: 'divider', role: 'slider', tabindex: 0, 'aria-orientation': 'horizontal',
                                'aria-valuemin': 0, 'aria-valuemax': 100});
let position = 50;

function move(to) {
  position = Math.min(Math.max(Math.round(to * 10) / 10, 0), 100);
  find('.stage').style.setProperty('--at', `${position}%`);
  divider.setAttribute('aria-valuenow', Math.round(position));
  divider.setAttribute('aria-valuetext', `${Math.round(position)} % of it this theme`);
}

const steps = {ArrowLeft: -1, ArrowDown: -1, ArrowRight: 1, ArrowUp: 1, PageDown: -10, PageUp: 10, Home: -100, End: 100};

function followKeys() {
  divider.addEventListener('keydown', (event) => {
    const step = steps[event.key];
    if (step === undefined) return;
    event.preventDefault();
    move(position + step * (event.shiftKey && Math.abs(step) === 1 ? 10 : 1));
  });
}

// The whole picture can be dragged.
function followPointer(place) {
  let isHeld = false;
  const moveTo = ({clientX}) => {
    const {left, width} = place.getBoundingClientRect();
    move((clientX - left) / width * 100);
  };
  place.addEventListener('pointerdown', (event) => {
    if (!event.isPrimary || event.button !== 0) return;
    isHeld = true;
    place.setPointerCapture(event.pointerId);
    moveTo(event);
  });
  place.addEventListener('pointermove', (event) => { if (isHeld) moveTo(event); });
  for (const end of ['pointerup', 'pointercancel']) {
    place.addEventListener(end, () => {
      if (isHeld) divider.focus({preventScroll: true, focusVisible: false});
      isHeld = false;
    });
  }
}

export function makeDivider(place) {
  place.append(divider);
  followPointer(place);
  followKeys();
  move(position);
}
