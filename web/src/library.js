// What the modules share: one object a window, and the ways to reach the other windows of the same
// site.

export const kStyleAddress = '/assets/tarlo.css';

/** The object behind window.TarloLibrary. `dialogs` is filled in the outermost window only. */
export function createLibrary() {
  return {
    dialogs: [], // open dialogs, the active one last
    answerListeners: [], // called when a hidden frame has got an answer of the server
    fallbackDocument: () => null, // where document.all looks for what this document has not
  };
}

/**
 * Makes globals for the pages. They can be redeclared: a page's own `function closeWebDialog` or
 * `var hidden` must win, and a property that is not configurable would make it a syntax error.
 */
export function define(target, members) {
  for (const [name, value] of Object.entries(members)) {
    Object.defineProperty(target, name, {
      value,
      configurable: true,
      writable: true,
      enumerable: true,
    });
  }
}

/**
 * Runs `action`; undefined where it fails, as the reach into a window of another site or a removed
 * frame does.
 */
export function attempt(action) {
  try {
    return action();
  } catch {
    return undefined;
  }
}

/** The library of another window; undefined when it has none or belongs to another site. */
export function libraryOf(window) {
  return attempt(() => window.TarloLibrary);
}

/** The outermost window when it is ours: dialogs live there. Undefined inside a foreign page. */
export function hostWindow(window) {
  return libraryOf(window.top) ? window.top : undefined;
}
