// What pages of other sites cannot make a browser do, and what text that got into a page as markup
// cannot do there.

import assert from 'node:assert/strict';
import { openManager, rows, signIn, signInToManager } from './product.mjs';

// A name that the browser is told to find on this machine. Over plain HTTP and under a name, it
// sends no Sec-Fetch-Site: the referring address is all that the server sees of where a link stood.
const kPlainHost = 'designer.example';
const kForeign = 'http://elsewhere.example';

const kDelete = '/TarloQuery.Zembra?action=delSearch&id=2&k7wwworvane=1';
const kRefusal = /请登录本系统，从系统的页面里重新操作/;

function isThere(server, id) {
  const sql = `select Zembra_Flag from Zembra_Query_Main where Query_ID=${id}`;
  return server.run(['sql', '--csv', sql]).trim().endsWith('1');
}

/** The server under a name, signed in. */
async function underAName({ page, server }) {
  const { port } = new URL(server.origin);
  const origin = `http://${kPlainHost}:${port}`;
  await page.goto(server.signInLink().replace(server.origin, origin));
  await page.frameLocator('iframe[name=Zembra]').locator('h1').waitFor();
  return origin;
}

export const tests = {
  async 'a link on another site deletes nothing, whether or not the browser says where it stood'(
    test,
  ) {
    const { page, context, server } = test;
    const named = await underAName(test);
    await signIn(test);
    for (const origin of [named, server.origin]) {
      for (const policy of ['no-referrer', 'unsafe-url']) {
        const asked = [];
        await context.route(`${kForeign}/**`, (route) =>
          route.fulfill({
            contentType: 'text/html',
            body: `<meta name=referrer content=${policy}><a href="${origin}${kDelete}">prize</a>`,
          }),
        );
        page.on('request', (request) => asked.push(request));
        await page.goto(`${kForeign}/page`);
        await Promise.all([page.waitForURL(`${origin}/**`), page.click('a')]);
        assert.match(await page.locator('body').innerText(), kRefusal);
        const sent = await asked.at(-1).allHeaders();
        const saysWhere = 'sec-fetch-site' in sent;
        assert.equal(saysWhere, origin === server.origin, JSON.stringify(sent));
        assert.match(sent.cookie, /TARLOSESSION=/, 'the browser sent no session');
        await context.unroute(`${kForeign}/**`);
        page.removeAllListeners('request');
      }
      await page.goto(origin + kDelete);
      assert.match(await page.locator('body').innerText(), kRefusal, 'an address typed in');
    }
    assert.ok(isThere(server, 2));
  },

  async 'where the browser sends the referring address alone, the own pages work'(test) {
    const { page, server } = test;
    server.run([
      'sql',
      `insert into Zembra_Query_Main (Query_Name,Query_Desc,Query_Fields,Query_Dic,Query_MainTBID)
       values (N'就要删除','','',1,11)`,
    ]);
    const origin = await underAName(test);
    const frame = await openManager(page);
    const row = rows(frame).filter({ hasText: '就要删除' });
    const id = await row.getAttribute('dataid');
    await row.click();
    const answered = page.waitForResponse((response) => response.url().includes('delSearch'));
    await frame.locator('.tarlo-grid-bar .btnX', { hasText: '删除' }).click();
    const headers = await (await answered).request().allHeaders();
    assert.equal(headers['sec-fetch-site'], undefined);
    assert.ok(headers.referer.startsWith(origin + '/'), headers.referer);
    await row.waitFor({ state: 'detached' });
    assert.ok(!isThere(server, id));
    await page.goto(origin + '/');
    await page.getByRole('button', { name: '退出' }).click();
    await page.locator('form[action="/sign-in"]').waitFor();
  },

  async 'markup that got into an own page runs nothing, and the browser says so'(test) {
    const { page, seen } = test;
    await signIn(test);
    const start = page.frame({ name: 'Zembra' });
    for (const frame of [page.mainFrame(), start]) {
      await frame.evaluate(() => {
        const box = document.createElement('div');
        box.innerHTML =
          '<img src="/none" onerror="window.ran = 1"><a href="javascript:ran=2">x</a>';
        document.body.append(box);
        box.querySelector('a').click();
        const script = document.createElement('script');
        script.text = 'window.ran = 3';
        document.body.append(script);
      });
    }
    await page.waitForTimeout(200);
    assert.equal(await page.evaluate(() => window.ran), undefined);
    assert.equal(await start.evaluate(() => window.ran), undefined);
    for (const path of [/in http:\/\/127[^/]+\/$/, /cmdID=0$/]) {
      const directives = seen.errors
        .filter((error) => path.test(error))
        .map((error) => /Content Security Policy: (\S+)/.exec(error)?.[1]);
      assert.ok(directives.includes('script-src-attr'), String(directives));
      assert.ok(directives.includes('script-src-elem'), String(directives));
    }
    return [/Content[- ]Security[- ]Policy/i];
  },

  async 'a page of the platform is held to its policy too'(test) {
    const frame = await signInToManager(test);
    await frame.evaluate(() => {
      const script = document.createElement('script');
      script.src = 'http://elsewhere.example/x.js';
      document.body.append(script);
    });
    await test.page.waitForTimeout(200);
    assert.ok(test.seen.errors.some((error) => /script-src-elem http:\/\/elsewhere/.test(error)));
    return [/Content[- ]Security[- ]Policy/i];
  },
};
