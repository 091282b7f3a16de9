// Templates: a drop-down and a cascade are made of system schemes, previewed, saved and shown; one
// is bound into a user's scheme.

import assert from 'node:assert/strict';
import { choose, fillFilter } from './control_steps.mjs';
import { openManager, signIn, signInToManager } from './product.mjs';
import { button, goBack, goNext, position, storedControl, wizardOf } from './wizard_steps.mjs';

const kManager = '系统控件方案';
const kNoDialog = () => document.querySelectorAll('dialog').length === 0;

async function goTo(wizard, at) {
  await wizard.dialog.locator(`[aria-current=step][data-number="${at + 1}"]`).waitFor();
}

/** Opens the wizard of templates on the system scheme of that name. */
async function openTemplateWizard(test, scheme) {
  const frame = await signInToManager(test, kManager);
  await button(frame, '新增').click();
  const wizard = wizardOf(test.page);
  const list = wizard.dialog.frameLocator('iframe[name=frametest1]');
  await list.getByText(scheme, { exact: true }).click();
  return { frame, wizard, list };
}

async function nameAndSave(test, wizard, name) {
  await wizard.dialog.locator('[name=QF_Name]').fill(name);
  await wizard.next.click();
  await test.page.waitForFunction(kNoDialog);
  const frame = test.page.frame({ name: 'Zembra' });
  await frame.getByText(name, { exact: true }).waitFor();
  return frame;
}

/** A drop-down of products, up to its preview. */
async function previewDropDown(test, fill = async () => {}) {
  const { wizard } = await openTemplateWizard(test, '产品毛利');
  await wizard.next.click();
  await goTo(wizard, 2);
  await choose(wizard, 'realfield2', '产品.编号');
  await choose(wizard, 'viewfield2', '产品.产品名称');
  await fill(wizard);
  await wizard.next.click();
  await goTo(wizard, 3);
  return wizard;
}

/** A cascade of projects and their tasks, up to its preview. */
async function previewCascade(test) {
  const { wizard, list } = await openTemplateWizard(test, '项目任务清单');
  await list.locator('#field1').getByText('级联控件向导').click();
  await wizard.next.click();
  await goTo(wizard, 1);
  await choose(wizard, 'fieldid2', '项目任务.任务名称');
  await choose(wizard, 'Relfieldid2', '项目');
  await wizard.dialog.getByText('增加层次').click();
  await wizard.dialog.locator('#div2').getByText('项目任务.任务名称').waitFor();
  await choose(wizard, 'fieldid2', '项目.项目名称');
  await wizard.next.click();
  await goTo(wizard, 3);
  return wizard;
}

const kProducts =
  'select [UserTb_Product].[Zembra_ID],[UserTb_Product].[Name] from [UserTb_Product] where Zembra_Flag <> 0';

/** Binds the template to the scheme of stocks, up to the last button. */
async function bind(test, template, name) {
  await openManager(test.page, '用户控件方案');
  await button(test.page.frame({ name: 'Zembra' }), '模板绑定').click();
  const wizard = wizardOf(test.page);
  const schemes = wizard.dialog.frameLocator('iframe[name=frametest]');
  await schemes.locator('tbody tr[dataid]').first().waitFor();
  await wizard.next.click();
  assert.equal(test.seen.messages.at(-1), 'alert: 请选择查询方案！');
  await schemes.getByText('库存可用量', { exact: true }).click();
  await wizard.next.click();
  const templates = wizard.dialog.frameLocator('iframe[name=frametest1]');
  await templates.getByText(template, { exact: true }).click();
  assert.equal(await goNext(wizard), 2);
  await wizard.dialog.locator('[name=QF_Name]').fill(name);
  await wizard.next.click();
}

