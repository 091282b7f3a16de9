// node pictures.mjs OUT: the guide's pictures, taken from the running product. TARLO_BINARY names
// the binary.

import { join } from 'node:path';
import { withBrowser } from './test/browser/suites.mjs';
import { startServer } from './test/flows/server.mjs';
import {
  addComputed,
  addStatistic,
  button,
  chooseRelations,
  chooseTable,
  fillCondition,
  goNext,
  openNew,
  wizardOf,
} from './test/flows/wizard_steps.mjs';
import { choose, fillFilter, openWizard } from './test/flows/control_steps.mjs';
import { openManager, signInToManager } from './test/flows/product.mjs';

const kSize = { width: 1280, height: 800 };
const out = process.argv[2] ?? '.';

async function takeAll(test) {
  const { page } = test;
  const take = async (name) => {
    await page.waitForTimeout(300); // fonts and focus
    await page.locator('dialog[open]').screenshot({ path: join(out, `guide_${name}.png`) });
  };
  const { wizard } = await openNew(test);
  await chooseTable(wizard, '产品', '产品');
  await take('table');
  await goNext(wizard);
  await chooseRelations(wizard, ['构造虚拟字段', '构造过滤条件', '使用统计函数'], 2);
  await take('relations');
  await goNext(wizard);
  await addComputed(wizard, '毛利', '[产品.标准售价|2105]-[产品.标准成本|2106]');
  await wizard.step(2).locator('#expresion').fill('[产品.标准售价|2105]*1.13');
  await wizard.step(2).locator('#expresionname').fill('含税价');
  await take('computed');
  await wizard.step(2).locator('input[value=保存]').click();
  await goNext(wizard);
  await fillCondition(wizard, 0, '毛利', '大于', '0', 'And');
  await fillCondition(wizard, 1, '产品名称', 'Not Like', '样品');
  await take('filter');
  await goNext(wizard);
  await addStatistic(wizard, '毛利', '平均值');
  await addStatistic(wizard, '类别', '本身');
  await wizard.step(4).locator('#groupby select').selectOption({ label: '类别' });
  await take('statistics');
  await goNext(wizard);
  await take('preview');
  await goNext(wizard);
  await wizard.step(6).locator('#Query_Name').fill('各类别平均毛利');
  await take('save');
}

async function takeRefusal(test) {
  const { wizard } = await openNew(test);
  await chooseTable(wizard, '产品', '产品');
  await goNext(wizard);
  await chooseRelations(wizard, ['构造虚拟字段']);
  await goNext(wizard);
  await addComputed(wizard, '毛利', '[产品.标准售价|2105]-成本()');
  await goNext(wizard);
  await wizard.step(5).locator('summary').click();
  await test.page.locator('dialog[open]').screenshot({ path: join(out, 'guide_refused.png') });
}

async function takeControls(test) {
  const { page } = test;
  const { wizard } = await openWizard(test, '下拉框', '客户档案一览');
  await wizard.next.click();
  await choose(wizard, 'realfield2', '客户.编号');
  await choose(wizard, 'viewfield2', '客户.名称');
  await fillFilter(wizard, 0, '客户.城市', '等于', '苏州', 'Or');
  await fillFilter(wizard, 1, '客户.城市', '等于', '上海');
  await page.waitForTimeout(300);
  await page.locator('dialog[open]').screenshot({ path: join(out, 'guide_drop_down.png') });
  await page.goto(`${test.server.origin}/demo/form`);
  await page.locator('#apiRow option').first().waitFor({ state: 'attached' });
  await page.locator('#SearchTable_row2').click();
  await page.screenshot({ path: join(out, 'demo_form.png') });
}

async function takeTemplates(test) {
  const { page } = test;
  const take = async (name) => {
    await page.waitForTimeout(300);
    await page.locator('dialog[open]').screenshot({ path: join(out, `guide_${name}.png`) });
  };
  const manager = await signInToManager(test, '系统控件方案');
  await button(manager, '新增').click();
  const wizard = wizardOf(page);
  const schemes = wizard.dialog.frameLocator('iframe[name=frametest1]');
  await schemes.getByText('项目任务清单', { exact: true }).click();
  await schemes.locator('#field1').getByText('级联控件向导').click();
  await wizard.next.click();
  await choose(wizard, 'fieldid2', '项目任务.任务名称');
  await choose(wizard, 'Relfieldid2', '项目');
  await wizard.dialog.getByText('增加层次').click();
  await wizard.dialog.locator('#div2').getByText('项目任务.任务名称').waitFor();
  await choose(wizard, 'fieldid2', '项目.项目名称');
  await take('levels');
  await wizard.next.click();
  await wizard.dialog.locator('#prewrel').waitFor();
  await goNext(wizard);
  await wizard.dialog.locator('[name=QF_Name]').fill('项目与任务模板');
  await wizard.next.click();
  await page.waitForFunction(() => document.querySelectorAll('dialog').length === 0);
  await openManager(page, '用户控件方案');
  await button(page.frame({ name: 'Zembra' }), '模板绑定').click();
  const binding = wizardOf(page);
  await binding.dialog
    .frameLocator('iframe[name=frametest]')
    .getByText('库存可用量', { exact: true })
    .click();
  await binding.next.click();
  await binding.dialog
    .frameLocator('iframe[name=frametest1]')
    .locator('#SearchTable_grid')
    .waitFor();
  await take('bind');
}

await withBrowser('playwright-core', ['chromium'], async ({ chromium }, executablePath) => {
  const server = await startServer();
  const browser = await chromium.launch({ executablePath, args: ['--no-sandbox'] });
  try {
    for (const take of [takeAll, takeRefusal, takeControls, takeTemplates]) {
      const context = await browser.newContext({ viewport: kSize });
      await take({ page: await context.newPage(), context, server });
      await context.close();
    }
    return { passed: 4, failed: 0 };
  } finally {
    await browser.close();
    await server.stop();
  }
});
