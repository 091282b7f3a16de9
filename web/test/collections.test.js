import assert from 'node:assert/strict';
import { test } from 'node:test';
import { allCollection, callableList, oneOrList } from '../src/collections.js';

// Stands for document.all: `named` maps exact names to one element or a list, as browsers answer
// them.
class NativeAll {
  constructor(elements, named) {
    elements.forEach((element, index) => (this[index] = element));
    this.size = elements.length;
    this.named = named;
  }
  get length() {
    return this.size;
  }
  namedItem(name) {
    return this.named[name] ?? null;
  }
}

const a = { nodeType: 1, id: 'a' };
const b = { nodeType: 1, id: 'b' };

function documentWith(matches) {
  const asked = [];
  return { asked, querySelectorAll: (selector) => (asked.push(selector), matches[selector] ?? []) };
}

test('a list can be called, indexed and asked for its length', () => {
  const list = callableList([a, b]);
  assert.equal(list(1), b);
  assert.equal(list('0'), a);
  assert.equal(list[1], b);
  assert.equal(list.length, 2);
  assert.equal(list(2), null);
  assert.equal(list('no such name'), null);
  assert.deepEqual([...list], [a, b]);
});

test('one match is the element, so that its length is undefined', () => {
  assert.equal(oneOrList([a]), a);
  assert.equal(oneOrList([a]).length, undefined);
  assert.equal(oneOrList([]), null);
  assert.equal(oneOrList([a, b]).length, 2);
});

test('document.all finds by exact name, then by attribute, then case-blind', () => {
  const document = documentWith({
    '[name="tag"]': [a],
    '[id="ViewFields" i],[name="ViewFields" i]': [b],
  });
  const all = allCollection(
    document,
    new NativeAll([a, b], { exact: a, twice: [a, b] }),
    () => null,
  );
  assert.equal(all.exact, a);
  assert.deepEqual(document.asked, [], 'the browser knew the answer');
  assert.equal(all('twice', 1), b);
  assert.equal(all('twice')(0), a);
  assert.equal(all('tag'), a);
  assert.equal(all('ViewFields'), b);
  assert.equal(all(1), b);
  assert.equal(all[0], a);
  assert.equal(all.length, 2);
});

test('what is missing is undefined as a property and null in a call', () => {
  const all = allCollection(documentWith({}), new NativeAll([], {}), () => null);
  assert.equal(all.missing, undefined);
  assert.equal(all('missing'), null);
  assert.equal(all('missing', 1), null);
  assert.equal('missing' in all, false);
});

test('the other document is asked last, and never itself again', () => {
  const other = { all: (name) => (name === 'btnNext' ? b : null) };
  const all = allCollection(documentWith({}), new NativeAll([], { own: a }), () => other);
  assert.equal(all.own, a);
  assert.equal(all('btnNext'), b);
  assert.equal(all('neither'), null);
  const document = documentWith({});
  const alone = allCollection(document, new NativeAll([], {}), () => document);
  assert.equal(alone('x'), null);
});

test('a name with quotes and backslashes stays one name', () => {
  const document = documentWith({});
  const all = allCollection(document, new NativeAll([], {}), () => null);
  all('a"]\\');
  assert.equal(document.asked[0], '[name="a\\"]\\\\"]');
});
