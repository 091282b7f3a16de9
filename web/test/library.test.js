import assert from 'node:assert/strict';
import { test } from 'node:test';
import { orderSheets } from '../build.mjs';
import { needsAlias } from '../src/aliases.js';
import { captionOf, dialogSize, saysSaved } from '../src/dialogs.js';
import { bareMessage } from '../src/hidden.js';
import { define } from '../src/library.js';
import { draggedTo, folderRows } from '../src/pane.js';
import { readStyle, saveStyle, styleKey } from '../src/styles.js';

test('globals of the library can be replaced by a page', () => {
  const page = {};
  define(page, { sAlert: 1 });
  page.sAlert = 2;
  assert.equal(page.sAlert, 2);
  assert.equal(Object.getOwnPropertyDescriptor(page, 'sAlert').configurable, true);
});

test('a dialog has the size asked for, inside the window', () => {
  const room = { width: 1000, height: 700 };
  const rows = [
    [
      [620, 440],
      [620, 440],
    ],
    [
      ['620px', '440'],
      [620, 440],
    ],
    [
      [undefined, 'x'],
      [620, 440],
    ],
    [
      [5000, 5000],
      [976, 640],
    ],
    [
      [1, -3],
      [120, 120],
    ],
  ];
  for (const [[width, height], [wide, high]] of rows) {
    assert.deepEqual(dialogSize(width, height, room), { width: wide, height: high });
  }
});

test('the caption ends at the first no-break space', () => {
  assert.equal(captionOf('Zembra查询方案' + '\u00a0'.repeat(300) + ' 查询方案'), 'Zembra查询方案');
  assert.equal(captionOf('预览 方案'), '预览 方案');
  assert.equal(captionOf(''), '');
});

test('only a 1 says that something was saved', () => {
  for (const result of [1, '1']) assert.equal(saysSaved(result), true);
  for (const result of ['-1', -1, undefined, null, '', true, '11'])
    assert.equal(saysSaved(result), false);
});

test('an alias is needed for a frame with another name and for an id met before', () => {
  const seen = new Set();
  assert.equal(needsAlias({ id: 'x', localName: 'tr' }, seen), false);
  assert.equal(needsAlias({ id: 'x', localName: 'td' }, seen), true);
  assert.equal(needsAlias({ id: 'f', name: 'f1', localName: 'iframe' }, seen), true);
  assert.equal(needsAlias({ id: 'g', name: 'g', localName: 'iframe' }, seen), false);
  assert.equal(needsAlias({ id: '', localName: 'tr' }, seen), false);
  assert.equal(needsAlias({ id: { localName: 'input' }, localName: 'form' }, seen), false);
});

test('only a script that begins with its own sAlert is run again', () => {
  const scripts = (...texts) => texts.map((textContent) => ({ textContent }));
  assert.equal(bareMessage(scripts("top.sAlert('a')", " \nsAlert ('b')")), " \nsAlert ('b')");
  assert.equal(
    bareMessage(scripts("top.sAlert('a')", "x();sAlert('b')", "sAlertX('c')")),
    undefined,
  );
  assert.equal(bareMessage([]), undefined);
});

test('styles are kept by module; storage that fails or holds other text gives none', () => {
  const kept = new Map();
  const storage = {
    getItem: (key) => kept.get(key) ?? null,
    setItem: (key, value) => kept.set(key, value),
  };
  saveStyle(storage, 12, 3);
  saveStyle(storage, 13, 0);
  assert.equal(readStyle(storage, 12), 3);
  assert.equal(readStyle(storage, 13), 0);
  assert.equal(readStyle(storage, 14), null);
  for (const wrong of [5, -1, 'sea', undefined]) saveStyle(storage, 12, wrong);
  assert.equal(readStyle(storage, 12), 3);
  kept.set(styleKey(12), 'sea');
  assert.equal(readStyle(storage, 12), null);
  const closed = {
    getItem: () => {
      throw new Error('closed');
    },
    setItem: () => {
      throw new Error('closed');
    },
  };
  saveStyle(closed, 12, 1);
  assert.equal(readStyle(closed, 12), null);
  assert.equal(readStyle(undefined, 12), null);
});

test('a folder opens its rows, not itself nor the cells that share the id', () => {
  const row = (name) => ({ localName: 'tr', name });
  const list = [row('folder'), row('one'), { localName: 'td' }, row('two'), { localName: 'td' }];
  assert.deepEqual(
    folderRows(list).map((element) => element.name),
    ['one', 'two'],
  );
  assert.deepEqual(folderRows({ nodeType: 1, localName: 'tr' }), []);
  assert.deepEqual(folderRows(undefined), []);
});

test('a dragged box stays within reach', () => {
  const room = { width: 800, height: 600 };
  assert.deepEqual(draggedTo({ left: 10, top: 20 }, { x: 5, y: -6 }, room), { left: 15, top: 14 });
  assert.deepEqual(draggedTo({ left: 10, top: 20 }, { x: -50, y: -50 }, room), { left: 0, top: 0 });
  assert.deepEqual(draggedTo({ left: 10, top: 20 }, { x: 5000, y: 5000 }, room), {
    left: 760,
    top: 560,
  });
});

test('sheets are joined in the order of overriding', () => {
  assert.deepEqual(
    orderSheets(['grid.css', 'b.css', 'note.txt', 'base.css', 'a.css', 'palette.css']),
    ['palette.css', 'base.css', 'grid.css', 'a.css', 'b.css'],
  );
});
