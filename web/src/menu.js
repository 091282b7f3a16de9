// Pull-downs: the menu bar of a page, and the views of a grid. Mouse and keyboard as in a desktop
// menu.

/** The place behind a key in a list of `count` entries; undefined for a key that moves nothing. */
export function movedTo(key, at, count) {
  if (count === 0) return undefined;
  if (key === 'ArrowDown') return (at + 1) % count;
  if (key === 'ArrowUp') return (at - 1 + count) % count;
  if (key === 'Home') return 0;
  if (key === 'End') return count - 1;
  return undefined;
}

/**
 * Makes `list` (role menu, hidden) the pull-down of `opener`. Gives its functions open and close.
 */
export function makePullDown(window, opener, list) {
  const { document } = window;
  const items = () => [...list.querySelectorAll('[role=menuitem]')];

  function onOutside(event) {
    if (!list.contains(event.target) && !opener.contains(event.target)) close();
  }
  function close() {
    if (list.hidden) return;
    list.hidden = true;
    opener.setAttribute('aria-expanded', 'false');
    document.removeEventListener('mousedown', onOutside, true);
    window.removeEventListener('blur', close);
  }
  function open(place) {
    if (list.hidden) {
      list.hidden = false;
      opener.setAttribute('aria-expanded', 'true');
      document.addEventListener('mousedown', onOutside, true);
      window.addEventListener('blur', close);
    }
    if (place !== undefined) items().at(place)?.focus();
  }

  opener.addEventListener('click', (event) => {
    event.preventDefault();
    if (list.hidden) open();
    else close();
  });
  opener.addEventListener('keydown', (event) => {
    if (event.key !== 'ArrowDown' && event.key !== 'ArrowUp') return;
    event.preventDefault();
    open(event.key === 'ArrowDown' ? 0 : -1);
  });
  list.addEventListener('keydown', (event) => {
    const all = items();
    const to = movedTo(event.key, all.indexOf(document.activeElement), all.length);
    if (to !== undefined) all[to].focus();
    else if (event.key === 'Escape') opener.focus();
    else if (event.key !== 'Tab') return;
    if (to === undefined) close();
    if (event.key !== 'Tab') event.preventDefault();
  });
  list.addEventListener('click', (event) => {
    if (event.target.closest('[role=menuitem]')) close();
  });
  return { open, close };
}

/** The bar's entries, left and right by the arrow keys; one of them in the tab order. */
function makeBar(window, bar) {
  const tops = [...bar.children]
    .map((entry) => entry.querySelector('[role=menuitem]'))
    .filter(Boolean);
  tops.forEach((top, at) => {
    top.tabIndex = at === 0 ? 0 : -1;
    top.addEventListener('keydown', (event) => {
      const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
      if (!step) return;
      event.preventDefault();
      tops[(at + step + tops.length) % tops.length].focus();
    });
    const list = top.parentElement.querySelector('[role=menu]');
    if (list) makePullDown(window, top, list);
  });
}

export function install(window) {
  const start = () =>
    window.document.querySelectorAll('.tarlo-menu-bar').forEach((bar) => makeBar(window, bar));
  if (window.document.readyState === 'loading')
    window.document.addEventListener('DOMContentLoaded', start);
  else start();
}
