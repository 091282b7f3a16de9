// What the manager does with a selected scheme, and the colours it wears.

import assert from 'node:assert/strict';
import { managerFrame, signInToManager, summary } from './product.mjs';

const button = (frame, caption) => frame.locator('.tarlo-grid-bar .btnX', { hasText: caption });
const kNoDialog = () => document.querySelectorAll('dialog').length === 0;

async function pickScheme(page, frame, caption) {
  await frame.getByText('Current page color scheme').click();
  await Promise.all([
    page.waitForEvent('framenavigated', (each) => each.name() === 'Zembra'),
    frame.getByText(caption).click(),
  ]);
  return managerFrame(page);
}

const scheme = (page) =>
  page.evaluate(() => [document.documentElement.dataset.scheme, startHead.className]);

export const tests = {
  async 'change and delete ask for a row first; refusing to delete keeps it'({
    page,
    server,
    seen,
  }) {
    const frame = await signInToManager({ page, server });
    await button(frame, '修改').click();
    await button(frame, '删除').click();
    assert.deepEqual(seen.messages, [
      'alert: 对不起，您没有选择要查看的项目',
      'alert: 对不起，您没有选择要删除的项目',
    ]);
    seen.answer = false;
    const requests = [];
    page.on('request', (request) => requests.push(request.url()));
    await frame.locator('#SearchTable_row1').click();
    await button(frame, '删除').click();
    assert.match(seen.messages[2], /^confirm: 您真的要删除选定的查询方案吗/);
    assert.deepEqual(requests, []);
    assert.equal(await summary(frame), '共 32 条，已选 1 条');
    await frame.locator('#SearchTable_row2').click({ modifiers: ['Control'] });
    await button(frame, '修改').click();
    assert.equal(seen.messages[3], 'alert: 对不起，一次只能选取一个项目修改');
  },

  async 'a double click opens a dialog; Escape and the cross close it and give the focus back'({
    page,
    server,
  }) {
    const frame = await signInToManager({ page, server });
    for (const close of [
      () => page.keyboard.press('Escape'),
      () => page.locator('.tarlo-dialog-bar button').click(),
    ]) {
      await frame.locator('#SearchTable_row3').dblclick();
      const dialog = page.locator('dialog[open] iframe');
      await dialog.waitFor();
      const inside = await (await dialog.elementHandle()).contentFrame();
      await inside.waitForURL(/action=showSearchDlg&id=30$/);
      await inside.waitForLoadState();
      await close();
      await page.waitForFunction(kNoDialog);
      assert.equal(await page.evaluate(() => document.activeElement.name), 'Zembra');
      assert.equal(await frame.evaluate(() => SearchTable.getSelectedRowDataID()), '30');
    }
    await button(frame, '预览').focus();
    await page.keyboard.press('Enter');
    await page.locator('dialog[open] iframe').waitFor();
    await page.locator('.tarlo-dialog-bar button').click();
    await page.waitForFunction(kNoDialog);
    assert.match(await frame.evaluate(() => document.activeElement.textContent), /^预览/);
  },

  async 'a scheme chosen for the page is kept for its module only'({ page, server }) {
    let frame = await signInToManager({ page, server });
    for (const [caption, word] of [
      ['Ocean & Sky', 'sea'],
      ['Flower of Romantic love', 'orange'],
      ['Golden sun', 'sun'],
      ['Olive & Lemon', 'olive'],
    ]) {
      frame = await pickScheme(page, frame, caption);
      await page.waitForFunction((name) => startHead.className === name, 'startHead' + word);
      assert.equal((await scheme(page))[0], word);
    }
    await page.reload();
    await managerFrame(page);
    await page.waitForFunction(() => startHead.className === 'startHeadolive');
    await page.locator('a.dt-brand').click();
    await page.waitForFunction(() => startHead.className === 'startHead');
    assert.notEqual((await scheme(page))[0], 'olive');
  },

  async 'the switch in the head changes the desktop and the page, and lasts'({ page, server }) {
    await signInToManager({ page, server });
    for (const [caption, word] of [
      ['金阳', 'sun'],
      ['海天蓝', 'sea'],
    ]) {
      await page.locator('.dt-schemes label', { hasText: caption }).click();
      await page.waitForFunction(
        (name) => Zembra.document.documentElement?.dataset.scheme === name,
        word,
      );
      await page.waitForFunction(() => Zembra.document.readyState === 'complete');
      await page.reload();
      await managerFrame(page);
      assert.equal((await scheme(page))[0], word);
    }
  },
};
