// The wizard's steps as a designer goes through them.

import { afterRows, openManager, signInToManager } from './product.mjs';

export const button = (frame, caption) =>
  frame.locator('.tarlo-grid-bar .btnX', { hasText: caption });

/** The wizard's page and the frames of its steps. */
export function wizardOf(page) {
  const dialog = page.frameLocator('dialog[open] iframe');
  const step = (number) => dialog.frameLocator(`iframe[name=s${number}iframe]`);
  return { dialog, step, next: dialog.locator('#btnNext'), back: dialog.locator('#btnBack') };
}

const ready = (wizard) => wizard.dialog.locator('body:not(.tarlo-busy)').waitFor();

/** The number of the current position, from 0. */
export async function position(wizard) {
  return Number(await wizard.dialog.locator('[aria-current=step]').getAttribute('data-number')) - 1;
}

export async function goNext(wizard) {
  await ready(wizard);
  await wizard.next.click();
  await ready(wizard);
  return position(wizard);
}

export async function goBack(wizard) {
  await ready(wizard);
  await wizard.back.click();
  return position(wizard);
}

async function opened(page) {
  const wizard = wizardOf(page);
  await wizard.dialog
    .locator('#MainTableID select')
    .nth(1)
    .locator('option')
    .first()
    .waitFor({ state: 'attached' });
  await page.waitForTimeout(100); // the cascade takes its preset with the list
  return wizard;
}

export async function openNew(test) {
  const frame = await signInToManager(test);
  await button(frame, '新增').click();
  return { frame, wizard: await opened(test.page) };
}

/** Opens the scheme of that name from the list. */
export async function openExisting(test, name, signIn = true) {
  const frame = signIn ? await signInToManager(test) : await openManager(test.page);
  await afterRows(test.page, frame, () => frame.locator('input[type=search]').fill(name));
  await frame.getByText(name, { exact: true }).click();
  await button(frame, '修改').click();
  return { frame, wizard: await opened(test.page) };
}

export async function chooseTable(wizard, directory, table) {
  const boxes = wizard.dialog.locator('#MainTableID select');
  await boxes.nth(0).selectOption({ label: directory });
  await boxes.nth(1).locator('option', { hasText: table }).first().waitFor({ state: 'attached' });
  await boxes.nth(1).selectOption({ label: table });
}

/** `steps`: labels of the optional steps; `relations`: how many of the offered ones to take. */
export async function chooseRelations(wizard, steps, relations = 0) {
  const page = wizard.step(1);
  await page.locator('#virtul label').first().waitFor();
  for (let row = 1; row <= relations; row++)
    await page.locator(`#SearchTable_row${row}`).dblclick();
  for (const label of steps) await page.locator('#virtul').getByText(label).click();
}

export async function addComputed(wizard, name, expression) {
  const page = wizard.step(2);
  await page.locator('#expresion').fill(expression);
  await page.locator('#expresionname').fill(name);
  await page.locator('input[value=保存]').click();
}

export async function addStatistic(wizard, field, name) {
  const page = wizard.step(4);
  await page.locator('#fieldselect select').selectOption({ label: field });
  await page.locator('#statsname select').selectOption({ label: name });
  await page.locator('input[value=保存]').click();
}

export async function fillCondition(wizard, row, field, comparison, value, logic) {
  const condition = wizard.step(3).locator('[id=relation]').nth(row);
  await condition.locator('[id=relfieldcombox] select').selectOption({ label: field });
  await condition.locator('[id=relcomparecombox] select').selectOption({ label: comparison });
  await condition.locator('[id=relexpresion]').fill(value);
  if (logic) await condition.locator('[id=rellogiccombox] select').selectOption({ label: logic });
}

/** Names the scheme, presses 完成, and waits for the list behind the wizard. */
export async function save(test, wizard, name) {
  await wizard.step(6).locator('#Query_Name').fill(name);
  await ready(wizard);
  await wizard.next.click();
  await test.page.waitForFunction(() => document.querySelectorAll('dialog').length === 0);
  const frame = test.page.frame({ name: 'Zembra' });
  await frame.locator('#SearchTable_row1').waitFor();
  return frame;
}

function newestRow(server, table, name, key, value) {
  const sql = `select top 1 * from ${table} where ${name}='${value.replaceAll("'", "''")}' order by ${key} desc`;
  const { columns, rows } = JSON.parse(server.run(['sql', '--json', sql]));
  return rows.length
    ? Object.fromEntries(columns.map((column, at) => [column, rows[0][at]]))
    : undefined;
}

/** The row of the scheme of that name, newest first. */
export const storedScheme = (server, name) =>
  newestRow(server, 'Zembra_Query_Main', 'Query_Name', 'Query_ID', name);

/** The same of a control scheme. */
export const storedControl = (server, name) =>
  newestRow(server, 'Zembra_Query_Field', 'QF_Name', 'QF_ID', name);

/** What `tarloquery compile` says when it compiles the scheme anew. */
export function comparison(server, id) {
  return server.run(['compile', String(id), '--compare']);
}
