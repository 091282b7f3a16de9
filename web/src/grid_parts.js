// What stands round the rows of a grid: buttons, views, search above; paging below.

import { makePullDown } from './menu.js';

/** A caption in pieces: <b> and </b> are read, everything else is text, whatever it looks like. */
export function captionParts(caption) {
  const parts = [];
  let bold = false;
  for (const piece of String(caption).split(/(<\/?b>)/i)) {
    if (/^<\/?b>$/i.test(piece)) bold = piece[1] !== '/';
    else if (piece) parts.push({ text: piece, bold });
  }
  return parts;
}

export function pageCount(total, pageSize) {
  return Math.max(1, Math.ceil(total / pageSize));
}

/** Makes elements: element(document, 'button', {className:..}, child, child). */
export function element(document, name, properties = {}, ...children) {
  const made = document.createElement(name);
  Object.assign(made, properties);
  made.append(...children);
  return made;
}

export function putCaption(document, into, caption) {
  into.replaceChildren(
    ...captionParts(caption).map(({ text, bold }) =>
      bold ? element(document, 'b', {}, text) : text,
    ),
  );
}

function button(document, className, caption, onclick) {
  const made = element(document, 'button', { type: 'button', className, onclick });
  putCaption(document, made, caption);
  return made;
}

function viewMenu(window, menu, run) {
  const { document } = window;
  const opener = button(document, 'tarlo-grid-views', menu.caption);
  opener.setAttribute('aria-haspopup', 'true');
  opener.setAttribute('aria-expanded', 'false');
  const list = element(document, 'div', { className: 'tarlo-menu-list', hidden: true });
  list.setAttribute('role', 'menu');
  for (const view of menu.views) {
    if (!view.caption && !view.script) {
      list.append(element(document, 'div', { className: 'tarlo-menu-separator' }));
      continue;
    }
    const item = button(document, 'tarlo-grid-view', view.caption, () => run(view.script));
    item.setAttribute('role', 'menuitem');
    item.tabIndex = -1;
    list.append(item);
  }
  makePullDown(window, opener, list);
  return element(document, 'span', { className: 'tarlo-grid-menu' }, opener, list);
}

const kSearchDelay = 350;

function searchBox(window, search) {
  const box = element(window.document, 'input', { type: 'search', className: 'tarlo-grid-search' });
  box.placeholder = '搜索';
  box.setAttribute('aria-label', '搜索');
  let timer;
  const later = (delay) => {
    window.clearTimeout(timer);
    timer = window.setTimeout(() => search(box.value.trim()), delay);
  };
  box.addEventListener('input', (event) => event.isComposing || later(kSearchDelay));
  box.addEventListener('compositionend', () => later(kSearchDelay));
  box.addEventListener('keydown', (event) => {
    event.stopPropagation();
    if (event.key !== 'Enter' || event.isComposing) return;
    event.preventDefault(); // the grid may stand in a form
    later(0);
  });
  return box;
}

/**
 * The bar above the rows; `label` in it names the view. Undefined when there is nothing to show.
 */
export function makeToolbar(window, settings, actions) {
  const { document } = window;
  const label = element(document, 'span', { className: 'tarlo-grid-label' });
  const left = settings.buttons.map((each) => {
    const made = button(document, each.cssClass, each.caption, () => actions.run(each.script));
    made.title = each.tip;
    return made;
  });
  const menus = settings.menus.map((menu) => viewMenu(window, menu, actions.run));
  const search = settings.search ? [searchBox(window, actions.search)] : [];
  const bar = element(document, 'div', { className: 'tarlo-grid-bar' }, ...left, ...menus, label);
  bar.append(element(document, 'span', { className: 'tarlo-grid-space' }), ...search);
  const isEmpty = left.length + menus.length + search.length === 0;
  return { bar: isEmpty ? undefined : bar, label };
}

/** The bar below the rows. `show` brings it up to date. */
export function makePager(window, settings, actions) {
  const { document } = window;
  const summary = element(document, 'span', { className: 'tarlo-grid-summary' });
  summary.setAttribute('role', 'status');
  const place = element(document, 'input', {
    type: 'text',
    inputMode: 'numeric',
    className: 'tarlo-grid-page',
  });
  place.setAttribute('aria-label', '页码');
  const of = element(document, 'span');
  const step = (caption, to) =>
    button(document, 'tarlo-grid-step', caption, () => actions.goto(to()));
  let [page, last] = [1, 1];
  const back = [step('首页', () => 1), step('上一页', () => page - 1)];
  const on = [step('下一页', () => page + 1), step('末页', () => last)];
  place.addEventListener('keydown', (event) => {
    event.stopPropagation();
    if (event.key !== 'Enter') return;
    event.preventDefault();
    const wanted = Number.parseInt(place.value, 10);
    if (wanted > 0) actions.goto(Math.min(wanted, last));
  });
  const save = button(document, 'tarlo-grid-step', '导出', actions.exportCsv);
  save.title = '把当前视图导出为 CSV 文件';
  const steps = element(
    document,
    'span',
    { className: 'tarlo-grid-steps' },
    ...back,
    place,
    of,
    ...on,
  );
  const space = element(document, 'span', { className: 'tarlo-grid-space' });
  const bar = element(
    document,
    'div',
    { className: 'tarlo-grid-pager' },
    summary,
    space,
    steps,
    save,
  );
  function show(total, current, selected) {
    [page, last] = [current, settings.multiPage ? pageCount(total, settings.pageSize) : 1];
    summary.textContent = selected > 0 ? `共 ${total} 条，已选 ${selected} 条` : `共 ${total} 条`;
    place.value = page;
    of.textContent = ` / ${last} 页`;
    back.forEach((each) => (each.disabled = page <= 1));
    on.forEach((each) => (each.disabled = page >= last));
    steps.hidden = last <= 1;
    save.disabled = total === 0;
  }
  return { bar, show };
}
