// Places that take an image: dropped there, or chosen by keyboard.
import {element} from './elements.js';

const largest = 16 * 1024 * 1024;

export const isImage = (file) => ['image/png', 'image/jpeg'].includes(file?.type);

// A button that opens the chooser of files. take(file) may throw; report(text) says what is wrong.
export function takesImages(place, {label, text, take, report}) {
  const chooser = element('input', {type: 'file', accept: 'image/png,image/jpeg', hidden: true, tabindex: -1});
  const button = element('button', {type: 'button', class: 'choose', 'aria-label': label, title: label}, text);
  const use = async (file) => {
    if (!file) return;
    report('');
    place.classList.add('busy');
    try {
      if (!isImage(file)) throw new Error('Only PNG and JPEG images can be used.');
      if (file.size > largest) throw new Error('An image may have 16 MB.');
      await take(file);
    } catch (error) {
      report(error.message);
    }
    place.classList.remove('busy');
  };
  button.addEventListener('click', () => chooser.click());
  chooser.addEventListener('change', () => {
    use(chooser.files[0]);
    chooser.value = '';
  });
  const carriesFile = (event) => event.dataTransfer?.types.includes('Files');
  let inside = 0;
  const mark = (step) => {
    inside = step === 0 ? 0 : inside + step;
    place.classList.toggle('over', inside > 0);
  };
  place.addEventListener('dragenter', (event) => { if (carriesFile(event)) mark(1); });
  place.addEventListener('dragleave', (event) => { if (carriesFile(event)) mark(-1); });
  place.addEventListener('dragover', (event) => { if (carriesFile(event)) event.preventDefault(); });
  place.addEventListener('drop', (event) => {
    event.preventDefault();
    event.stopPropagation();
    mark(0);
    use(event.dataTransfer.files[0]);
  });
  place.append(chooser);
  return button;
}

// An image that misses its place must not replace the page.
for (const name of ['dragover', 'drop']) addEventListener(name, (event) => event.preventDefault());
