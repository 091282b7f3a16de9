// A form that asks for its controls when it is opened: drop-down, cascade, list, and the JSON
// interface.

import assert from 'node:assert/strict';
import { signIn } from './product.mjs';

export const tests = {
  async 'the demo form fills its controls and posts what was chosen'(test) {
    const { page, server } = test;
    await signIn(test);
    await page.goto(`${server.origin}/demo/form?listID=4`);
    await page.locator('#dropDown select').selectOption({ label: '无锡华泽精密制造有限公司' });
    const boxes = page.locator('#cascade select');
    await boxes.nth(0).selectOption({ index: 1 });
    await boxes.nth(1).locator('option').first().waitFor({ state: 'attached' });
    const task = await boxes.nth(1).locator('option').nth(2).getAttribute('value');
    await boxes.nth(1).selectOption({ index: 2 });
    await page.locator('#SearchTable_row2').click();
    await page.locator('#apiSearch').fill('深圳');
    // The list from before the search holds such rows too.
    await page.waitForFunction(() => {
      const options = [...document.querySelectorAll('#apiRow option')];
      return options.length > 1 && options.every((option) => option.textContent.includes('深圳'));
    });
    const row = await page.locator('#apiRow option').nth(1).getAttribute('value');
    await page.locator('#apiRow').selectOption({ index: 1 });
    await page.locator('#btnSend').click();
    await page.locator('.tarlo-demo-posted').waitFor();
    assert.deepEqual(await page.locator('.tarlo-demo-posted li').allInnerTexts(), [
      'dropDown = 2',
      `cascade = ${task}`,
      'listRow = 2',
      `apiRow = ${row}`,
    ]);
  },
};
