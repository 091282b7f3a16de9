// Messages to the user: sAlert, the tip box every page carries, and the Escape key of dialogs.

import { attempt, define } from './library.js';

const kTipMilliseconds = 4000;

/**
 * The windows from `window` outward, as far as they can be reached.
 * @returns {Window[]}
 */
export function windowsOutward(window) {
  const windows = [window];
  for (let at = window; at.parent && at.parent !== at; at = at.parent) {
    if (attempt(() => at.parent.document) === undefined) break;
    windows.push(at.parent);
  }
  return windows;
}

/** The nearest window, from this one outward, with a global function of that name. */
export function nearestWith(window, name) {
  return windowsOutward(window).find((at) => typeof at[name] === 'function');
}

/** Shows a passing remark in the nearest tip box. False when no window has one. */
export function showTip(window, text) {
  const holder = windowsOutward(window).find((at) => at.document.getElementById('TarloTipInfo'));
  if (!holder) return false;
  const box = holder.document.getElementById('TarloTipInfo');
  const span = box.querySelector('span');
  if (!span) return false;
  span.textContent = text;
  box.style.display = 'block';
  holder.clearTimeout(box.tarloTimer);
  box.tarloTimer = holder.setTimeout(() => (box.style.display = 'none'), kTipMilliseconds);
  return true;
}

export function install(window, library) {
  library.showTip = (text) => showTip(window, text);
  define(window, {
    // A message, or with a true second argument a question that answers whether OK was chosen.
    // Pages go on with the answer in the same statement, so only the browser's own boxes will do.
    sAlert: (message, ask) => (ask ? window.confirm(message) : window.alert(message)),
  });
  window.addEventListener('keydown', (event) => {
    if (event.key !== 'Escape' || event.defaultPrevented) return;
    const page = nearestWith(window, 'catchCode');
    if (page) page.catchCode(27);
  });
}