export const tests = {
  async 'a template with a filter; its quotes keep it from being bound'(test) {
    const template = '产品下拉模板';
    const wizard = await previewDropDown(test, async (wizard) => {
      await fillFilter(wizard, 0, '产品.产品名称', 'Not Like', '样品', 'And');
      await fillFilter(wizard, 1, '产品.标准售价', '大于', '0');
    });
    await wizard.dialog.locator('#preview option').nth(1).waitFor({ state: 'attached' });
    // The filter's rows are still there.
    assert.equal(await goBack(wizard), 2);
    assert.equal(await wizard.dialog.locator('[id=expresion]').count(), 2);
    await wizard.next.click();
    await goTo(wizard, 3);
    assert.equal(await goNext(wizard), 4);
    await nameAndSave(test, wizard, template);
    const filter =
      " and [UserTb_Product].[Name] Not Like '%样品%' and [UserTb_Product].[ListPrice] > '0' ";
    assert.equal(storedControl(test.server, template).QF_Relation, kProducts + filter);
    await bind(test, template, '不能绑定');
    await test.page.waitForTimeout(300);
    assert.equal(test.seen.messages.at(-1), 'alert: 得到的查询语句有错误，无法保存！');
  },

  async 'a template is bound into a scheme by the related field'(test) {
    const template = '全部产品模板';
    const wizard = await previewDropDown(test);
    assert.equal(await goNext(wizard), 4);
    await nameAndSave(test, wizard, template);
    await bind(test, template, '库存产品');
    await test.page.waitForFunction(kNoDialog);
    const frame = test.page.frame({ name: 'Zembra' });
    await frame.getByText('库存产品', { exact: true }).dblclick();
    assert.equal(storedControl(test.server, '库存产品').QF_Relation, kProducts + '|||4202');
    const shown = test.page.frameLocator('dialog[open] iframe');
    await shown.locator('#prew option').nth(1).waitFor({ state: 'attached' });
  },

  async 'a cascade is built level by level, and works in its preview'(test) {
    const name = '项目与任务模板';
    const wizard = await previewCascade(test);
    const boxes = wizard.dialog.locator('#prewrel select');
    await boxes.nth(0).selectOption({ index: 1 });
    await boxes.nth(1).locator('option').first().waitFor({ state: 'attached' });
    assert.equal(await goNext(wizard), 4);
    const frame = await nameAndSave(test, wizard, name);
    assert.equal(
      storedControl(test.server, name).QF_Relation,
      'select [UserTb_Project].[Zembra_ID],[UserTb_Project].[Name] from [UserTb_Project] where Zembra_Flag<>0|||' +
        '[UserTb_Task],[UserTb_Task].[ProjectID],[UserTb_Task].[Zembra_ID],[UserTb_Task].[Name],Zembra_Flag <> 0',
    );
    await frame.getByText(name, { exact: true }).dblclick();
    const shown = test.page.frameLocator('dialog[open] iframe').locator('#prew select');
    await shown.nth(0).selectOption({ index: 1 });
    await shown.nth(1).locator('option').first().waitFor({ state: 'attached' });
    assert.deepEqual(test.seen.messages, ['alert: 方案成功保存！']);
  },

  async 'back from the preview, a cascade gets a further level'(test) {
    const wizard = await previewCascade(test);
    assert.equal(await wizard.dialog.locator('#prewrel select').count(), 2);
    assert.equal(await goBack(wizard), 1);
    await wizard.dialog.getByText('增加层次').click();
    await wizard.dialog.locator('#div2').getByText('项目.项目名称').waitFor();
    await wizard.next.click();
    await goTo(wizard, 3);
    assert.equal(await wizard.dialog.locator('#prewrel select').count(), 3);
  },

  async 'back from the preview, another field takes the place of the last'(test) {
    const wizard = await previewCascade(test);
    assert.equal(await goBack(wizard), 1);
    await choose(wizard, 'fieldid2', '项目.编号');
    await wizard.next.click();
    await goTo(wizard, 3);
    const first = wizard.dialog.locator('#prewrel select').first().locator('option').first();
    assert.match(await first.innerText(), /^\d+$/);
  },

  async 'one level is no cascade, and a table without relations says so'(test) {
    const { wizard, list } = await openTemplateWizard(test, '项目任务清单');
    await list.locator('#field1').getByText('级联控件向导').click();
    await wizard.next.click();
    await goTo(wizard, 1);
    await wizard.next.click();
    await test.page.waitForTimeout(300);
    assert.deepEqual(test.seen.messages, ['alert: 只选择了一层，不能做级联！']);
    assert.equal(await position(wizard), 1);
    await wizard.back.click();
    await list.getByText('员工考勤汇总', { exact: true }).click();
    await wizard.next.click();
    await goTo(wizard, 1);
    await wizard.dialog.getByText('主表没有联出关联，不能创建级联控件').waitFor();
  },

  async 'a scheme without related templates shows an empty list'(test) {
    await signIn(test);
    await openManager(test.page, '用户控件方案');
    await button(test.page.frame({ name: 'Zembra' }), '模板绑定').click();
    const wizard = wizardOf(test.page);
    await wizard.dialog
      .frameLocator('iframe[name=frametest]')
      .getByText('部门费用', { exact: true })
      .click();
    await wizard.next.click();
    const templates = wizard.dialog.frameLocator('iframe[name=frametest1]');
    await templates.getByText('没有符合条件的记录').waitFor();
    await wizard.next.click();
    assert.deepEqual(test.seen.messages, ['alert: 请选择模板控件！']);
  },
};
