// tarlo:relcombobox: drop-downs in a cascade. The first level comes with the page, the rows of the
// others from the server, by the value chosen before them.

import { fill, indexOfValue } from './combobox.js';
import { levelsOf, optionsOfXml } from './options.js';
import { pixelsOf, Widget } from './widget.js';

const kAddress = '/TarloRelation.Zembra?action=options';
const kNoRows = '（没有可选项）';
const kFailed = '列表读取失败，请稍后再试';

export class RelCombobox extends Widget {
  constructor(element) {
    super(element);
    this.levels = levelsOf(element.getAttribute('relation') ?? '');
    this.beginning = element.getAttribute('beginvalue') ?? '';
    this.note = this.make('span', { className: 'note', role: 'status' });
    this.note.setAttribute('role', 'status');
    this.boxes = [undefined, ...this.levels].map((_, at) => this.makeBox(at));
    const row = this.make('div', { className: 'row' }, ...this.boxes, this.note);
    this.shadow.append(row);
    this.setOptions(0, optionsOfXml(element.getAttribute('src') ?? ''));
    const at = indexOfValue(this.lists[0], element.getAttribute('selectvalue'));
    if (at >= 0) this.boxes[0].selectedIndex = at;
    this.loadFrom(1);
  }

  makeBox(at) {
    const box = this.make('select', { disabled: this.isDisabled });
    const width = pixelsOf(this.element.getAttribute('width')) ?? 180;
    box.style.width = width + 'px';
    box.setAttribute('aria-label', `${this.caption} ${at + 1}`);
    box.onchange = async () => {
      this.beginning = '';
      if (at < this.levels.length) await this.loadFrom(at + 1);
      this.tell('select', 'change');
    };
    return box;
  }

  setOptions(at, options) {
    this.lists = Object.assign(this.lists ?? [], { [at]: options });
    const isLater = at > 0 && options.length === 0;
    fill(this.boxes[at], isLater ? [{ label: kNoRows, value: '' }] : options);
    this.boxes[at].disabled = this.isDisabled;
  }

  /** Takes away what belonged to an older choice, so that nobody can choose or send it meanwhile. */
  emptyFrom(first) {
    for (let at = first; at <= this.levels.length; at++) {
      this.lists[at] = [];
      fill(this.boxes[at], []);
      this.boxes[at].disabled = true;
    }
  }

  /** Loads the level and those behind it, one by the other's choice. */
  async loadFrom(first) {
    this.turn = (this.turn ?? 0) + 1; // a slow answer to an older choice must not win
    const turn = this.turn;
    this.note.textContent = '';
    this.emptyFrom(first);
    for (let at = first; at <= this.levels.length; at++) {
      const parent = this.boxes[at - 1].value;
      let options = [];
      try {
        if (parent !== '') options = await this.fetchLevel(this.levels[at - 1], parent);
      } catch {
        this.note.textContent = kFailed;
      }
      if (turn !== this.turn) return;
      this.setOptions(at, options);
      if (at === this.levels.length) this.presetLast();
    }
  }

  async fetchLevel(level, parent) {
    const values = new URLSearchParams({ ...level, parent });
    const answer = await this.document.defaultView.fetch(`${kAddress}&${values}`);
    if (!answer.ok) throw new Error(String(answer.status));
    const rows = await answer.json();
    return rows.map(([value, label]) => ({ value: String(value).trim(), label: String(label) }));
  }

  presetLast() {
    const at = indexOfValue(this.lists.at(-1), this.beginning);
    if (this.beginning !== '' && at >= 0) this.boxes.at(-1).selectedIndex = at;
    this.beginning = '';
    this.tell('load');
  }

  /** That of the last box; until its list has come, the one it begins with. */
  get value() {
    return this.beginning || this.boxes.at(-1).value;
  }

  set value(value) {
    const at = indexOfValue(this.lists.at(-1) ?? [], value);
    if (at >= 0) this.boxes.at(-1).selectedIndex = at;
    else this.beginning = String(value ?? '');
  }

  get text() {
    return this.boxes.at(-1).selectedOptions[0]?.textContent ?? '';
  }

  get selectvalue() {
    return this.boxes[0].value;
  }

  set selectvalue(value) {
    const at = indexOfValue(this.lists[0], value);
    if (at < 0) return;
    this.boxes[0].selectedIndex = at;
    this.loadFrom(1);
  }
}
