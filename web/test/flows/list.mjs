// The list of schemes: rows, order, search, pages, views, selection and export.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import {
  afterRows,
  column,
  kMenuEntry,
  managerFrame,
  rows,
  selectedIds,
  signIn,
  signInToManager,
  summary,
} from './product.mjs';

const kCaptions = ['查询方案', '目录', '类别', '方案说明', '创建时间'];

async function search(page, frame, text) {
  await frame.locator('.tarlo-grid-search').fill(text);
  await afterRows(page, frame, () => frame.locator('.tarlo-grid-search').press('Enter'));
}

async function chooseView(page, frame, menu, view) {
  await frame.getByText(menu).click();
  await afterRows(page, frame, () => frame.locator('.tarlo-grid-view', { hasText: view }).click());
}

export const tests = {
  async "the menu opens the list, newest first, with the tables' own values"({ page, server }) {
    const frame = await signInToManager({ page, server });
    assert.deepEqual(
      (await frame.locator('th').allInnerTexts()).map((text) => text.trim()),
      kCaptions,
    );
    assert.equal(await rows(frame).count(), 15);
    assert.equal(await summary(frame), '共 32 条');
    const kept = JSON.parse(
      server.run(['sql', '--json', 'SELECT * FROM Zembra_Query_Main']),
    ).rows.flat();
    assert.ok((await column(frame, 1)).every((name) => kept.includes(name)));
    const times = await column(frame, 5);
    assert.deepEqual(times, [...times].sort().reverse());
    assert.match(await page.title(), /查询方案/);
    assert.equal(await page.locator('#dtMenu [aria-current=page]').innerText(), kMenuEntry);
  },

  async 'a caption sorts up, then down, then not at all'({ page, server }) {
    const frame = await signInToManager({ page, server });
    const first = await column(frame, 5);
    const caption = frame.locator('th', { hasText: '创建时间' });
    await afterRows(page, frame, () => caption.click());
    const up = await column(frame, 5);
    assert.deepEqual(up, [...up].sort());
    assert.equal(await caption.getAttribute('aria-sort'), 'ascending');
    await afterRows(page, frame, () => caption.click());
    assert.deepEqual(await column(frame, 5), first);
    assert.equal(await caption.getAttribute('aria-sort'), 'descending');
    await afterRows(page, frame, () => caption.click());
    assert.equal(await caption.getAttribute('aria-sort'), 'none');
  },

  async 'search takes every character as itself'({ page, server }) {
    const frame = await signInToManager({ page, server });
    await search(page, frame, '客户');
    const found = await rows(frame).allInnerTexts();
    assert.ok(found.length > 0 && found.every((row) => row.includes('客户')), found.join('|'));
    for (const text of ["'", '"', "' or '1'='1", '%', '_', '[a-z]', '<b>', '😀']) {
      await search(page, frame, text);
      const found = await rows(frame).allInnerTexts();
      assert.ok(
        found.every((row) => row.includes(text)),
        `${text} found ${found.length} rows`,
      );
      assert.equal(await frame.locator('[role=alert]').count(), 0, text);
    }
    await search(page, frame, '');
    assert.equal(await summary(frame), '共 32 条');
  },

  async 'pages forward, to the end and by number, without losing or repeating a row'({
    page,
    server,
  }) {
    const frame = await signInToManager({ page, server });
    const names = await column(frame, 1);
    await afterRows(page, frame, () => frame.getByText('下一页').click());
    names.push(...(await column(frame, 1)));
    await afterRows(page, frame, () => frame.getByText('末页').click());
    names.push(...(await column(frame, 1)));
    assert.equal(new Set(names).size, 32);
    assert.equal(await frame.getByText('下一页').isDisabled(), true);
    await frame.locator('.tarlo-grid-page').fill('2');
    await afterRows(page, frame, () => frame.locator('.tarlo-grid-page').press('Enter'));
    assert.deepEqual(await column(frame, 1), names.slice(15, 30));
  },

  async 'views show one kind, or one directory'({ page, server }) {
    const frame = await signInToManager({ page, server });
    const counts = [];
    for (const [view, kind] of [
      ['系统类型', '系统'],
      ['用户类型', '用户'],
    ]) {
      await chooseView(page, frame, '视图:功能分类', view);
      assert.deepEqual([...new Set(await column(frame, 3))], [kind]);
      counts.push(Number(/\d+/.exec(await summary(frame))[0]));
    }
    assert.equal(counts[0] + counts[1], 32);
    await chooseView(page, frame, '视图:目录分类', '[销售]');
    assert.deepEqual([...new Set(await column(frame, 2))], ['销售']);
    await chooseView(page, frame, '视图:目录分类', '全部查询方案');
    assert.equal(await summary(frame), '共 32 条');
  },

  async 'mouse and keys select rows'({ page, server }) {
    const frame = await signInToManager({ page, server });
    const row = (at) => frame.locator(`#SearchTable_row${at}`);
    const ids = await rows(frame).evaluateAll((all) =>
      all.map((each) => each.getAttribute('dataID')),
    );
    const chosen = async (...expected) =>
      assert.equal(
        String(await selectedIds(frame)),
        expected.map((at) => ids[at - 1]).join(',') || '0',
      );
    await row(2).click();
    await chosen(2);
    await row(4).click({ modifiers: ['Control'] });
    await chosen(2, 4);
    await row(6).click({ modifiers: ['Shift'] });
    await chosen(4, 5, 6);
    await page.keyboard.press('ArrowDown');
    await chosen(7);
    await page.keyboard.press('Space');
    await chosen();
    await page.keyboard.press('Control+a');
    assert.equal(await summary(frame), '共 32 条，已选 15 条');
  },

  async 'keys alone lead from the menu to a selected row'({ page, server }) {
    await signIn({ page, server });
    await page.focus('#dtFilter');
    await page.keyboard.type(kMenuEntry);
    await page.keyboard.press('ArrowDown');
    for (let steps = 0; steps < 6; ++steps) {
      const label = await page.evaluate(
        () => document.activeElement.firstElementChild?.textContent ?? '',
      );
      if (label.trim() === kMenuEntry) break;
      await page.keyboard.press('ArrowDown');
    }
    await page.keyboard.press('Enter');
    const frame = await managerFrame(page);
    const inGrid = () =>
      frame.evaluate(() => document.activeElement.getAttribute('role') === 'grid');
    for (let steps = 0; steps < 40 && !(await inGrid()); ++steps) await page.keyboard.press('Tab');
    assert.equal(await inGrid(), true, 'Tab reaches the rows');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('ArrowDown');
    assert.notEqual(String(await selectedIds(frame)), '0');
    assert.equal(await frame.evaluate(() => SearchTable.getSelectedRowID()), 'SearchTable_row2');
  },

  async 'the export holds the rows of the view'({ page, server }) {
    const frame = await signInToManager({ page, server });
    await chooseView(page, frame, '视图:目录分类', '[财务]');
    const shown = await column(frame, 1);
    const [download] = await Promise.all([
      page.waitForEvent('download'),
      frame.getByText('导出').click(),
    ]);
    const lines = readFileSync(await download.path(), 'utf8')
      .replace(/^\ufeff/, '')
      .trim()
      .split('\r\n');
    assert.deepEqual(lines[0].split(','), kCaptions);
    assert.deepEqual(
      lines.slice(1).map((line) => line.split(',')[0]),
      shown,
    );
  },
};
