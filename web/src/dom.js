// The document as the pages know it: callable collections, document.all, and the members browsers
// have dropped.

import { allCollection, callableList } from './collections.js';

/** Attributes that pages read and set as properties. */
export const kAttributeProperties = ['dataID', 'waki', 'desc', 'neo', 'checkfor'];

function installChildren(window) {
  const native = Object.getOwnPropertyDescriptor(window.Element.prototype, 'children').get;
  const callable = new WeakMap();
  Object.defineProperty(window.Element.prototype, 'children', {
    configurable: true,
    enumerable: true,
    get() {
      const children = native.call(this);
      if (!callable.has(children)) callable.set(children, callableList(children));
      return callable.get(children);
    },
  });
}

function installAll(window, library) {
  const native = window.document.all;
  const all = allCollection(window.document, native, () => library.fallbackDocument());
  Object.defineProperty(window.document, 'all', { configurable: true, get: () => all });
}

function installAttributeProperties(window) {
  for (const name of kAttributeProperties) {
    Object.defineProperty(window.HTMLElement.prototype, name, {
      configurable: true,
      get() {
        return this.hasAttribute(name) ? this.getAttribute(name) : undefined;
      },
      set(value) {
        this.setAttribute(name, value);
      },
    });
  }
}

/**
 * removeNode(true) takes the node with its content, removeNode() leaves the content in its place.
 */
export function removeNode(deep) {
  if (!this.parentNode) return this;
  if (!deep) while (this.firstChild) this.parentNode.insertBefore(this.firstChild, this);
  this.parentNode.removeChild(this);
  return this;
}

function attachEvent(name, handler) {
  this.addEventListener(name.replace(/^on/, ''), handler);
  return true;
}

/** The part of a text range that pages use: its text, whole or selected. */
function createTextRange() {
  const field = this;
  return {
    get text() {
      return field.value;
    },
    set text(value) {
      field.value = value;
    },
    select: () => field.select(),
  };
}

function selectedText(document) {
  const field = document.activeElement;
  const inField = field && selectionIn(field);
  return inField === undefined ? String(document.getSelection()) : inField;
}

function selectionIn(field) {
  if (typeof field.selectionStart !== 'number') return undefined;
  return field.value.slice(field.selectionStart, field.selectionEnd);
}

/**
 * document.selection.createRange(): reading gives the selected text, setting replaces it in the
 * field with focus.
 */
function createSelection(document) {
  return {
    createRange: () => ({
      get text() {
        return selectedText(document);
      },
      set text(value) {
        const field = document.activeElement;
        if (field && typeof field.selectionStart === 'number') {
          field.setRangeText(value, field.selectionStart, field.selectionEnd, 'end');
        }
      },
    }),
  };
}

function hiddenMember(target, name, value) {
  Object.defineProperty(target, name, { value, configurable: true, writable: true });
}

export function install(window, library) {
  installChildren(window);
  installAll(window, library);
  installAttributeProperties(window);
  hiddenMember(window.Node.prototype, 'removeNode', removeNode);
  hiddenMember(window.EventTarget.prototype, 'attachEvent', attachEvent);
  hiddenMember(window.HTMLInputElement.prototype, 'createTextRange', createTextRange);
  hiddenMember(window.HTMLTextAreaElement.prototype, 'createTextRange', createTextRange);
  hiddenMember(window.document, 'selection', createSelection(window.document));
  // Answers of hidden frames define functions in the page this way, so the text runs in the global
  // scope.
  hiddenMember(window, 'execScript', (text) => {
    window.eval(String(text));
    return null;
  });
}
