// The grid in the page. The server has drawn its first page; here it becomes an object that the
// pages' scripts call by the grid's id.

import { define } from './library.js';
import { makeResizable } from './grid_columns.js';
import { element, makePager, makeToolbar, putCaption } from './grid_parts.js';
import { fetchCsv, fetchRows, requestBody } from './grid_requests.js';
import { Selection, kMultiple, kNone } from './selection.js';

const kEmpty = '没有符合条件的记录';

/** What a key does to a selection; undefined when it is not the grid's. */
export function keyAction(event) {
  const keys = { ctrl: event.ctrlKey || event.metaKey, shift: event.shiftKey };
  switch (event.key) {
    case 'ArrowDown':
      return (selection) => selection.move(1, keys);
    case 'ArrowUp':
      return (selection) => selection.move(-1, keys);
    case 'Home':
      return (selection) => selection.move(-selection.count, keys);
    case 'End':
      return (selection) => selection.move(selection.count, keys);
    case ' ':
      return (selection) => selection.toggle();
    case 'a':
    case 'A':
      return keys.ctrl ? (selection) => selection.all() : undefined;
    default:
      return undefined;
  }
}

/**
 * The order behind a click on the caption of a column (from 1): ascending, descending, the grid's
 * own.
 */
export function nextSort({ sort, descending }, column) {
  if (sort !== column) return { sort: column, descending: false };
  return descending ? { sort: 0, descending: false } : { sort: column, descending: true };
}

class Grid {
  constructor(window, library, id, settings) {
    Object.assign(this, { window, id, settings });
    this.view = {
      page: settings.page,
      sort: 0,
      descending: false,
      search: '',
      condition: '',
      right: '',
    };
    this.total = settings.total;
    this.selection = new Selection(settings.selectionStyle);
    this.frame = window.document.getElementById(`${id}_grid`);
    this.table = this.frame.querySelector('table');
    this.body = this.table.tBodies[0];
    this.#build();
    this.#listen();
    this.#showRows();
    if (settings.error) this.#showMessage(settings.error, true);
    library.answerListeners.push(() => this.load({ reload: 1 }));
  }

  #build() {
    const { window, settings, table } = this;
    const run = (script) => this.run(script);
    const { bar, label } = makeToolbar(window, settings, {
      run,
      search: (text) => this.search(text),
    });
    this.label = label;
    this.pager = makePager(window, settings, {
      goto: (page) => this.go({ page }),
      exportCsv: () => this.exportCsv(),
    });
    const scroller = element(window.document, 'div', { className: 'tarlo-grid-rows' });
    table.replaceWith(scroller);
    scroller.append(table);
    if (!settings.multiPage) scroller.style.maxHeight = `${(settings.pageSize + 1) * 26}px`;
    if (bar) this.frame.prepend(bar);
    this.frame.append(this.pager.bar);
    table.setAttribute('role', 'grid');
    table.setAttribute('aria-multiselectable', String(settings.selectionStyle === kMultiple));
    table.tabIndex = 0;
    makeResizable(window, this.id, table);
    [...table.tHead.rows[0].cells].forEach((cell, at) => this.#makeSortable(cell, at + 1));
  }

