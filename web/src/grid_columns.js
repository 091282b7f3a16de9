// Column widths: dragged at the caption's right edge, kept by the browser for each kind of grid.

import { attempt } from './library.js';

export const kLeastWidth = 32;

/** Grids of one id and the same captions share their widths. */
export function widthsKey(id, captions) {
  return `tarlo.widths.${id}.${captions.join('|')}`;
}

/** One width in pixels for each column; undefined when nothing usable is kept. */
export function readWidths(storage, key, count) {
  const widths = attempt(() => JSON.parse(storage.getItem(key)));
  const isUsable =
    Array.isArray(widths) &&
    widths.length === count &&
    widths.every((width) => Number.isFinite(width) && width >= kLeastWidth);
  return isUsable ? widths : undefined;
}

export function saveWidths(storage, key, widths) {
  attempt(() => storage.setItem(key, JSON.stringify(widths.map(Math.round))));
}

/**
 * The widths after column `at` has been dragged by `by` pixels: its right neighbour gives or takes.
 */
export function draggedWidths(widths, at, by) {
  const next = [...widths];
  const hasNeighbour = at + 1 < widths.length;
  const room = hasNeighbour ? widths[at + 1] - kLeastWidth : Infinity;
  const moved = Math.max(kLeastWidth - widths[at], Math.min(by, room));
  next[at] += moved;
  if (hasNeighbour) next[at + 1] -= moved;
  return next;
}

function apply(table, cells, widths) {
  table.style.tableLayout = 'fixed';
  cells.forEach((cell, i) => (cell.style.width = `${widths[i]}px`));
}

/** Gives every caption a handle. */
export function makeResizable(window, id, table) {
  const cells = [...table.tHead.rows[0].cells];
  const key = widthsKey(
    id,
    cells.map((cell) => cell.textContent),
  );
  const storage = attempt(() => window.localStorage);
  const kept = readWidths(storage, key, cells.length);
  if (kept) apply(table, cells, kept);
  cells.forEach((cell, at) => {
    const handle = cell.appendChild(window.document.createElement('span'));
    handle.className = 'tarlo-grid-handle';
    handle.addEventListener('click', (event) => event.stopPropagation());
    handle.addEventListener('pointerdown', (event) => {
      event.preventDefault();
      const before = cells.map((each) => each.offsetWidth);
      const widths = (moved) => draggedWidths(before, at, moved.clientX - event.clientX);
      const onMove = (moved) => apply(table, cells, widths(moved));
      handle.setPointerCapture(event.pointerId);
      handle.addEventListener('pointermove', onMove);
      handle.addEventListener(
        'pointerup',
        (moved) => {
          handle.removeEventListener('pointermove', onMove);
          saveWidths(storage, key, widths(moved));
        },
        { once: true },
      );
    });
  });
}
