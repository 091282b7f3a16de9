// What all widgets share: the tag stays where it is with whatever the parser put into it, and a
// child <tarlo-ui> with a shadow root shows the control.

import { kStyle } from './style.js';

/** Digits of a width such as 150, "150px" or "width:150"; undefined for none. */
export function pixelsOf(width) {
  const digits = /\d+/.exec(width ?? '');
  return digits ? Number(digits[0]) : undefined;
}

/** The words in front of a control: of its own cell, else of the cell before. */
function captionOf(element) {
  const before = element.previousSibling?.textContent?.trim();
  const cell = element.closest('td');
  const caption = before || cell?.previousElementSibling?.textContent?.trim();
  return (caption || element.id || element.getAttribute('name') || '').replace(/[:：\s]+$/, '');
}

export class Widget {
  constructor(element) {
    this.element = element;
    const { ownerDocument: document } = element;
    this.document = document;
    // A copy made through innerHTML carries the host without what was in it.
    element.querySelector(':scope > tarlo-ui')?.remove();
    this.host = document.createElement('tarlo-ui');
    this.shadow = this.host.attachShadow({ mode: 'open', delegatesFocus: true });
    this.shadow.innerHTML = `<style>${kStyle}</style>`;
    // A click on a label comes twice; the tag hears of a choice when it is made.
    this.shadow.addEventListener('click', (event) => event.stopPropagation());
    this.guardHandlers();
    element.prepend(this.host);
  }

  get caption() {
    return captionOf(this.element);
  }

  get isDisabled() {
    const disabled = this.element.getAttribute('disable');
    return disabled !== null && disabled !== 'false';
  }

  /** Events of what the parser put into the tag bubble: they are none of the tag's. */
  guardHandlers() {
    for (const name of ['onchange', 'onselect', 'onclick']) {
      const handler = this.element[name];
      if (!handler) continue;
      this.element[name] = (event) => {
        if (event.target === this.element) return handler.call(this.element, event);
      };
    }
  }

  make(tag, members = {}, ...children) {
    const made = Object.assign(this.document.createElement(tag), members);
    made.append(...children);
    return made;
  }

  /** Tells the page of a choice of the user's; `chosen` is what combo boxes call select. */
  tell(...names) {
    const { Event } = this.document.defaultView;
    for (const name of names) this.element.dispatchEvent(new Event(name));
  }

  /** What a form posts for the tag. */
  get posted() {
    return [this.value];
  }
}
