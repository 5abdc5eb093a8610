// Elements, and controls made of them.

function element(name, attributes = {}, ...children) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (value === true) made.setAttribute(key, '');
    else if (value !== false && value !== null) made.setAttribute(key, value);
  }
  made.append(...children);
  return made;
}

// Changes nothing if everything is in place already: an element that is moved loses the focus.
function setChildren(parent, children) {
  if (children.length === parent.children.length &&
      children.every((child, i) => child === parent.children[i])) {
    return;
  }
  parent.replaceChildren(...children);
}

const find = (selector) => document.querySelector(selector);

// Radio buttons side by side

function choice(name, options, chosen, choose) {
  return options.map(({value, title}) => {
    const input = element('input', {type: 'radio', name, value, checked: value === chosen});
    input.addEventListener('change', () => choose(value));
    return element('label', {}, input, element('span', {}, title));
  });
}
