// The grid and the menu bar, over the markup that the server writes, with a stand-in for its
// answers.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

const kRow = (at, cells = `<td>name ${at}</td><td>用户</td>`) =>
  `<tr id="SearchTable_row${at}" dataID="${at * 10}">${cells}</tr>`;
const kSettings = {
  key: 'k1',
  error: '',
  total: 40,
  page: 1,
  pageSize: 3,
  multiPage: true,
  selectionStyle: 2,
  search: true,
  onRowDoubleClick: 'ShowDetail()',
  onRowSelect: 'picked.push(SearchTable.getSelectedRowDataID());',
  menus: [
    {
      caption: '视图:功能分类',
      views: [
        {
          caption: '按<b>[全部]</b>查看',
          script: 'SearchTable.gotoView(" 1 = 1 ","视图:<b>[全部]</b>")',
        },
        { caption: '', script: '' },
        { caption: '<i>x</i>', script: 'SearchTable.gotoView(" a = 0 ","视图:<b>[用户]</b>")' },
      ],
    },
  ],
  buttons: [{ tip: '新增', caption: '新增...', script: 'addRecord()', cssClass: 'btnX' }],
};

function gridPage(settings, rows) {
  return `${kHead}<script>var picked = [], opened = 0; function ShowDetail(){ opened++; } function addRecord(){ opened = -1; }</script>
    </head><body><iframe name=pophidden src="about:blank"></iframe>
    <div class="tarlo-grid" id="SearchTable_grid" style="width:95%"><table class="tarlo-grid-table" cellspacing="0">
    <thead><tr><th scope="col">查询方案</th><th scope="col">类别</th></tr></thead><tbody>${rows}</tbody></table></div>
    <script>var SearchTable = window.TarloGrid && TarloGrid.attach("SearchTable",${JSON.stringify(settings).replaceAll('<', '\\u003c')});</script>
    </body></html>`;
}

export const pages = {
  '/grid': gridPage(kSettings, [1, 2, 3].map((at) => kRow(at)).join('')),
  '/empty': gridPage({ ...kSettings, total: 0, menus: [], buttons: [], search: false }, ''),
  '/refused': gridPage({ ...kSettings, key: '', total: 0, error: '列表的查询语句无法执行' }, ''),
  '/answer': '<script>1</script>',
  '/menu': `${kHead}<script>var clicked = 0;</script></head><body><div class="tarlo-menu"><span class="tarlo-menu-title">t</span>
    <ul role="menubar" class="tarlo-menu-bar"><li role="none"><a role="menuitem" tabindex="-1" href="javascript:void(0)"
    aria-haspopup="true" aria-expanded="false">Scheme</a><ul role="menu" class="tarlo-menu-list" hidden>
    <li role="none"><a role="menuitem" tabindex="-1" href="javascript: clicked=1;">One</a></li>
    <li role="separator" class="tarlo-menu-separator"></li>
    <li role="none"><a role="menuitem" tabindex="-1" href="javascript: clicked=2;">Two</a></li></ul></li>
    <li role="none"><a role="menuitem" tabindex="-1" href="javascript: clicked=3;">Grant</a></li></ul></div></body></html>`,
};

// Answers every request with one row that names the page asked for; `bodies` keeps what came.
async function answerRows(page, answerOf) {
  const bodies = [];
  await page.route('**/TarloTable.Zembra?action=*', (route) => {
    const body = new URLSearchParams(route.request().postData());
    bodies.push(Object.fromEntries(body));
    const at = Number(body.get('page') ?? 1);
    const rows = [{ id: `${at}7`, cells: [`page ${at} &lt;b&gt;`, ''] }];
    const answer = answerOf?.(bodies.at(-1)) ?? { ok: true, total: 40, page: at, rows };
    return route.fulfill({
      contentType: 'application/json; charset=utf-8',
      body: JSON.stringify(answer),
    });
  });
  return bodies;
}

const ids = (page) => page.evaluate(() => SearchTable.getSelectedRowDataID());

