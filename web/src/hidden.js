// The hidden frames that answers of the server run in.

import { attempt } from './library.js';

/** Frames that pages send saving and deleting requests through. */
const kAnswerFrames = ['pophidden', 'hidden'];

/**
 * The text of the first script that calls sAlert as its own, from a document's inline scripts;
 * undefined when none.
 */
export function bareMessage(scripts) {
  return scripts.map((script) => script.textContent).find((text) => /^\s*sAlert\s*\(/.test(text));
}

/**
 * An answer may call sAlert without naming a window, and its frame has no library: the call failed
 * before anything in that script ran, so running the script again does nothing twice.
 */
function rescue(window, answer) {
  if (typeof answer.sAlert === 'function') return;
  const text = bareMessage([...answer.document.querySelectorAll('script:not([src])')]);
  if (text === undefined) return;
  answer.sAlert = window.sAlert;
  answer.eval(text);
}

/**
 * A refusal or a failure would stand where nobody sees it, alone or behind what was written before it:
 * what it says is told.
 */
function tellNotice(window, answer) {
  const lines = answer.document.querySelectorAll('.notice > h3, .notice > p:not(:has(a))');
  if (lines.length) window.sAlert([...lines].map((line) => line.textContent).join('\n\n'), false);
}

export function install(window, library) {
  // Load events do not bubble, but the document sees them on their way down.
  window.document.addEventListener(
    'load',
    (event) => {
      const frame = event.target;
      if (frame.localName !== 'iframe' || attempt(() => frame.contentDocument) == null) return;
      rescue(window, frame.contentWindow);
      const isAnswer =
        kAnswerFrames.includes(frame.name) && frame.contentDocument.URL !== 'about:blank';
      if (!isAnswer) return;
      tellNotice(window, frame.contentWindow);
      library.answerListeners.forEach((listener) => listener());
    },
    true,
  );
}
