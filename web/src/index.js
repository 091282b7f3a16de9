// The script library: one classic script, loaded by every page's head. The modules are installed
// in the order of the list.

import { createLibrary } from './library.js';
import * as dom from './dom.js';
import * as aliases from './aliases.js';
import * as css from './css.js';
import * as messages from './messages.js';
import * as dialogs from './dialogs.js';
import * as delegates from './delegates.js';
import * as hidden from './hidden.js';
import * as styles from './styles.js';
import * as pane from './pane.js';
import * as menu from './menu.js';
import * as grid from './grid.js';
import * as widgets from './widgets/install.js';
import * as wizard from './wizard.js';

const kModules = [
  ...[dom, aliases, css], // the document
  ...[messages, dialogs, delegates, hidden], // windows and frames
  ...[styles, pane, menu, grid, widgets, wizard], // what pages show
];

// A page may load the library twice.
if (!window.TarloLibrary) {
  const library = createLibrary();
  window.TarloLibrary = library;
  for (const module of kModules) module.install(window, library);
}
