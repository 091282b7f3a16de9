// Pages in a dialog speak to `top` as if it were their own window. These are all the names they
// use; each answers for the active dialog's page.

import { define } from './library.js';

const kDelegates = ['switchStep', 'moveStep', 'pophidden', 'dialogArguments'];

function pageOf(library) {
  const dialog = library.dialogs.at(-1);
  return dialog && dialog.frame.contentWindow;
}

function delegate(window, library, name) {
  // Without a dialog the name keeps its meaning here: that of the page's frame. The page's own
  // function or variable of the name replaces the whole property.
  const own = () => window.document.querySelector(`iframe[name="${name}"]`)?.contentWindow;
  Object.defineProperty(window, name, {
    configurable: true,
    get() {
      const page = pageOf(library);
      return page ? page[name] : own();
    },
    set: (value) => define(window, { [name]: value }),
  });
}

export function install(window, library) {
  if (window.top !== window) return;
  for (const name of kDelegates) {
    if (!Object.prototype.hasOwnProperty.call(window, name)) delegate(window, library, name);
  }
  const ownClose = window.close.bind(window);
  define(window, {
    close: () => (library.dialogs.length ? library.dialogs.at(-1).close() : ownClose()),
  });
  library.fallbackDocument = () => pageOf(library)?.document ?? null;
}
