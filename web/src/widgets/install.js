// The tags of the platform become controls where they stand. A script may ask a tag for its value
// before anything has been drawn, so the members upgrade it; an observer only draws the others.

import { GroupCheckbox, GroupRadio, Radio } from './choices.js';
import { Combobox } from './combobox.js';
import { DupCombobox } from './dupcombobox.js';
import { RelCombobox } from './relcombobox.js';

/** By local name, which the browser gives in small letters. */
export const kKinds = {
  'tarlo:combobox': Combobox,
  'tarlo:relcombobox': RelCombobox,
  'tarlo:dupcombobox': DupCombobox,
  'tarlo:radio': Radio,
  'tarlo:groupradio': GroupRadio,
  'tarlo:groupcheckbox': GroupCheckbox,
};
const kMembers = ['value', 'text', 'selectvalue', 'checked'];
const kSelector = Object.keys(kKinds)
  .map((name) => name.replace(':', '\\:'))
  .join(',');

function upgrader() {
  const widgets = new WeakMap();
  return (element) => {
    let widget = widgets.get(element);
    if (!widget) {
      widget = new kKinds[element.localName](element);
      widgets.set(element, widget);
    }
    return widget;
  };
}

function installMembers(window, upgrade) {
  for (const name of kMembers) {
    Object.defineProperty(window.HTMLUnknownElement.prototype, name, {
      configurable: true,
      get() {
        return kKinds[this.localName] ? upgrade(this)[name] : undefined;
      },
      set(value) {
        if (kKinds[this.localName]) upgrade(this)[name] = value;
      },
    });
  }
}

/** Draws the tags of a part of the document that the parser or a script has put into it. */
function drawIn(root, upgrade) {
  if (root.nodeType !== 1) return;
  if (kKinds[root.localName]) upgrade(root);
  root.querySelectorAll(kSelector).forEach(upgrade);
}

export function install(window) {
  const { document } = window;
  const upgrade = upgrader();
  installMembers(window, upgrade);
  new window.MutationObserver((changes) => {
    for (const { addedNodes } of changes) addedNodes.forEach((node) => drawIn(node, upgrade));
  }).observe(document, { childList: true, subtree: true });
  document.addEventListener('formdata', (event) => {
    for (const element of event.target.querySelectorAll(kSelector)) {
      const name = element.getAttribute('name');
      if (name) upgrade(element).posted.forEach((value) => event.formData.append(name, value));
    }
  });
}
