// The old pages link no style sheet: the library adds ours. The server answers it with an ETag, so
// it needs no version here. Pages that wear no colour scheme of their own take over that of the
// desktop around them.

import { attempt, kStyleAddress } from './library.js';

// The frames of wizards in which a list stands, whose page is to fit its frame.
const kListFrame = '.tarlo-step iframe[name^=frametest]';

function linkSheet(document) {
  if (document.querySelector(`link[href="${kStyleAddress}"]`)) return;
  const link = document.createElement('link');
  link.rel = 'stylesheet';
  link.href = kStyleAddress;
  link.setAttribute('blocking', 'render'); // else a page shows unstyled for a moment
  (document.head || document.documentElement).appendChild(link);
}

export function install(window) {
  linkSheet(window.document);
  const root = window.document.documentElement;
  const scheme = attempt(() => window.top.document.documentElement.dataset.scheme);
  if (scheme && !root.dataset.scheme) root.dataset.scheme = scheme;
  if (attempt(() => window.frameElement.matches(kListFrame)))
    root.classList.add('tarlo-list-frame');
}
