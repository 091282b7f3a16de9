import assert from 'node:assert/strict';
import { test } from 'node:test';
import { keyAction, nextSort } from '../src/grid.js';
import {
  draggedWidths,
  kLeastWidth,
  readWidths,
  saveWidths,
  widthsKey,
} from '../src/grid_columns.js';
import { captionParts, pageCount } from '../src/grid_parts.js';
import { fetchCsv, fetchRows, requestBody } from '../src/grid_requests.js';
import { movedTo } from '../src/menu.js';
import { Selection, kMultiple, kNone, kSingle } from '../src/selection.js';

const press = (key, more = {}) =>
  keyAction({ key, ctrlKey: false, metaKey: false, shiftKey: false, ...more });

// Each step is a row to click, or [row, keys], or the name of a key with its modifiers.
function after(style, steps, count = 5) {
  const selection = new Selection(style);
  selection.reset(count);
  for (const step of steps) {
    if (typeof step === 'number') selection.click(step);
    else if (Array.isArray(step)) selection.click(...step);
    else press(step.key, step)(selection);
  }
  return selection.sorted();
}

test('clicks and keys select as on a desktop', () => {
  const [ctrl, shift] = [{ ctrl: true }, { shift: true }];
  const key = (name, more) => ({ key: name, ...more });
  const rows = [
    ['one replaces another', kMultiple, [1, 3], [3]],
    ['ctrl adds', kMultiple, [1, [3, ctrl]], [1, 3]],
    ['ctrl releases', kMultiple, [1, [1, ctrl]], []],
    ['shift takes the range', kMultiple, [1, [3, shift]], [1, 2, 3]],
    ['shift turns round its anchor', kMultiple, [2, [4, shift], [0, shift]], [0, 1, 2]],
    [
      'both keep what was there',
      kMultiple,
      [0, [2, ctrl], [4, { ctrl: true, shift: true }]],
      [0, 2, 3, 4],
    ],
    ['single has one row only', kSingle, [1, [3, ctrl], [4, shift]], [4]],
    ['none has no rows', kNone, [1, key('ArrowDown')], []],
    ['a row that is not there', kMultiple, [1, 9, -1], [1]],
    ['the first arrow takes the first row', kMultiple, [key('ArrowDown')], [0]],
    ['arrows stop at the ends', kMultiple, [4, key('ArrowDown')], [4]],
    [
      'shift and arrows',
      kMultiple,
      [1, key('ArrowDown', { shiftKey: true }), key('ArrowDown', { shiftKey: true })],
      [1, 2, 3],
    ],
    [
      'ctrl walks, blank takes',
      kMultiple,
      [0, key('ArrowDown', { ctrlKey: true }), key('ArrowDown', { ctrlKey: true }), key(' ')],
      [0, 2],
    ],
    ['all', kMultiple, [key('a', { ctrlKey: true })], [0, 1, 2, 3, 4]],
    ['all of a single selection', kSingle, [2, key('a', { ctrlKey: true })], [2]],
    ['home with shift', kMultiple, [2, key('Home', { shiftKey: true })], [0, 1, 2]],
  ];
  for (const [name, style, steps, expected] of rows)
    assert.deepEqual(after(style, steps), expected, name);
  assert.deepEqual(after(kMultiple, [key('ArrowDown'), key(' ')], 0), []);
  assert.equal(press('a'), undefined);
  assert.equal(press('x', { ctrlKey: true }), undefined);
});

test('a caption cycles through both orders back to the own one', () => {
  let view = { sort: 0, descending: false };
  const seen = [];
  for (const column of [2, 2, 2, 2, 1]) {
    view = nextSort(view, column);
    seen.push(`${view.sort}${view.descending ? 'd' : ''}`);
  }
  assert.deepEqual(seen, ['2', '2d', '0', '2', '1']);
});