export const tests = {
  async 'selects by mouse and keys, and tells the page'({ page, open }) {
    await open('/grid');
    assert.equal(await ids(page), 0);
    assert.equal(await page.evaluate(() => SearchTable.getSelectedRowDataID() == ''), true);
    await page.click('#SearchTable_row1');
    await page.click('#SearchTable_row3', { modifiers: ['Control'] });
    assert.equal(await ids(page), '10,30');
    await page.click('#SearchTable_row2');
    await page.keyboard.press('Shift+ArrowDown');
    assert.equal(await ids(page), '20,30');
    assert.equal(await page.evaluate(() => SearchTable.selectedRowCount), 2);
    assert.equal(await page.evaluate(() => SearchTable.getSelectedRowID()), 'SearchTable_row2');
    const cell = 'document.all(SearchTable.getSelectedRowID()).children(0).innerText';
    assert.equal(await page.evaluate(cell), 'name 2');
    assert.deepEqual(await page.evaluate(() => picked), ['10', '10,30', '20', '20,30']);
    await page.keyboard.press('Enter');
    await page.dblclick('#SearchTable_row1');
    assert.equal(await page.evaluate(() => opened), 2);
    await page.click('.btnX');
    assert.equal(await page.evaluate(() => opened), -1);
  },

  async 'asks for pages, orders, views and searches'({ page, open }) {
    const bodies = await answerRows(page);
    await open('/grid');
    const asked = async (action, expected) => {
      const before = bodies.length;
      // Typing and Enter ask from timers: the grid is not busy before its request goes out.
      await Promise.all([page.waitForRequest('**/TarloTable.Zembra?action=*'), action()]);
      await page.waitForFunction(() => !document.querySelector('.tarlo-grid-loading'));
      await page.waitForTimeout(30);
      assert.deepEqual(bodies.slice(before), [{ grid: 'k1', ...expected }]);
    };
    await asked(() => page.click('text=下一页'), { page: '2' });
    assert.equal(await page.innerText('#SearchTable_row1 td'), 'page 2 <b>');
    assert.equal(await ids(page), 0);
    await asked(() => page.click('th >> text=类别'), { sort: '2' });
    await asked(() => page.click('th >> text=类别'), { sort: '2', dir: 'desc' });
    assert.equal(await page.getAttribute('th >> nth=1', 'aria-sort'), 'descending');
    await page.click('text=视图:功能分类');
    await asked(() => page.click('text=<i>x</i>'), { sort: '2', dir: 'desc', view: ' a = 0 ' });
    assert.equal(await page.innerHTML('.tarlo-grid-label'), '视图:<b>[用户]</b>');
    await page.evaluate(() => (SearchTable.RightActions = ' and a = 1'));
    const rest = { sort: '2', dir: 'desc', view: ' a = 0 ', right: ' and a = 1' };
    await asked(() => page.evaluate(() => SearchTable.reload()), { ...rest, reload: '1' });
    const search = async () => {
      await page.fill('.tarlo-grid-search', '合同');
      await page.press('.tarlo-grid-search', 'Enter');
    };
    await asked(search, { ...rest, search: '合同' });
  },

  async 'loads again when a hidden frame has its answer'({ page, open }) {
    const bodies = await answerRows(page);
    await open('/grid');
    const before = bodies.length;
    await page.evaluate(() => {
      pophidden.location = '/answer';
    });
    await page.waitForSelector('text=page 1 <b>');
    assert.equal(bodies[before].reload, '1');
  },

  async 'says what went wrong, and that there is nothing'({ page, open }) {
    await answerRows(
      page,
      (body) => body.reload && { ok: false, status: 410, error: '列表已过期' },
    );
    await open('/empty');
    assert.match(await page.innerText('tbody'), /没有符合条件的记录/);
    await open('/refused');
    assert.match(await page.innerText('tbody'), /列表的查询语句无法执行/);
    await open('/grid');
    await page.evaluate(() => SearchTable.reload());
    await page.waitForSelector('text=列表已过期');
    assert.equal(await page.isVisible('text=重试'), true);
    assert.equal(await ids(page), 0);
  },

  async 'keeps the widths that columns were dragged to'({ page, open }) {
    await open('/grid');
    const width = () => page.evaluate(() => document.querySelector('th').offsetWidth);
    const before = await width();
    const handle = await page.locator('.tarlo-grid-handle').first().boundingBox();
    await page.mouse.move(handle.x + 3, handle.y + 5);
    await page.mouse.down();
    await page.mouse.move(handle.x + 63, handle.y + 5, { steps: 3 });
    await page.mouse.up();
    const after = await width();
    assert.ok(Math.abs(after - before - 60) <= 3, `${before} -> ${after}`);
    await open('/grid');
    assert.ok(Math.abs((await width()) - after) <= 3);
  },

  async 'a menu opens and runs by keys and by mouse'({ page, open }) {
    await open('/menu');
    await page.focus('text=Scheme');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => clicked === 2);
    assert.equal(await page.isVisible('text=One'), false);
    await page.click('text=Scheme');
    await page.click('text=One');
    await page.waitForFunction(() => clicked === 1);
    await page.focus('text=Scheme');
    await page.keyboard.press('ArrowRight');
    await page.keyboard.press('Enter');
    await page.waitForFunction(() => clicked === 3);
  },
};
