// What pages of other sites cannot make a browser do, and what text that got into a page as markup
// cannot do there.

import assert from 'node:assert/strict';
import { createServer } from 'node:http';
import { openManager, rows, signIn, signInToManager } from './product.mjs';

// A name that the browser is told to find on this machine. Over plain HTTP and under a name, it
// sends no Sec-Fetch-Site: the referring address is all that the server sees of where a link stood.
const kPlainHost = 'designer.example';

const kDelete = '/TarloQuery.Zembra?action=delSearch&id=2&k7wwworvane=1';
const kRefusal = /请登录本系统，从系统的页面里重新操作/;

function isThere(server, id) {
  const sql = `select Zembra_Flag from Zembra_Query_Main where Query_ID=${id}`;
  return server.run(['sql', '--csv', sql]).trim().endsWith('1');
}

/** A page with one link, and the referrer policy that its author likes. */
async function startOtherSite() {
  const other = createServer((request, response) => {
    const wanted = new URL(request.url, 'http://other').searchParams;
    response.writeHead(200, {
      'Content-Type': 'text/html',
      'Referrer-Policy': wanted.get('policy'),
    });
    response.end(`<a href="${wanted.get('to')?.replaceAll('&', '&amp;')}">prize</a>`);
  });
  await new Promise((ready) => other.listen(0, '127.0.0.1', ready));
  const stop = () => {
    other.closeAllConnections();
    other.close();
  };
  return { origin: `http://elsewhere.example:${other.address().port}`, stop };
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
    const { page, server } = test;
    const named = await underAName(test);
    await signIn(test);
    const other = await startOtherSite();
    try {
      for (const origin of [named, server.origin]) {
        for (const policy of ['no-referrer', 'unsafe-url']) {
          const asked = page.waitForRequest(origin + kDelete);
          await page.goto(
            `${other.origin}/?${new URLSearchParams({ policy, to: origin + kDelete })}`,
          );
          await page.click('a');
          const sent = await (await asked).allHeaders();
          assert.match(sent.cookie, /TARLOSESSION=/, 'the browser sent no session');
          const says = origin === named ? undefined : 'cross-site';
          assert.equal(sent['sec-fetch-site'], says);
          await page.getByText(kRefusal).waitFor();
        }
        await page.goto(origin + kDelete);
        assert.match(await page.locator('body').innerText(), kRefusal, 'an address typed in');
      }
    } finally {
      other.stop();
    }
    assert.ok(isThere(server, 2));
  },

  async 'where the browser sends the referring address alone, the own pages work'(test) {
    const { page, server } = test;
    server.run([
      'sql',
      `insert into Zembra_Query_Main (Query_Name,Query_Desc,Query_Fields,Query_Dic,
       Query_MainTBID,Zembra_WriteDate,Zembra_ModiDate)
       values (N'就要删除','','',1,11,getdate(),getdate())`,
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
