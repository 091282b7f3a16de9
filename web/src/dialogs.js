// Dialogs: showWebDialog opens the address in an overlay of the outermost window, which is modal
// for every frame in it. It cannot wait for the answer, so it returns nothing, and on the result 1
// it reloads the caller's grid itself: that is what pages do with a result of 1.

import { attempt, define, hostWindow, libraryOf } from './library.js';

const kDefaultSize = { width: 620, height: 440 };

/**
 * The size of a dialog's page in pixels from what a page asks for (numbers or texts such as
 * "620px"), kept inside the window that shows it.
 */
export function dialogSize(width, height, room) {
  const pixels = (value, usual, most) =>
    Math.max(120, Math.min(parseInt(value, 10) || usual, most));
  return {
    width: pixels(width, kDefaultSize.width, room.width - 24),
    height: pixels(height, kDefaultSize.height, room.height - 60),
  };
}

/** Titles carry a run of no-break spaces that pushed the browser's own name out of sight. */
export function captionOf(title) {
  return title.split('\u00a0')[0].trim();
}

/** Whether a page's result says that something was saved. */
export function saysSaved(result) {
  return String(result) === '1';
}

/** The full address, read by the caller's page: relative to it and in its character set. */
function addressFor(caller, url) {
  const link = caller.document.createElement('a');
  link.href = url;
  return link.href;
}

function reloadGrid(caller) {
  attempt(() => typeof caller.SearchTable.reload === 'function' && caller.SearchTable.reload());
}

function buildOverlay(document, size) {
  const overlay = document.createElement('dialog');
  overlay.className = 'tarlo-dialog';
  const bar = document.createElement('div');
  bar.className = 'tarlo-dialog-bar';
  const caption = document.createElement('span');
  const cross = document.createElement('button');
  cross.type = 'button';
  cross.title = '关闭';
  cross.setAttribute('aria-label', '关闭');
  cross.textContent = '×';
  bar.append(caption, cross);
  const frame = document.createElement('iframe');
  frame.style.width = size.width + 'px';
  frame.style.height = size.height + 'px';
  overlay.append(bar, frame);
  return { overlay, caption, cross, frame };
}

/** Takes the dialog and those above it away, then hands the result on. */
function finish(host, dialog) {
  const { dialogs } = host.TarloLibrary;
  const at = dialogs.indexOf(dialog);
  if (at < 0) return;
  const result = attempt(() => dialog.frame.contentWindow.returnValue);
  for (const closed of dialogs.splice(at)) {
    closed.overlay.close();
    closed.overlay.remove();
  }
  giveFocusBack(dialog);
  // A caller that has gone on to another page has no use for the result.
  const isThere = attempt(() => dialog.caller.document === dialog.callerDocument);
  if (isThere && saysSaved(result)) reloadGrid(dialog.caller);
}

/** The caller takes the focus at the element that had it, a button that keys have pressed perhaps. */
function giveFocusBack({ caller, focused }) {
  attempt(() => caller.focus());
  if (attempt(() => focused.isConnected)) attempt(() => focused.focus({ preventScroll: true }));
}

/**
 * Closes later: the script that asks for it may run in a frame of the dialog and must come to its
 * end.
 */
function closeSoon(host, dialog) {
  host.setTimeout(() => finish(host, dialog), 0);
}

/** Escape and the cross do what the page's own Escape handling does. */
function cancel(host, dialog) {
  const page = dialog.frame.contentWindow;
  if (typeof attempt(() => page.catchCode) === 'function') attempt(() => page.catchCode(27));
  else closeSoon(host, dialog);
}

/** A page without the library, as an error page is, does not hear the key itself. */
function listenForEscape(host, dialog) {
  const page = dialog.frame.contentWindow;
  if (libraryOf(page)) return;
  page.addEventListener('keydown', (event) => event.key === 'Escape' && cancel(host, dialog));
}

function openOverlay(host, caller, url, width, height) {
  const room = { width: host.innerWidth, height: host.innerHeight };
  const parts = buildOverlay(host.document, dialogSize(width, height, room));
  const callerDocument = caller.document;
  const dialog = { ...parts, caller, callerDocument, focused: callerDocument.activeElement };
  dialog.close = () => closeSoon(host, dialog);
  host.TarloLibrary.dialogs.push(dialog);
  dialog.cross.onclick = () => cancel(host, dialog);
  dialog.overlay.addEventListener('cancel', (event) => {
    event.preventDefault();
    cancel(host, dialog);
  });
  // The browser may close the overlay without asking, as on Escape pressed twice.
  dialog.overlay.addEventListener('close', () => finish(host, dialog));
  dialog.frame.addEventListener('load', () => {
    attempt(() => becomeDialogPage(dialog.frame.contentWindow, dialog));
    dialog.caption.textContent = attempt(() => captionOf(dialog.frame.contentDocument.title)) ?? '';
    attempt(() => dialog.frame.contentWindow.focus());
    attempt(() => listenForEscape(host, dialog));
  });
  host.document.body.append(dialog.overlay);
  dialog.overlay.showModal();
  dialog.frame.src = addressFor(caller, url);
}

/**
 * Inside a page of another site there is no window of ours to cover: an ordinary window then,
 * without modality.
 */
function openWindow(caller, url, width, height) {
  const size = dialogSize(width, height, {
    width: caller.screen.availWidth,
    height: caller.screen.availHeight,
  });
  const features = `popup,width=${size.width},height=${size.height}`;
  const opened = caller.open(addressFor(caller, url), '_blank', features);
  if (!opened) caller.sAlert('浏览器阻止了弹出窗口，请允许本站弹出窗口后重试。', false);
}

/**
 * Gives a window what a dialog's page expects: `dialogArguments`, and a `close` that closes the
 * dialog.
 */
function becomeDialogPage(window, dialog) {
  define(window, { dialogArguments: dialog.caller, close: dialog.close });
}

function becomeDialogWindow(window) {
  const caller = window.opener;
  const nativeClose = window.close.bind(window);
  const close = () =>
    window.setTimeout(() => {
      if (saysSaved(window.returnValue)) reloadGrid(caller);
      nativeClose();
    }, 0);
  define(window, { dialogArguments: caller, close });
}

/** The dialog whose page `window` is, or undefined. */
function dialogOf(window) {
  const library = libraryOf(window.top);
  return library && library.dialogs.find((dialog) => dialog.frame.contentWindow === window);
}

export function install(window, library) {
  // The host's own copy of the library runs its dialogs: functions of a page die when that page is
  // loaded anew.
  library.openDialog = (caller, url, width, height) =>
    openOverlay(window, caller, url, width, height);
  // A dialog's page that needs more room than its caller asked for, as far as there is any.
  library.fitDialog = (page, size) => {
    const dialog = library.dialogs.find(({ frame }) => frame.contentWindow === page);
    if (!dialog) return;
    const room = { width: window.innerWidth, height: window.innerHeight };
    const { width, height } = dialogSize(size.width, size.height, room);
    Object.assign(dialog.frame.style, { width: width + 'px', height: height + 'px' });
  };
  define(window, {
    showWebDialog(url, width, height) {
      const host = hostWindow(window);
      if (host) host.TarloLibrary.openDialog(window, url, width, height);
      else openWindow(window, url, width, height);
    },
  });
  const dialog = dialogOf(window);
  if (dialog) becomeDialogPage(window, dialog);
  else if (window.top === window && libraryOf(window.opener)) becomeDialogWindow(window);
}
