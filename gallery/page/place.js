// The worst places: how well they can be read, and where they are on a picture.

const pictureWidth = 375, pictureHeight = 667;

// Sample text as it is seen there, and the ratio.
function ratio({ink, ground, ratio: found, needed, holds}) {
  const sample = element('span', {class: 'sample', 'aria-hidden': 'true'});
  sample.style.color = ink;
  sample.style.background = ground;
  const parts = [sample, element('span', {class: 'ratio'}, found.toFixed(2))];
  if (!holds) {
    parts.push(element('span', {class: found < 3 ? 'mark bad' : 'mark poor'}, `below ${needed.toFixed(1)}`));
  }
  return parts;
}

const placeName = ({title, kind, wallpaper}) =>
  `${title}, ${kind}${wallpaper === null ? '' : `, ${wallpaper} wallpaper`}`;

// A frame around the word, and a ring around the place. They lie in an element as large as the picture.
function placeMarks({place, mark}) {
  const frame = (name, [x, y, width, height], margin) => {
    const made = element('span', {class: name});
    const share = (value, whole) => `${value / whole * 100}%`;
    Object.assign(made.style, {
      left: share(x - margin, pictureWidth), top: share(y - margin, pictureHeight),
      width: share(width + 2 * margin, pictureWidth), height: share(height + 2 * margin, pictureHeight)});
    return made;
  };
  return [frame('word-mark', mark, 3), frame('place-mark', place, 9)];
}
