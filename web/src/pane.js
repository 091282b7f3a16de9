// What the side pane and the floating dialogs call: links that react to the mouse, folders that
// open, the tool bar, and moving a dialog by its title.

import { attempt, define } from './library.js';

function setStatus(window, text) {
  attempt(() => (window.top.status = text ?? ''));
}

/** The rows of a folder behind the first, from the element or the list that its id means. */
export function folderRows(found) {
  if (!found || found.nodeType) return [];
  return Array.from(found)
    .filter((element) => element.localName === 'tr')
    .slice(1);
}

/**
 * Where a dragged box comes to stand: it never leaves the window to the left or above, nor wholly
 * to the right or below.
 */
export function draggedTo(start, moved, room) {
  const within = (value, most) => Math.max(0, Math.min(value, most - 40));
  return {
    left: within(start.left + moved.x, room.width),
    top: within(start.top + moved.y, room.height),
  };
}

function startDrag(window, element) {
  const { document } = window;
  const from = window.event;
  if (!from || !element) return;
  const start = { left: element.offsetLeft, top: element.offsetTop };
  const room = { width: document.body.scrollWidth, height: document.body.scrollHeight };
  const move = (event) => {
    const to = draggedTo(
      start,
      { x: event.clientX - from.clientX, y: event.clientY - from.clientY },
      room,
    );
    element.style.left = to.left + 'px';
    element.style.top = to.top + 'px';
    event.preventDefault();
  };
  const stop = () => {
    document.removeEventListener('pointermove', move, true);
    document.removeEventListener('pointerup', stop, true);
  };
  document.addEventListener('pointermove', move, true);
  document.addEventListener('pointerup', stop, true);
  from.preventDefault(); // no text selection while dragging
}

function addTool(window, library, id) {
  const desktop = attempt(() => window.top.TarloDesktop);
  if (!desktop) {
    window.sAlert('请在桌面中使用工具栏。', false);
    return;
  }
  library.showTip(
    desktop.addTool(id) ? '已加入到工具栏中。' : '此功能已在工具栏中，或您没有使用权限。',
  );
}

export function install(window, library) {
  define(window, {
    doLinkOver(link) {
      const text = link.getAttribute('desc');
      if (text) link.title = text;
      setStatus(window, text);
    },
    doLinkOut() {
      setStatus(
        window,
        attempt(() => window.top.g_sReady),
      );
    },
    linkStatus(found) {
      const rows = folderRows(found);
      const isOpen = rows.some((row) => row.style.display !== 'none');
      for (const row of rows) row.style.display = isOpen ? 'none' : '';
    },
    toolBarAdd: (id) => addTool(window, library, id),
    Tarlo_moveSelectobj: (element) => startDrag(window, element),
  });
}
