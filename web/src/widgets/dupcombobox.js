// tarlo:dupcombobox: two lists, what there is and what was chosen, in the order of choosing.

import { fill } from './combobox.js';
import { optionsOf } from './options.js';
import { pixelsOf, Widget } from './widget.js';

const kRows = 8;

export class DupCombobox extends Widget {
  constructor(element) {
    super(element);
    this.options = optionsOf(element);
    this.chosen = [];
    this.left = this.makeList('可选项', () => this.add());
    this.right = this.makeList('已选项', () => this.remove());
    const button = (label, title, act) =>
      this.make('button', { type: 'button', title, textContent: label, onclick: act });
    const buttons = this.make(
      'div',
      {},
      button('＞', '选择', () => this.add()),
      button('＜', '取消选择', () => this.remove()),
      button('↑', '上移', () => this.shift(-1)),
      button('↓', '下移', () => this.shift(1)),
    );
    this.shadow.append(this.make('div', { className: 'lists' }, this.left, buttons, this.right));
    this.show();
  }

  makeList(label, act) {
    const list = this.make('select', { multiple: true, size: kRows, disabled: this.isDisabled });
    list.setAttribute('aria-label', `${this.caption} ${label}`);
    const width = pixelsOf(this.element.getAttribute('width'));
    if (width) list.style.width = width + 'px';
    list.ondblclick = act;
    list.onkeydown = (event) => event.key === 'Enter' && (event.preventDefault(), act());
    return list;
  }

  show(selected = []) {
    fill(
      this.left,
      this.options.filter((option) => !this.chosen.includes(option)),
    );
    fill(this.right, this.chosen);
    for (const item of this.right.options) item.selected = selected.includes(item.value);
  }

  picked(list, options) {
    const values = [...list.selectedOptions].map((item) => item.value);
    return options.filter((option) => values.includes(option.value));
  }

  changeTo(chosen, selected) {
    this.chosen = chosen;
    this.show(selected.map(({ value }) => value));
    this.tell('select', 'change');
  }

  add() {
    const picked = this.picked(this.left, this.options);
    if (picked.length) this.changeTo([...this.chosen, ...picked], picked);
  }

  remove() {
    const picked = this.picked(this.right, this.chosen);
    if (picked.length)
      this.changeTo(
        this.chosen.filter((each) => !picked.includes(each)),
        [],
      );
  }

  shift(by) {
    const picked = this.picked(this.right, this.chosen);
    const order = [...this.chosen];
    for (const each of by < 0 ? picked : [...picked].reverse()) {
      const at = order.indexOf(each);
      const to = at + by;
      if (to < 0 || to >= order.length || picked.includes(order[to])) continue;
      [order[at], order[to]] = [order[to], order[at]];
    }
    if (picked.length) this.changeTo(order, picked);
  }

  get value() {
    return this.chosen.map(({ value }) => value).join(',');
  }

  set value(value) {
    const wanted = String(value).split(',');
    this.chosen = wanted.flatMap((each) => this.options.filter((option) => option.value === each));
    this.show();
  }

  get text() {
    return this.chosen.map(({ label }) => label).join(',');
  }
}
