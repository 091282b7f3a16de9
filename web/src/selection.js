// Which rows of a page are selected: pure, by row index.

export const kNone = 0;
export const kSingle = 1;
export const kMultiple = 2;

export class Selection {
  constructor(style) {
    this.style = style;
    this.reset(0);
  }

  /** Another page with that many rows: nothing is selected. */
  reset(count) {
    this.count = count;
    this.chosen = new Set();
    this.anchor = 0; // where a range begins
    this.active = -1; // where the keyboard stands
  }

  has(index) {
    return this.chosen.has(index);
  }

  /** The selected indexes, ascending. */
  sorted() {
    return [...this.chosen].sort((a, b) => a - b);
  }

  click(index, { ctrl = false, shift = false } = {}) {
    if (index < 0 || index >= this.count) return;
    this.active = index;
    if (this.style === kNone) return;
    if (this.style === kMultiple && shift) return this.#range(index, ctrl);
    this.anchor = index;
    if (this.style === kMultiple && ctrl) return this.#flip(index);
    this.chosen = new Set([index]);
  }

  /** Moves the keyboard's place by `by` rows; with ctrl alone nothing is selected. */
  move(by, { ctrl = false, shift = false } = {}) {
    if (this.count === 0) return;
    const from = this.active < 0 && by > 0 ? -1 : Math.max(this.active, 0);
    const to = Math.min(Math.max(from + by, 0), this.count - 1);
    if (ctrl && !shift && this.style === kMultiple) this.active = to;
    else this.click(to, { shift });
  }

  /** Selects or releases the row where the keyboard stands. */
  toggle() {
    if (this.active >= 0) this.click(this.active, { ctrl: true });
  }

  all() {
    if (this.style !== kMultiple) return;
    this.chosen = new Set(Array.from({ length: this.count }, (_, index) => index));
  }

  #range(index, keep) {
    const [low, high] = [Math.min(this.anchor, index), Math.max(this.anchor, index)];
    if (!keep) this.chosen = new Set();
    for (let i = low; i <= high; ++i) this.chosen.add(i);
  }

  #flip(index) {
    if (!this.chosen.delete(index)) this.chosen.add(index);
  }
}
