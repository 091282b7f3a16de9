// The desktop's own page: frames in their order, the menu by keyboard, its filter, the tool bar,
// and the colour scheme.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';

const text = (name) =>
  readFileSync(new URL('../../../src/host/pages/desktop/' + name, import.meta.url), 'utf8');

const kMenu = `<li role="treeitem" aria-level="1" tabindex="0" data-menu="1" aria-expanded="true"><span
  class="dt-item dt-folder">Work</span><ul role="group">
  <li role="treeitem" aria-level="2" tabindex="-1" data-menu="2"><a class="dt-item" tabindex="-1" target="Zembra"
    href="/module?cmdID=2">Tasks</a></li>
  <li role="treeitem" aria-level="2" tabindex="-1" data-menu="3"><a class="dt-item" tabindex="-1" target="Zembra"
    href="/module?cmdID=3">Flows</a></li></ul></li>
  <li role="treeitem" aria-level="1" tabindex="-1" data-menu="4"><a class="dt-item" tabindex="-1" target="Zembra"
    href="/module?cmdID=4">Schemes</a></li>`;

function fill(page, holes) {
  return page.replace(/\{\{(\w+)(?::[\w-]+)*\}\}/g, (_, name) => holes[name]);
}

const shell = fill(text('shell.html'), {
  scheme: 'sea',
  user: 'User',
  department: 'Department',
  menu: kMenu,
  script: ['shell.js', 'shell_menu.js', 'shell_tools.js'].map(text).join(''),
});

// The server answers all of its own addresses under "/", so the page asks for them by query; here
// they stand apart.
export const pages = {
  '/': shell.replace("'/?pane=1'", "'/pane'").replace("'/?cmdID=' + ", "'/module?cmdID=' + "),
  '/pane': fill(text('pane.html'), { scheme: 'sea', user: 'User', department: 'Department' }),
  '/module': `<body>module<script>parent.order = parent.TarloY.showOwnPane ? 'pane first' : 'pane late';
    parent.TarloDesktop.opened(new URLSearchParams(location.search).get('cmdID'));</script></body>`,
  '/images/favicon.png': { type: 'image/png', body: '' },
};

const focused = (page) => page.evaluate(() => document.activeElement.dataset.menu);
const pathOf = (page) => page.locator('#dtPath').textContent();

async function opened(page, id) {
  await page.frame({ name: 'Zembra' }).waitForURL('**/module?cmdID=' + id);
  await page.waitForFunction((last) => location.hash === (last === '0' ? '' : '#' + last), id);
}

export const tests = {
  async 'the main frame opens behind the pane, at the module of the address'({ page, open }) {
    await open('/#3');
    await opened(page, '3');
    assert.equal(await page.evaluate(() => window.order), 'pane first');
    assert.equal(await pathOf(page), 'Work › Flows');
    assert.equal(await page.locator('[aria-current=page]').getAttribute('data-menu'), '3');
  },

  async 'the menu is one tab stop with arrows, letters and Enter'({ page, open }) {
    await open('/');
    await opened(page, '0');
    await page.locator('#dtFilter').focus();
    const visits = [
      ['Tab', '1'],
      ['ArrowDown', '2'],
      ['ArrowDown', '3'],
      ['ArrowDown', '4'],
      ['ArrowDown', '4'],
      ['t', '2'],
      ['ArrowLeft', '1'],
      ['ArrowLeft', '1'],
      ['ArrowDown', '4'],
      ['Home', '1'],
      ['ArrowRight', '1'],
      ['ArrowRight', '2'],
      ['End', '4'],
    ];
    for (const [key, id] of visits) {
      await page.keyboard.press(key);
      assert.equal(await focused(page), id, key);
    }
    await page.keyboard.press('Enter');
    await opened(page, '4');
    assert.equal(await page.locator('#dtMenu [tabindex="0"]').count(), 1);
  },

  async 'a closed folder stays closed over a reload, and the filter looks into it'({ page, open }) {
    await open('/');
    await page.getByText('Work').click();
    await page.reload();
    assert.equal(await page.getByText('Tasks').isVisible(), false);
    await page.locator('#dtFilter').fill('FLO');
    assert.deepEqual(await page.locator('#dtMenu .dt-item:visible').allTextContents(), [
      'Work',
      'Flows',
    ]);
    await page.locator('#dtFilter').fill('nothing');
    assert.equal(await page.locator('#dtNothing').isVisible(), true);
    await page.locator('#dtFilter').fill('');
    assert.deepEqual(await page.locator('#dtMenu .dt-item:visible').allTextContents(), [
      'Work',
      'Schemes',
    ]);
  },

  async 'entries are pinned once, and only granted ones'({ page, open }) {
    await open('/');
    const added = await page.evaluate(() => [2, 2, 99].map((id) => TarloDesktop.addTool(id)));
    assert.deepEqual(added, [true, false, false]);
    await page.reload();
    await page.locator('#dtTools a').click();
    await opened(page, '2');
    await page.locator('#dtTools button').click();
    assert.equal(await page.locator('#dtTools *').count(), 0);
  },

  async 'a chosen scheme goes into the cookie and all frames; a page may wear another'({
    page,
    open,
    context,
  }) {
    await open('/');
    await opened(page, '0');
    await page.locator('label:has(input[value="2"])').click();
    const worn = (word) =>
      page.waitForFunction(
        (wanted) =>
          [document, TarloY.document, Zembra.document].every(
            (at) => at.documentElement?.dataset.scheme === wanted,
          ),
        word,
      );
    await worn('olive');
    assert.deepEqual(
      (await context.cookies()).map((cookie) => [cookie.name, cookie.value]),
      [['tarloStyle', '2']],
    );
    await page.evaluate(() => (startHead.className = 'startHeadsun'));
    await worn('sun');
    await page.evaluate(() => TarloDesktop.ownScheme());
    await worn('olive');
  },

  async 'status texts of pages are shown'({ page, open }) {
    await open('/');
    await page.evaluate(() => (top.status = 'working'));
    assert.equal(await page.locator('#dtStatus').textContent(), 'working');
    await page.evaluate(() => (top.status = ''));
    assert.equal(await page.locator('#dtStatus').textContent(), '就绪');
  },
};
