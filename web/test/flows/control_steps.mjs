// The steps of the controls' wizard as a designer goes through them.

import { signInToManager } from './product.mjs';
import { button, wizardOf } from './wizard_steps.mjs';

export const kEntry = '用户控件方案';

/** Opens the wizard of controls on the scheme of that name. */
export async function openWizard(test, kind, scheme) {
  const frame = await signInToManager(test, kEntry);
  await button(frame, '新增').click();
  const wizard = wizardOf(test.page);
  const list = wizard.dialog.frameLocator('iframe[name=frametest]');
  if (kind !== '下拉框') {
    await list.locator('tbody tr[dataid]').first().waitFor();
    const loaded = test.page.waitForResponse((response) =>
      response.url().includes('UsrField1_1&field1=3'),
    );
    await wizard.dialog.locator('#field1').getByText('列表控件向导').click();
    await loaded;
  }
  await list.locator('input[type=search]').fill(scheme);
  await list.getByText(scheme, { exact: true }).click();
  return { frame, wizard };
}

export const choose = (wizard, id, label) =>
  wizard.dialog.locator(`#${id} select`).selectOption({ label });

export async function fillFilter(wizard, row, field, comparison, value, logic) {
  const condition = wizard.dialog.locator('#relation2 > *').nth(row);
  await condition.locator('[id=fieldcombox] select').selectOption({ label: field });
  await condition.locator('[id=comparecombox] select').selectOption({ label: comparison });
  await condition.locator('[id=expresion]').fill(value);
  if (logic) await condition.locator('[id=logiccombox] select').selectOption({ label: logic });
}
