// Messages, answers in hidden frames, kept colour schemes, and what the side pane calls.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

export const pages = {
  '/page': `${kHead}</head><body><iframe name=pophidden src="about:blank"></iframe>
    <iframe name=hidden src="about:blank"></iframe>
    <div id="TarloTipInfo" style="display:none"><span>old</span></div></body></html>`,
  '/listening': `${kHead}<script>var heard = 0; TarloLibrary.answerListeners.push(function(){ heard++; });</script></head>
    <body><iframe name=pophidden src="about:blank"></iframe><iframe name=hidden src="about:blank"></iframe>
    <iframe name=other src="/named"></iframe></body></html>`,
  '/bare': "<script>sAlert('名称不能为空');</script><script>parent.after = true;</script>",
  '/named': "<script>parent.sAlert('已保存');</script>",
  '/broken': "<script>parent.runs = (parent.runs || 0) + 1; sAlert('x');</script>",
  '/notice':
    '<body class="notice"><h3>请求没有执行</h3><p>请重新操作。</p><p><small>编号 1</small></p><p><a href=/>首页</a></p></body>',
  '/begun':
    '<script>parent.begun = true;</script><div class="notice"><h3>页面出错</h3><p>已记入日志。</p><p><a href=/>首页</a></p></div>',
  '/desktop': `${kHead}<script>var g_sReady = '就绪'; var added = [];
      window.TarloDesktop = { addTool: function(id){ var isNew = added.indexOf(id) < 0; added.push(id); return isNew; } };</script>
    </head><body><div id="TarloTipInfo" style="display:none"><span></span></div>
    <iframe name=TarloY src="/pane"></iframe></body></html>`,
  '/pane': `${kHead}</head><body><img onclick=toolBarAdd(12) width=9 height=9>
    <span onmouseout="doLinkOut(this)" desc="查询方案的管理" onmouseover="doLinkOver(this)">link</span></body></html>`,
  '/floating': `${kHead}</head><body><div id=box style="position:absolute;left:100px;top:80px;width:200px;height:60px">
    <div onmousedown="Tarlo_moveSelectobj(box)">title</div></div></body></html>`,
};

async function answerWith(page, frame, path) {
  await page.evaluate(
    ([name, address]) =>
      new Promise((done) => {
        const element = document.querySelector(`iframe[name=${name}]`);
        element.addEventListener('load', () => setTimeout(done, 0), { once: true });
        window[name].location = address;
      }),
    [frame, path],
  );
}

export const tests = {
  async 'sAlert tells, or asks when its second argument is true'({ page, open, seen }) {
    await open('/page');
    const told = await page.evaluate(() =>
      [sAlert('一'), sAlert('二', false), sAlert('三', 0)].some(Boolean),
    );
    assert.equal(told, false);
    assert.equal(await page.evaluate(() => sAlert('真的？\n不可恢复', true)), true);
    seen.answer = false;
    assert.equal(await page.evaluate(() => sAlert('再问', true)), false);
    assert.deepEqual(seen.messages, [
      'alert: 一',
      'alert: 二',
      'alert: 三',
      'confirm: 真的？\n不可恢复',
      'confirm: 再问',
    ]);
  },

  async 'an answer that calls sAlert without a window is heard once'({ page, open, seen }) {
    await open('/page');
    await answerWith(page, 'pophidden', '/bare');
    await answerWith(page, 'pophidden', '/named');
    assert.deepEqual(seen.messages, ['alert: 名称不能为空', 'alert: 已保存']);
    assert.equal(await page.evaluate(() => after), true);
    assert.equal(seen.errors.length, 1);
    return [/^sAlert is not defined$/];
  },

  async 'a notice of the server in a hidden frame is told'({ page, open, seen }) {
    await open('/page');
    await answerWith(page, 'hidden', '/notice');
    await answerWith(page, 'hidden', '/begun');
    assert.deepEqual(seen.messages, [
      'alert: 请求没有执行\n\n请重新操作。\n\n编号 1',
      'alert: 页面出错\n\n已记入日志。',
    ]);
    assert.equal(await page.evaluate(() => begun), true);
  },

  async 'a script that has done something before it fails is not run again'({ page, open, seen }) {
    await open('/page');
    await answerWith(page, 'pophidden', '/broken');
    assert.equal(await page.evaluate(() => runs), 1);
    assert.deepEqual(seen.messages, []);
    return [/^sAlert is not defined$/];
  },

  async 'an answer in a hidden frame is made known, and nothing else'({ page, open }) {
    await open('/listening');
    assert.equal(
      await page.evaluate(() => heard),
      0,
      'neither an empty frame nor another one is an answer',
    );
    await answerWith(page, 'hidden', '/named');
    await answerWith(page, 'pophidden', '/named');
    assert.equal(await page.evaluate(() => heard), 2);
  },

  async 'a colour scheme is kept for its module'({ page, open, seen }) {
    await open('/page');
    assert.equal(await page.evaluate(() => ZembraGetUserDefineStyle(12)), null);
    await page.evaluate(() => {
      ZembraSaveStyle(12, 3);
      ZembraSaveStyle(13, 0);
    });
    await page.reload();
    assert.deepEqual(await page.evaluate(() => [12, 13, 14].map(ZembraGetUserDefineStyle)), [
      3,
      0,
      null,
    ]);
    await page.evaluate(() => {
      GrantPermissionTemp(12);
      GrantPermissionTempWFI(12, 5);
    });
    assert.equal(seen.messages.filter((message) => message.includes('未设置临时授权')).length, 2);
  },

  async 'links tell what they are for; the tool bar is that of the desktop'({ page, open, seen }) {
    await open('/desktop');
    const pane = page.frame({ name: 'TarloY' });
    const status = () => page.evaluate(() => window.status);
    await pane.getByText('link').hover();
    assert.equal(await status(), '查询方案的管理');
    assert.equal(await pane.getByText('link').getAttribute('title'), '查询方案的管理');
    await pane.locator('img').hover();
    assert.equal(await status(), '就绪');
    const tip = page.locator('#TarloTipInfo');
    await pane.locator('img').click();
    assert.equal(await tip.innerText(), '已加入到工具栏中。');
    await pane.locator('img').click();
    assert.match(await tip.innerText(), /已在工具栏中/);
    assert.deepEqual(await page.evaluate(() => added), [12, 12]);
    await open('/pane');
    await page.locator('img').click();
    assert.equal(seen.messages.length, 1, 'without a desktop there is a message');
  },

  async 'a floating dialog follows the mouse by its title'({ page, open }) {
    await open('/floating');
    const place = () => page.evaluate(() => [box.offsetLeft, box.offsetTop]);
    await page.mouse.move(150, 90);
    await page.mouse.down();
    await page.mouse.move(190, 120, { steps: 3 });
    assert.deepEqual(await place(), [140, 110]);
    await page.mouse.move(-50, -50, { steps: 3 });
    assert.deepEqual(await place(), [0, 0]);
    await page.mouse.up();
    await page.mouse.move(300, 300);
    assert.deepEqual(await place(), [0, 0]);
  },
};
