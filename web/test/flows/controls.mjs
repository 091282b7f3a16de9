// A designer binds schemes to controls: a drop-down and a list are made, previewed, saved, shown
// and deleted.

import assert from 'node:assert/strict';
import { choose, fillFilter, kEntry, openWizard } from './control_steps.mjs';
import { column, rows, signInToManager } from './product.mjs';
import { button, goBack, goNext, position, storedControl } from './wizard_steps.mjs';

const kNoDialog = () => document.querySelectorAll('dialog').length === 0;

async function goTo(wizard, at) {
  await wizard.dialog.locator(`[aria-current=step][data-number="${at + 1}"]`).waitFor();
}

async function save(test, wizard, name) {
  await wizard.dialog.locator('[name=QF_Name]').fill(name);
  await wizard.next.click();
  await test.page.waitForFunction(kNoDialog);
  const frame = test.page.frame({ name: 'Zembra' });
  await frame.getByText(name, { exact: true }).waitFor();
  return frame;
}

/** The dialog that shows the control of that name. */
async function show(test, frame, name) {
  await frame.getByText(name, { exact: true }).dblclick();
  return test.page.frameLocator('dialog[open] iframe');
}

async function remove(test, frame, name) {
  await test.page.keyboard.press('Escape');
  await test.page.waitForFunction(kNoDialog);
  await frame.getByText(name, { exact: true }).click();
  await button(frame, '删除').click();
  await frame.getByText(name, { exact: true }).waitFor({ state: 'detached' });
}

export const tests = {
  async 'a drop-down with two conditions, from the first step to its deletion'(test) {
    const name = `甲'下拉&<b>`;
    const { wizard } = await openWizard(test, '下拉框', '客户档案一览');
    await wizard.next.click();
    await choose(wizard, 'realfield2', '客户.编号');
    await choose(wizard, 'viewfield2', '客户.名称');
    await fillFilter(wizard, 0, '客户.城市', '等于', '苏州', 'Or');
    await fillFilter(wizard, 1, '客户.城市', 'Like', '上海');
    await wizard.next.click();
    await goTo(wizard, 3);
    const preview = wizard.dialog.locator('#preview select');
    await preview.locator('option').nth(1).waitFor({ state: 'attached' });
    await preview.selectOption({ index: 1 });
    assert.match(await wizard.dialog.locator('#pretext').inputValue(), /^\d+$/);
    // Back skips the step that belongs to lists, and the filter is still there.
    assert.equal(await goBack(wizard), 1);
    assert.equal(await wizard.dialog.locator('[id=expresion]').count(), 2);
    await wizard.next.click();
    await goTo(wizard, 3);
    assert.equal(await goNext(wizard), 4);
    const frame = await save(test, wizard, name);
    const stored = storedControl(test.server, name);
    assert.equal(
      stored.QF_Relation,
      'select [UserTb_Customer].[Zembra_ID],[UserTb_Customer].[Name] from [UserTb_Customer] where ' +
        "[UserTb_Customer].Zembra_Flag<> 0 and ([UserTb_Customer].[City] = '苏州' or " +
        "[UserTb_Customer].[City] Like '%上海%' )|||-1",
    );
    const dialog = await show(test, frame, name);
    await dialog.locator('#prew option').nth(1).waitFor({ state: 'attached' });
    await remove(test, frame, name);
    assert.equal(storedControl(test.server, name).Zembra_Flag, 0);
    assert.deepEqual(test.seen.messages, [
      'confirm: 您真的要删除选定的控件关系吗？',
      'alert: 此控件关系已经从系统中删除！',
    ]);
  },

  async 'a list of a scheme with statistics shows its titles; its key is a constant'(test) {
    const name = '乙列表';
    const { wizard } = await openWizard(test, '列表框', '各区域客户数与信用额度');
    await wizard.next.click();
    const columns = wizard.dialog.locator('#viewfield2 select');
    await columns.first().locator('option').first().waitFor({ state: 'attached' });
    await wizard.next.click();
    await test.page.waitForTimeout(300);
    assert.deepEqual(test.seen.messages, ['alert: 请选择显示字段！']);
    assert.equal(await position(wizard), 1);
    await columns.first().locator('option').nth(0).dblclick();
    await columns.first().locator('option').nth(0).dblclick();
    await wizard.next.click();
    await goTo(wizard, 2);
    const titles = wizard.dialog.locator('[name=TitleField]');
    assert.equal(await titles.count(), 2);
    await titles.nth(0).fill('区域');
    await titles.nth(1).fill('数目');
    await wizard.next.click();
    await goTo(wizard, 3);
    const preview = wizard.dialog.frameLocator('iframe[name=frametest1]');
    assert.deepEqual(
      (await preview.locator('#SearchTable_grid th').allInnerTexts()).map((text) => text.trim()),
      ['区域', '数目'],
    );
    assert.equal(await goNext(wizard), 4);
    const frame = await save(test, wizard, name);
    const { QF_Relation, QF_FieldType } = storedControl(test.server, name);
    assert.match(QF_Relation, /^select 1 as tempidcolumn_V1,.* group by .*\|\|\|区域\| 数目$/);
    assert.equal(QF_FieldType, 3);
    const dialog = await show(test, frame, name);
    await dialog.locator('#SearchTable_grid th').first().waitFor();
    await remove(test, frame, name);
  },

  async 'a refused filter says so, and the wizard goes on from there'(test) {
    const { wizard } = await openWizard(test, '下拉框', '客户档案一览');
    await wizard.next.click();
    await choose(wizard, 'realfield2', '客户.编号');
    await fillFilter(wizard, 0, '客户.城市', '等于', "it's");
    await wizard.next.click();
    await test.page.waitForTimeout(300);
    assert.match(
      test.seen.messages[0],
      /^alert: 得到的查询语句有错误，无法预览！\n请检查方案主表关联字段是否正确选择！$/,
    );
    assert.equal(await position(wizard), 1);
    await wizard.dialog.locator('[id=expresion]').fill('苏州');
    await wizard.next.click();
    await goTo(wizard, 3);
    assert.equal(await goNext(wizard), 4);
    await wizard.next.click();
    assert.equal(test.seen.messages[1], 'alert: 请输入控件关系方案名称！');
  },

  async 'each kind that is stored is shown; a cascade loads its further boxes'(test) {
    const frame = await signInToManager(test, kEntry);
    assert.ok((await rows(frame).count()) >= 5);
    const dialog = await show(test, frame, '项目与任务');
    const boxes = dialog.locator('#prew select');
    await boxes.nth(0).selectOption({ index: 1 });
    await boxes.nth(1).locator('option').first().waitFor({ state: 'attached' });
    await test.page.keyboard.press('Escape');
    await test.page.waitForFunction(kNoDialog);
    const list = await show(test, frame, '客户列表');
    await list.locator('#SearchTable_grid th').first().waitFor();
    assert.deepEqual(await list.locator('#SearchTable_grid th').allInnerTexts(), [
      '名称',
      '城市',
      '区域',
    ]);
    await test.page.keyboard.press('Escape');
    await test.page.waitForFunction(kNoDialog);
    await frame.getByText('视图：功能分类').click();
    await frame.getByText('列表框控件类别').click();
    await frame.waitForFunction(() => !document.querySelector('.tarlo-grid-loading'));
    assert.deepEqual([...new Set(await column(frame, 2))], ['列表框控件']);
  },
};
