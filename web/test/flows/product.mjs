// The steps that many flows share: the desktop, the manager in it, and what its list shows.

export const kMenuEntry = '查询方案管理';

/** Signs in and waits for the desktop. The flows of one run share the first one's session. */
export async function signIn({ page, server }) {
  if (server.cookies) await page.context().addCookies(server.cookies);
  await page.goto(server.cookies ? server.origin : server.signInLink());
  server.cookies ??= await page.context().cookies();
  await page.frameLocator('iframe[name=Zembra]').locator('h1').waitFor();
}

/** The manager's frame once its rows stand. */
export async function managerFrame(page) {
  const view = page.frameLocator('iframe[name=Zembra]');
  await view.locator('#SearchTable_row1').waitFor();
  return page.frame({ name: 'Zembra' });
}

export async function openManager(page, entry = kMenuEntry) {
  await page.locator('#dtMenu').getByText(entry, { exact: true }).click();
  return managerFrame(page);
}

export async function signInToManager(test, entry = kMenuEntry) {
  await signIn(test);
  return openManager(test.page, entry);
}

/** The rows with a record; a message in their place is none. */
export const rows = (frame) => frame.locator('#SearchTable_grid tbody tr[dataid]');

/** The texts of one column of the page of rows, from 1. */
export function column(frame, at) {
  return frame.locator(`#SearchTable_grid tbody tr td:nth-child(${at})`).allInnerTexts();
}

export function summary(frame) {
  return frame.locator('.tarlo-grid-summary').innerText();
}

/** Does the action and waits until the grid has drawn the answer to the request it makes. */
export async function afterRows(page, frame, action) {
  const answered = page.waitForResponse((response) => response.url().includes('action=rows'));
  await action();
  await answered;
  await frame.waitForFunction(() => !document.querySelector('.tarlo-grid-loading'));
}

export const selectedIds = (frame) => frame.evaluate(() => SearchTable.getSelectedRowDataID());
