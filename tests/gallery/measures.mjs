// What is wrong with the layout of the page as it is now: what is wider than the page, cut off, or lies
// on something else.

// In the page.
function findFaults() {
  const faults = [];
  const about = (it) => `${it.tagName.toLowerCase()}.${it.getAttribute('class') ?? ''} "${(it.value || it.textContent).trim().slice(0, 30)}"`;
  // The strip of tabs scrolls by itself, and what only screen readers see has no size.
  const isApart = (it) => it.closest('.unseen, .settings') || it.closest('thead')?.offsetWidth === 1;
  const isSeen = (it) => it.checkVisibility({opacityProperty: true, visibilityProperty: true}) && !isApart(it);
  const width = document.documentElement.clientWidth;
  if (document.documentElement.scrollWidth > width) faults.push('the page scrolls sideways');

  const texts = [];
  for (const it of document.body.querySelectorAll('*')) {
    if (!isSeen(it)) continue;
    const box = it.getBoundingClientRect();
    if (box.right > width + 0.5 || box.left < -0.5) faults.push(`too wide: ${about(it)}`);
    const style = getComputedStyle(it);
    const hides = style.overflowX !== 'visible' || it.matches('input');
    if (hides && !it.matches('input[type=range], input[type=file]') &&
        (it.scrollWidth > it.clientWidth + 1 || (style.overflowY === 'hidden' && it.scrollHeight > it.clientHeight + 1))) {
      faults.push(`cut off: ${about(it)}`);
    }
    for (const node of it.childNodes) {
      if (node.nodeType !== Node.TEXT_NODE || !node.data.trim()) continue;
      const range = document.createRange();
      range.selectNodeContents(node);
      const rects = [...range.getClientRects()].filter((rect) => rect.width > 1);
      texts.push({it, rects});
      const around = it.closest('button, label, a.button, td, th, summary, .mark, .sample');
      const room = around?.getBoundingClientRect();
      if (room && rects.some((rect) => rect.left < room.left - 1 || rect.right > room.right + 1 || rect.top < room.top - 1 || rect.bottom > room.bottom + 1)) {
        faults.push(`out of its place: ${about(it)}`);
      }
    }
  }
  const lap = (one, other) => Math.min(one.right, other.right) - Math.max(one.left, other.left) > 2 &&
    Math.min(one.bottom, other.bottom) - Math.max(one.top, other.top) > 4;
  for (const [i, one] of texts.entries()) {
    for (const other of texts.slice(i + 1)) {
      if (one.rects.some((rect) => other.rects.some((its) => lap(rect, its)))) faults.push(`${about(one.it)} lies on ${about(other.it)}`);
    }
  }
  return [...new Set(faults)];
}

export const faultsOf = (page) => page.evaluate(findFaults);

// At twice the size of text.
export const enlarge = (page) => page.evaluate(() => { document.documentElement.style.fontSize = '200%'; });

// Whether the ring around the control that has the focus leaves its letters free.
export const ringIsFree = (page) => page.evaluate(() => {
  const it = document.activeElement, style = getComputedStyle(it);
  const range = document.createRange();
  range.selectNodeContents(it);
  const box = it.getBoundingClientRect(), offset = Number.parseFloat(style.outlineOffset);
  return style.outlineStyle !== 'none' && [...range.getClientRects()].every((text) =>
    text.left > box.left - offset + 1 && text.right < box.right + offset - 1);
});
