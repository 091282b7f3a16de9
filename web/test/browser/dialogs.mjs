// Dialogs and what their pages say to `top`, with page text as the pages write it.

import assert from 'node:assert/strict';
import { dialogHead, kHead } from './harness.mjs';

const kGrid =
  'var reloads = 0; var SearchTable = { name: "grid", reload: function(){ reloads++; } };';

export const pages = {
  '/shell': `${kHead}</head><body><div id=startHeadtop></div>
    <iframe name=TarloY src="/pane"></iframe><iframe name=Zembra src="/manager" width=800 height=300></iframe></body></html>`,
  '/pane': `${kHead}</head><body><span onclick="top.TarloY.showWebDialog('detail?from=pane',680,510);">task</span></body></html>`,
  '/manager': `${kHead}<script>${kGrid}
      function addRecord(){ var i; i=window.showWebDialog('/detail?id=1',620,440); if(i==1) SearchTable.reload(); answer = i; }
      function wizard(){ window.showWebDialog('/wizard',620,440); }</script></head>
    <body><button onclick="addRecord()">add</button><button onclick="wizard()">wizard</button></body></html>`,
  '/detail': `${dialogHead('方案')}<button onclick="closeWebDialog(1)">save</button>
    <button onclick="window.close()">cancel</button><button onclick="top.window.close()">topclose</button>
    <button onclick="window.showWebDialog('/detail?inner',300,200)">more</button>
    <script>${kGrid}</script></body></html>`,
  '/wizard': `${dialogHead('向导')}<form id=TarloDialog name=TarloDialog><input type=button id=btnNext value=next></form>
    <script>var position = 0; var added = '';
      function switchStep(){ position++; if (position > 2) { window.returnValue = 1; window.close(); } }
      function moveStep(n){ position += n; }</script>
    <iframe name=s1iframe src="/step"></iframe>
    <iframe name=s2iframe src="/stepwithlibrary"></iframe></body></html>`,
  '/step': `<script>
      function next(){ window.top.switchStep(); }
      function back(){ window.top.moveStep(-1); }
      function refuse(){ top.document.all("btnNext").disabled = true; }
      function answer(){ top.pophidden.location='/helper'; }
      function add(){ return top.pophidden.addCs(); }
      function save(){ window.top.switchStep();top.dialogArguments.window.location.reload(); }</script>`,
  '/stepwithlibrary': `${kHead}</head><body><input id=inner></body></html>`,
  '/chinese': {
    type: 'text/html; charset=gb2312',
    body: `${kHead}</head><body><button onclick="showWebDialog('/detail?name=\\u4e2d\\u56cd', 300, 200)">open</button></body></html>`,
  },
  '/elsewhere': `<script>
    document.write('<iframe name=ours src="http://127.0.0.1:' + location.port + '/manager"></iframe>');</script>`,
  '/helper': '<script>function addCs(){ return parent.dialogArguments.SearchTable.name; }</script>',
};

const manager = (page) => page.frame({ name: 'Zembra' }) ?? page.mainFrame();

async function openFrom(page, button, count = 1) {
  await button.click();
  const frame = page.locator('dialog[open] iframe').nth(count - 1);
  await frame.waitFor();
  return (await frame.elementHandle()).contentFrame();
}

async function gone(page, left = 0) {
  await page.waitForFunction((count) => document.querySelectorAll('dialog').length === count, left);
}

async function reloads(page) {
  await page.waitForTimeout(30);
  return manager(page).evaluate(() => reloads);
}

