// Names and texts that hold markup and script: they are seen as they are, stored as they are, and
// nothing of them runs.

import assert from 'node:assert/strict';
import { choose, openWizard } from './control_steps.mjs';
import { afterRows, openManager, signIn } from './product.mjs';
import { goNext, openExisting, save, storedScheme } from './wizard_steps.mjs';

const kCustomer = 'x"><img src=x onerror="window.__pwned=1">';
const kScheme = `名'"><img src=x onerror='window.__pwned=1'>\\`;
const kDescription =
  '\r\n第一行\r\n</textarea><script>window.__pwned=1</script>\r\n"双" \'单\' & &lt;b&gt; \\';
const kMenu = `项'"></script><img src=x onerror=window.__pwned=1>`;
const kDirectory = `目录'"),window.__pwned=1,("`;
const kField = `城市"'<img src=x onerror=window.__pwned=1>`;

// What is changed, and what it was.
const kChanges = [
  ['UserTb_Customer', 'Name', 'Zembra_ID=1', kCustomer],
  ['Zembra_Query_Main', 'Query_Name', 'Query_ID=1', kScheme],
  ['Zembra_Query_Main', 'Query_Desc', 'Query_ID=1', kDescription],
  ['Zembra_Menu', 'Menu_Name', 'Menu_ID=129', kMenu],
  ['Zembra_Menu', 'Menu_Desc', 'Menu_ID=129', kMenu],
  ['Zembra_Dict_TableDir', 'TD_Name', 'Zembra_ID=1', kDirectory],
  ['Zembra_DataDict_Field', 'DDF_CName', "DDF_TableID=11 and DDF_Name='City'", kField],
];

const quoted = (text) => `N'${text.replaceAll("'", "''")}'`;

function change(server) {
  const undo = [];
  for (const [table, column, where, value] of kChanges) {
    const select = `select ${column} from ${table} where ${where}`;
    const [[before]] = JSON.parse(server.run(['sql', '--json', select])).rows;
    const set = (to) =>
      server.run(['sql', `update ${table} set ${column}=${quoted(to)} where ${where}`]);
    set(value);
    undo.push(() => set(before));
  }
  return () => undo.forEach((each) => each());
}

/** No frame of any page has run what the texts hold. One that goes while it is asked is passed over. */
async function assertQuiet({ page }) {
  for (const frame of page.frames()) {
    let ran, images;
    try {
      ran = await frame.evaluate(() => window.__pwned);
      images = await frame.locator('img[src=x]').count();
    } catch (error) {
      if (frame.isDetached()) continue;
      throw error;
    }
    assert.equal(ran, undefined, frame.url());
    assert.equal(images, 0, frame.url());
  }
}

/** A test on the changed rows, which are set back behind it. */
const onHostileRows = (action) => async (test) => {
  const undo = change(test.server);
  try {
    await signIn(test);
    await action(test);
    await assertQuiet(test);
  } finally {
    undo();
  }
};

export const tests = {
  'the desktop, its pane and its folders show the captions': onHostileRows(async (test) => {
    const entry = test.page.locator('#dtMenu [data-menu="129"] > a');
    assert.equal(await entry.textContent(), kMenu);
    await openManager(test.page);
    const pane = test.page.frame({ name: 'TarloY' });
    const link = pane.locator('span[desc]', { hasText: '项' });
    await link.waitFor();
    assert.equal((await link.textContent()).trim(), kMenu);
    assert.equal(await link.getAttribute('desc'), kMenu);
    await assertQuiet(test);
    await test.page.locator('iframe[name=Zembra]').evaluate((frame) => (frame.src = '/?cmdID=120'));
    const folder = test.page.frameLocator('iframe[name=Zembra]');
    await folder.locator('.dt-card b', { hasText: '项' }).waitFor();
  }),

  'the list shows the names, and a view by directory works': onHostileRows(async (test) => {
    const frame = await openManager(test.page);
    await afterRows(test.page, frame, () => frame.locator('input[type=search]').fill('名'));
    assert.ok((await frame.locator('tbody td:first-child').allTextContents()).includes(kScheme));
    await frame.locator('.tarlo-grid-views').nth(1).click();
    await afterRows(test.page, frame, () =>
      frame.locator('.tarlo-grid-view', { hasText: kDirectory }).click(),
    );
    const directories = await frame.locator('tbody td:nth-child(2)').allTextContents();
    assert.deepEqual([...new Set(directories)], [kDirectory]);
  }),

  'a scheme comes back whole from its form': onHostileRows(async (test) => {
    const { wizard } = await openExisting(test, kScheme, false);
    let at = await goNext(wizard);
    while (at < 6) {
      const step = await goNext(wizard);
      assert.ok(step > at, `from ${at} to ${step}`);
      at = step;
    }
    const form = wizard.step(6);
    assert.equal(await form.locator('#Query_Name').inputValue(), kScheme);
    assert.equal(
      await form.locator('#Query_Desc').inputValue(),
      kDescription.replaceAll('\r\n', '\n'),
    );
    await assertQuiet(test);
    await save(test, wizard, kScheme);
    const stored = storedScheme(test.server, kScheme);
    assert.equal(stored.Query_ID, 1);
    assert.equal(stored.Query_Desc, kDescription);
  }),

  'a drop-down offers the names of customers and fields': onHostileRows(async (test) => {
    const { wizard } = await openWizard(test, '下拉框', kScheme);
    await wizard.next.click();
    await choose(wizard, 'realfield2', '客户.编号');
    assert.ok(
      (await wizard.dialog.locator('#viewfield2 option').allTextContents()).includes(
        `客户.${kField}`,
      ),
    );
    await choose(wizard, 'viewfield2', '客户.名称');
    await wizard.next.click();
    const preview = wizard.dialog.locator('#preview select');
    await preview.locator('option').nth(1).waitFor({ state: 'attached' });
    assert.ok((await preview.locator('option').allTextContents()).includes(kCustomer));
  }),
};