  #makeSortable(cell, column) {
    cell.tabIndex = 0;
    cell.title = '单击排序';
    const sort = () => this.go({ page: 1, ...nextSort(this.view, column) });
    cell.addEventListener('click', sort);
    cell.addEventListener('keydown', (event) => {
      if (event.key !== 'Enter' && event.key !== ' ') return;
      event.preventDefault();
      event.stopPropagation();
      sort();
    });
  }

  #listen() {
    const indexOf = (event) => {
      const row = event.target.closest('tr');
      return row && row.parentElement === this.body && row.hasAttribute('dataID')
        ? this.rows.indexOf(row)
        : -1;
    };
    this.body.addEventListener('mousedown', (event) => event.shiftKey && event.preventDefault());
    this.body.addEventListener('click', (event) => {
      const at = indexOf(event);
      if (at < 0) return;
      this.table.focus({ preventScroll: true });
      this.#select((selection) =>
        selection.click(at, { ctrl: event.ctrlKey || event.metaKey, shift: event.shiftKey }),
      );
    });
    this.body.addEventListener('dblclick', (event) => {
      const at = indexOf(event);
      if (at < 0) return;
      this.#select((selection) => selection.click(at));
      this.run(this.settings.onRowDoubleClick);
    });
    this.table.addEventListener('keydown', (event) => this.#onKey(event));
  }

  #onKey(event) {
    if (event.key === 'PageDown') return this.go({ page: this.view.page + 1 }, event);
    if (event.key === 'PageUp') return this.go({ page: Math.max(1, this.view.page - 1) }, event);
    if (event.key === 'Enter') {
      if (this.selection.chosen.size > 0) this.run(this.settings.onRowDoubleClick);
      return event.preventDefault();
    }
    const action = keyAction(event);
    if (!action) return;
    event.preventDefault();
    this.#select(action);
    this.rows[this.selection.active]?.scrollIntoView({ block: 'nearest' });
  }

  /** Runs a script of the page's: in the page, as if it stood there. */
  run(script) {
    if (script) (0, this.window.eval)(script);
  }

  #select(action) {
    const before = this.selection.sorted().join();
    action(this.selection);
    this.#paint();
    if (this.selection.sorted().join() !== before) this.run(this.settings.onRowSelect);
  }

  #paint() {
    this.rows.forEach((row, at) => {
      const isChosen = this.selection.has(at);
      row.classList.toggle('tarlo-grid-selected', isChosen);
      row.classList.toggle('tarlo-grid-active', at === this.selection.active);
      if (this.selection.style !== kNone) row.setAttribute('aria-selected', String(isChosen));
    });
    const active = this.rows[this.selection.active];
    if (active) this.table.setAttribute('aria-activedescendant', active.id);
    else this.table.removeAttribute('aria-activedescendant');
    this.pager.show(this.total, this.view.page, this.selection.chosen.size);
  }

  // The rows that stand in the table now.
  #showRows() {
    this.rows = [...this.body.rows];
    this.selection.reset(this.rows.length);
    [...this.table.tHead.rows[0].cells].forEach((cell, at) => {
      const isSorted = this.view.sort === at + 1;
      cell.setAttribute(
        'aria-sort',
        isSorted ? (this.view.descending ? 'descending' : 'ascending') : 'none',
      );
    });
    if (this.rows.length === 0) this.#showMessage(kEmpty, false);
    this.#paint();
  }

  #showMessage(text, isError) {
    const { document } = this.window;
    const cell = element(
      document,
      'td',
      { colSpan: Math.max(1, this.table.tHead.rows[0].cells.length) },
      text,
    );
    cell.className = isError ? 'tarlo-grid-error' : 'tarlo-grid-empty';
    if (isError) {
      cell.setAttribute('role', 'alert');
      if (this.settings.key) {
        const retry = () => this.load({ reload: 1 });
        cell.append(' ', element(document, 'button', { type: 'button', onclick: retry }, '重试'));
      }
    }
    this.body.replaceChildren(element(document, 'tr', {}, cell));
    this.rows = [];
    this.selection.reset(0);
    this.#paint();
  }

  // The server has made the cells' text safe to be markup.
  #draw(answer) {
    const { document } = this.window;
    this.total = answer.total;
    this.view.page = answer.page;
    this.body.replaceChildren(
      ...answer.rows.map((row, at) => {
        const made = element(document, 'tr', { id: `${this.id}_row${at + 1}` });
        made.setAttribute('dataID', row.id);
        made.append(...row.cells.map((cell) => element(document, 'td', { innerHTML: cell })));
        return made;
      }),
    );
    this.#showRows();
  }

  /** Shows another part of the rows; `event` is one that this answers. */
  go(change, event) {
    event?.preventDefault();
    Object.assign(this.view, change);
    this.load();
  }

  search(text) {
    if (text !== this.view.search) this.go({ page: 1, search: text });
  }

  async load(extra) {
    if (!this.settings.key) return;
    this.request?.abort();
    const request = (this.request = new AbortController());
    this.#busy(true);
    try {
      const answer = await fetchRows(
        this.window,
        requestBody(this.settings.key, this.view, extra),
        request.signal,
      );
      if (answer && request === this.request) this.#draw(answer);
    } catch (error) {
      if (request === this.request) this.#showMessage(error.message, true);
    } finally {
      if (request === this.request) this.#busy(false);
    }
  }

  #busy(isBusy) {
    this.frame.classList.toggle('tarlo-grid-loading', isBusy);
    this.table.setAttribute('aria-busy', String(isBusy));
  }

  async exportCsv() {
    const { document, URL } = this.window;
    try {
      const file = await fetchCsv(this.window, requestBody(this.settings.key, this.view));
      const href = URL.createObjectURL(file);
      element(document, 'a', { href, download: '列表.csv' }).click();
      this.window.setTimeout(() => URL.revokeObjectURL(href), 60_000);
    } catch (error) {
      this.window.sAlert(error.message, false);
    }
  }
}

/** The object that a page's scripts know by the grid's id. */
function scriptObject(grid) {
  const chosen = () => grid.selection.sorted().map((at) => grid.rows[at]);
  return {
    // 0 when nothing is selected: pages compare with 0 and with ''.
    getSelectedRowDataID: () =>
      chosen()
        .map((row) => row.getAttribute('dataID'))
        .join(',') || 0,
    getSelectedRowID: () => chosen()[0]?.id ?? '',
    get selectedRowCount() {
      return grid.selection.chosen.size;
    },
    reload: () => grid.load({ reload: 1 }),
    gotoView(condition, caption) {
      putCaption(grid.window.document, grid.label, caption ?? '');
      grid.go({ page: 1, condition });
    },
    get RightActions() {
      return grid.view.right;
    },
    set RightActions(condition) {
      grid.view.right = String(condition);
    },
  };
}

export function install(window, library) {
  const attach = (id, settings) => scriptObject(new Grid(window, library, id, settings));
  define(window, { TarloGrid: { attach } });
}