test('a request says only what differs from the first page', () => {
  const start = { page: 1, sort: 0, descending: false, search: '', condition: '', right: '' };
  const rows = [
    [{}, {}, 'grid=k'],
    [{ page: 3, sort: 2, descending: true }, {}, 'grid=k&page=3&sort=2&dir=desc'],
    [{ descending: true }, {}, 'grid=k'],
    [
      { search: "a&b='中😀" },
      { reload: 1 },
      'grid=k&search=a%26b%3D%27%E4%B8%AD%F0%9F%98%80&reload=1',
    ],
    [{ condition: ' 1 = 1 ', right: ' and a = 1' }, {}, 'grid=k&view=+1+%3D+1+&right=+and+a+%3D+1'],
  ];
  for (const [view, extra, expected] of rows)
    assert.equal(requestBody('k', { ...start, ...view }, extra), expected);
});

const answering = (type, body) => ({
  fetch: async () => new Response(body, { headers: { 'Content-Type': type } }),
});

test('every failure of the server becomes a message for people', async () => {
  const offline = { fetch: async () => Promise.reject(new TypeError('x')) };
  const aborted = { fetch: async () => Promise.reject(new DOMException('x', 'AbortError')) };
  const refusing = answering(
    'application/json; charset=utf-8',
    '{"ok":false,"error":"列表已过期"}',
  );
  await assert.rejects(fetchRows(offline, ''), /网络/);
  await assert.rejects(fetchRows(answering('text/html', '<html>'), ''), /登录/);
  await assert.rejects(fetchRows(refusing, ''), /列表已过期/);
  await assert.rejects(fetchCsv(refusing, ''), /列表已过期/);
  await assert.rejects(fetchCsv(answering('text/html', ''), ''), /登录/);
  assert.equal(await fetchRows(aborted, ''), undefined);
  const answer = { ok: true, total: 1, page: 1, rows: [] };
  assert.deepEqual(
    await fetchRows(answering('application/json', JSON.stringify(answer)), ''),
    answer,
  );
});

test('a caption has bold pieces and no other markup', () => {
  const bold = (text) => ({ text, bold: true });
  const plain = (text) => ({ text, bold: false });
  assert.deepEqual(captionParts('按<b>[全部]</b>查看'), [
    plain('按'),
    bold('[全部]'),
    plain('查看'),
  ]);
  assert.deepEqual(captionParts('<img src=x onerror=y>'), [plain('<img src=x onerror=y>')]);
  assert.deepEqual(captionParts('<B>a'), [bold('a')]);
  assert.deepEqual(captionParts(''), []);
});

test('widths are kept for one set of captions, and broken ones are not taken', () => {
  const kept = new Map();
  const storage = {
    getItem: (key) => kept.get(key) ?? null,
    setItem: (key, value) => kept.set(key, value),
  };
  const key = widthsKey('SearchTable', ['a', 'b']);
  assert.notEqual(key, widthsKey('SearchTable', ['a', 'c']));
  saveWidths(storage, key, [40.4, 200]);
  assert.deepEqual(readWidths(storage, key, 2), [40, 200]);
  assert.equal(readWidths(storage, key, 3), undefined);
  for (const broken of ['', 'x', '{}', '[40,"9"]', `[40,${kLeastWidth - 1}]`, '[null,50]']) {
    kept.set(key, broken);
    assert.equal(readWidths(storage, key, 2), undefined, broken);
  }
  assert.equal(readWidths(undefined, key, 2), undefined);
  saveWidths(undefined, key, [1, 2]);
});

test('a dragged column takes from its neighbour and no more than that has', () => {
  assert.deepEqual(draggedWidths([100, 100, 100], 0, 30), [130, 70, 100]);
  assert.deepEqual(draggedWidths([100, 100], 0, 500), [200 - kLeastWidth, kLeastWidth]);
  assert.deepEqual(draggedWidths([100, 100], 0, -500), [kLeastWidth, 200 - kLeastWidth]);
  assert.deepEqual(draggedWidths([100, 100], 1, 500), [100, 600]);
});

test('pages and places in a menu', () => {
  assert.deepEqual(
    [0, 15, 16].map((total) => pageCount(total, 15)),
    [1, 1, 2],
  );
  const moves = ['ArrowDown', 'ArrowUp', 'Home', 'End', 'x'].map((key) => movedTo(key, 2, 3));
  assert.deepEqual(moves, [0, 1, 0, 2, undefined]);
  assert.equal(movedTo('ArrowUp', 0, 3), 2);
  assert.equal(movedTo('End', 0, 0), undefined);
});
