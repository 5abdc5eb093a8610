// Follows later drawings, if there may be any. Scripts can be read from disk where other files cannot. state.js holds
// only the revision; gallery.js is read when that has changed.

const kPause = 250, kLongestPause = 30000;
let pause = kPause;

function readScript(name, mark) {
  return new Promise((resolve) => {
    const script = element('script', {src: `${name}?${mark}`});
    script.onload = script.onerror = (event) => {
      script.remove();
      resolve(event.type === 'load');
    };
    document.head.append(script);
  });
}

let state = gallery.revision;
window.varnixState = (revision) => { state = revision; };
window.varnixGallery = (next) => {
  const changed = present(next);
  for (const screen of changed) screen.glow();
  const names = [...new Set(changed.map((screen) => screen.name.textContent))];
  const time = new Date().toLocaleTimeString();
  find('.followed').textContent = [`Drawn anew at ${time}`, names.join(', ')].filter(Boolean).join(': ');
};

async function follow() {
  if (!document.hidden) {
    const there = await readScript('state.js', Date.now());
    if (there && state !== gallery.revision) await readScript('gallery.js', state);
    // A page without its folder need not ask so often.
    pause = there ? kPause : Math.min(pause * 2, kLongestPause);
  }
  if (gallery.follows) setTimeout(follow, pause);
}
if (gallery.follows) setTimeout(follow, pause);
