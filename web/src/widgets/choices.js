// tarlo:radio, tarlo:groupradio and tarlo:groupcheckbox.

import { groupOptions } from './options.js';
import { pixelsOf, Widget } from './widget.js';

export class Radio extends Widget {
  constructor(element) {
    super(element);
    this.input = this.make('input', { type: 'radio', disabled: this.isDisabled });
    this.input.checked = element.hasAttribute('checked');
    this.input.onchange = () => {
      this.checked = true;
      this.tell('click', 'change');
    };
    const text = element.getAttribute('text') ?? element.getAttribute('label') ?? '';
    this.shadow.append(this.make('label', {}, this.input, text));
  }

  get checked() {
    return this.input.checked;
  }

  /** Checking one takes the check from those of its name. */
  set checked(checked) {
    this.input.checked = Boolean(checked);
    if (!checked) return;
    const name = this.element.getAttribute('name');
    for (const peer of this.document.getElementsByTagName(this.element.localName)) {
      if (peer !== this.element && peer.getAttribute('name') === name) peer.checked = false;
    }
  }

  get value() {
    return this.element.getAttribute('value') ?? '';
  }

  set value(value) {
    this.element.setAttribute('value', value);
  }

  get text() {
    return this.shadow.querySelector('label').textContent;
  }

  get posted() {
    return this.checked ? [this.value] : [];
  }
}

class Group extends Widget {
  constructor(element, type) {
    super(element);
    this.options = groupOptions(element);
    const columns = pixelsOf(element.getAttribute('col')) ?? this.options.length;
    const role = type === 'radio' ? 'radiogroup' : 'group';
    const grid = this.make('div', { className: 'grid', role });
    grid.setAttribute('role', role);
    grid.setAttribute('aria-label', this.caption);
    grid.style.gridTemplateColumns = `repeat(${columns},max-content)`;
    this.inputs = this.options.map(({ label }) => {
      const input = this.make('input', { type, name: 'group', disabled: this.isDisabled });
      input.onchange = () => this.tell('click', 'change');
      grid.append(this.make('label', {}, input, label));
      return input;
    });
    this.shadow.append(grid);
    this.value = element.getAttribute('defaultvalue') ?? '';
  }

  /** The options that are checked. */
  get chosen() {
    return this.options.filter((_, at) => this.inputs[at].checked);
  }

  get value() {
    return this.chosen.map(({ value }) => value).join(',');
  }

  set value(value) {
    const wanted = String(value)
      .split(',')
      .map((each) => each.trim());
    this.inputs.forEach((input, at) => {
      input.checked = wanted.includes(this.options[at].value);
    });
  }

  get text() {
    return this.chosen.map(({ label }) => label).join(',');
  }
}

export class GroupRadio extends Group {
  constructor(element) {
    super(element, 'radio');
  }
}

export class GroupCheckbox extends Group {
  constructor(element) {
    super(element, 'checkbox');
  }
}
