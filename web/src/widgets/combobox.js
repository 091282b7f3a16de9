// tarlo:combobox: a drop-down list. With editable="filter" the list narrows while one types.

import { optionsOf } from './options.js';
import { pixelsOf, Widget } from './widget.js';

/** Options into a list element, in one go: lists may be thousands long. */
export function fill(list, options) {
  const document = list.ownerDocument;
  const items = document.createDocumentFragment();
  for (const { label, value } of options) {
    const item = document.createElement('option');
    item.value = value;
    item.textContent = label;
    items.append(item);
  }
  list.replaceChildren(items);
}

/** The index of a value among options; -1 for none. */
export function indexOfValue(options, value) {
  const wanted = String(value ?? '').trim();
  return options.findIndex((option) => option.value === wanted);
}

export class Combobox extends Widget {
  constructor(element) {
    super(element);
    this.options = optionsOf(element);
    this.index = this.options.length ? 0 : -1;
    const isFilter = element.getAttribute('editable') === 'filter';
    this.box = isFilter ? this.makeFilter() : this.makeSelect();
    const width = pixelsOf(element.getAttribute('width'));
    if (width) this.box.style.minWidth = width + 'px'; // long labels take more
    const top = pixelsOf(element.getAttribute('margintop'));
    if (top) this.host.style.marginTop = top + 'px';
    this.box.disabled = this.isDisabled;
    this.box.setAttribute('aria-label', this.caption);
    this.preset();
  }

  makeSelect() {
    const box = this.make('select');
    fill(box, this.options);
    box.onchange = () => this.choose(box.selectedIndex);
    this.shadow.append(box);
    return box;
  }

  makeFilter() {
    const list = this.make('datalist', { id: 'list' });
    const box = this.make('input', { type: 'text', autocomplete: 'off' });
    fill(
      list,
      this.options.map(({ label }) => ({ label: '', value: label })),
    );
    box.setAttribute('list', 'list');
    box.setAttribute('role', 'combobox');
    box.onfocus = () => box.select();
    // Text that is no option's is taken back.
    box.onchange = () => {
      const at = this.options.findIndex(({ label }) => label.trim() === box.value.trim());
      if (at < 0) this.show();
      else this.choose(at);
    };
    this.shadow.append(box, list);
    return box;
  }

  preset() {
    const at = indexOfValue(this.options, this.element.getAttribute('selectvalue'));
    const id = this.element.getAttribute('selectid');
    if (at >= 0) this.index = at;
    else if (id !== null && this.options[Number(id)]) this.index = Number(id);
    this.show();
  }

  show() {
    if (this.box.localName === 'select') this.box.selectedIndex = this.index;
    else this.box.value = this.options[this.index]?.label.trim() ?? '';
  }

  /** The user's choice. Scripts that set a value tell nobody. */
  choose(index) {
    this.index = index;
    this.show();
    this.tell('select', 'change');
  }

  get value() {
    return this.options[this.index]?.value ?? '';
  }

  set value(value) {
    const at = indexOfValue(this.options, value);
    if (at < 0) return;
    this.index = at;
    this.show();
  }

  get text() {
    return this.options[this.index]?.label ?? '';
  }

  get selectvalue() {
    return this.value;
  }

  set selectvalue(value) {
    this.value = value;
  }
}