export const tests = {
  async 'opens over the desktop, with caption, size and no answer'({ page, open }) {
    await open('/shell');
    const dialog = await openFrom(page, manager(page).getByText('add'));
    await dialog.getByText('save').waitFor();
    await page.waitForFunction(
      () => document.querySelector('.tarlo-dialog-bar span').textContent === 'Zembra方案',
    );
    assert.equal(await manager(page).evaluate(() => typeof answer), 'undefined');
    assert.equal(new URL(dialog.url()).search, '?id=1');
    const box = await page.locator('dialog iframe').boundingBox();
    assert.deepEqual([box.width, box.height], [620, 440]);
    const blocked = manager(page).getByText('add').click({ timeout: 300 });
    await assert.rejects(blocked, 'the page under a dialog takes no clicks');
  },

  async 'result 1 reloads the grid of the caller, once; no other end does'({ page, open }) {
    await open('/shell');
    for (const [end, expected] of [
      ['cancel', 0],
      ['topclose', 0],
      ['save', 1],
    ]) {
      const dialog = await openFrom(page, manager(page).getByText('add'));
      await dialog.getByText(end).click();
      await gone(page);
      assert.equal(await reloads(page), expected, end);
    }
  },

  async 'Escape and the cross close, wherever the focus is'({ page, open }) {
    await open('/shell');
    const inFrame = await openFrom(page, manager(page).getByText('add'));
    await inFrame.getByText('save').focus();
    await page.keyboard.press('Escape');
    await gone(page);
    await openFrom(page, manager(page).getByText('add'));
    await page.locator('dialog button').focus();
    await page.keyboard.press('Escape');
    await gone(page);
    const wizard = await openFrom(page, manager(page).getByText('wizard'));
    await wizard.frameLocator('[name=s2iframe]').locator('#inner').focus();
    await page.keyboard.press('Escape');
    await gone(page);
    await openFrom(page, manager(page).getByText('add'));
    await page.locator('dialog button').click();
    await gone(page);
    assert.equal(await reloads(page), 0);
  },

  async 'Escape closes a dialog whose page has no library'({ page, open }) {
    await open('/shell');
    const plain = manager(page).evaluate(() => showWebDialog('/nothing', 300, 200));
    await Promise.all([plain, page.waitForResponse('**/nothing')]);
    // Once it has loaded the page has the focus, and the dialog hears its keys.
    await page.waitForFunction(() => document.activeElement.matches('dialog[open] iframe'));
    await page.frameLocator('dialog[open] iframe').getByText('no such page').click();
    await page.keyboard.press('Escape');
    await gone(page);
  },

  async 'a dialog from a dialog: each closes alone and answers its own caller'({ page, open }) {
    await open('/shell');
    const outer = await openFrom(page, manager(page).getByText('add'));
    const inner = await openFrom(page, outer.getByText('more'), 2);
    await inner.getByText('save').click();
    await gone(page, 1);
    assert.equal(await outer.evaluate(() => reloads), 1);
    const again = await openFrom(page, outer.getByText('more'), 2);
    await again.getByText('save').focus();
    await page.keyboard.press('Escape');
    await gone(page, 1);
    await page.waitForTimeout(50);
    assert.equal(await page.locator('dialog').count(), 1, 'one Escape closes one dialog');
    await outer.getByText('save').click();
    await gone(page);
    assert.equal(await reloads(page), 1);
  },

  async 'the wizard speaks to top as to its own window'({ page, open }) {
    await open('/shell');
    const wizard = await openFrom(page, manager(page).getByText('wizard'));
    await wizard.waitForFunction(() => window.s1iframe && s1iframe.save);
    await wizard.evaluate(() => {
      s1iframe.next();
      s1iframe.next();
      s1iframe.back();
      s1iframe.refuse();
      s1iframe.answer();
    });
    assert.equal(await wizard.evaluate(() => position), 1);
    assert.equal(await wizard.evaluate(() => btnNext.disabled), true);
    await wizard.waitForFunction(() => pophidden.addCs);
    assert.equal(await wizard.evaluate(() => s1iframe.add()), 'grid');
    await manager(page).evaluate(() => {
      marker = 1;
    });
    await wizard.evaluate(() => {
      s1iframe.next();
      s1iframe.save();
    });
    await gone(page);
    await manager(page).waitForFunction(
      () => typeof marker === 'undefined' && typeof reloads === 'number',
    );
  },

  async 'a caller that was loaded anew meanwhile is left alone'({ page, open }) {
    await open('/shell');
    const dialog = await openFrom(page, manager(page).getByText('add'));
    await manager(page).evaluate(() => {
      marker = 1;
      location.reload();
    });
    await manager(page).waitForFunction(
      () => typeof marker === 'undefined' && typeof reloads === 'number',
    );
    await dialog.getByText('save').click();
    await gone(page);
    assert.equal(await reloads(page), 0);
  },

  async 'another frame opens one, by an address of its own'({ page, open }) {
    await open('/shell');
    const dialog = await openFrom(page, page.frame({ name: 'TarloY' }).getByText('task'));
    await dialog.waitForURL('**/detail?*');
    assert.equal(new URL(dialog.url()).pathname, '/detail');
    assert.equal(await dialog.evaluate(() => dialogArguments === top.TarloY), true);
  },

  async 'an address is written in the character set of the page that opens it'({ page, open }) {
    await open('/chinese');
    const dialog = await openFrom(page, page.getByText('open'));
    await dialog.waitForURL('**/detail?*');
    assert.equal(new URL(dialog.url()).search, '?name=%D6%D0%87%D6');
  },

  async 'inside a page of another site a dialog is a window, with the same result'({
    page,
    context,
    origin,
  }) {
    await page.goto(origin.replace('127.0.0.1', 'localhost') + '/elsewhere');
    const ours = page.frame({ name: 'ours' });
    for (const [end, expected] of [
      ['cancel', 0],
      ['save', 1],
    ]) {
      const [popup] = await Promise.all([
        context.waitForEvent('page'),
        ours.getByText('add').click(),
      ]);
      const closed = popup.waitForEvent('close');
      // The window may be gone before the click has been reported.
      popup
        .getByText(end, { exact: true })
        .click()
        .catch(() => {});
      await closed;
      assert.equal(await ours.evaluate(() => reloads), expected, end);
    }
  },

  async 'a dialog page that stands alone keeps its own functions and frames'({ page, open }) {
    await open('/wizard');
    const found = await page.evaluate(() => {
      s1iframe.next();
      s1iframe.refuse();
      return [
        position,
        btnNext.disabled,
        pophidden === document.querySelector('[name=pophidden]').contentWindow,
      ];
    });
    assert.deepEqual(found, [1, true, true]);
  },

  async 'a page that stands alone shows its dialogs itself'({ page, open }) {
    await open('/manager');
    const dialog = await openFrom(page, page.getByText('add'));
    await dialog.getByText('save').click();
    await gone(page);
    assert.equal(await reloads(page), 1);
    assert.equal(await page.evaluate(() => typeof pophidden), 'undefined');
  },
};
