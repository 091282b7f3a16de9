// Ids as global names where browsers give none or disagree: an iframe by its id is its window, and
// an id that several elements carry is their list.

import { oneOrList } from './collections.js';
import { define } from './library.js';

/**
 * What the global `id` means: a frame of that name, else the frame or the elements with that id.
 */
export function resolveAlias(document, id) {
  const value = '"' + id.replace(/["\\]/g, '\\$&') + '"';
  const frame = document.querySelector(`iframe[name=${value}]`);
  if (frame) return frame.contentWindow;
  const found = oneOrList(document.querySelectorAll(`[id=${value}]`));
  if (!found) return undefined;
  return found.localName === 'iframe' ? found.contentWindow : found;
}

/**
 * Whether an element needs a global of its own: a frame whose id is not its name, or an id met
 * before.
 */
export function needsAlias(element, seen) {
  const id = element.id;
  // A form's control named "id" hides the attribute.
  if (typeof id !== 'string' || id === '') return false;
  if (element.localName === 'iframe' && element.name !== id) return true;
  if (seen.has(id)) return true;
  seen.add(id);
  return false;
}

function addAlias(window, id) {
  // Variables and functions of the page and the browser's own properties keep their meaning.
  if (Object.prototype.hasOwnProperty.call(window, id)) return;
  Object.defineProperty(window, id, {
    configurable: true,
    get: () => resolveAlias(window.document, id),
    set: (value) => define(window, { [id]: value }),
  });
}

export function install(window) {
  const seen = new Set();
  const visited = new WeakSet(); // an element that is moved is not a second one
  const visit = (element) => {
    if (visited.has(element)) return;
    visited.add(element);
    if (needsAlias(element, seen)) addAlias(window, element.id);
  };
  const visitTree = (root) => {
    if (root.nodeType !== 1) return;
    if (root.id) visit(root);
    root.querySelectorAll('[id]').forEach(visit);
  };
  // The parser runs observers before each script it meets, so a script finds the elements above it.
  new window.MutationObserver((records) => {
    for (const record of records) record.addedNodes.forEach(visitTree);
  }).observe(window.document, { childList: true, subtree: true });
  if (window.document.documentElement) visitTree(window.document.documentElement);
}
