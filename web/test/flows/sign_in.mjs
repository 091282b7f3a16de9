// Who gets in, and what happens to those who are no longer in.

import assert from 'node:assert/strict';
import { afterRows, openManager, rows, signIn, signInToManager } from './product.mjs';

const kSignIn = 'form[action="/sign-in"]';
const kPassword = 'demo "pass" 密码';

export const tests = {
  async 'a link signs in once'({ page, context, server }) {
    const link = server.signInLink();
    await page.goto(link);
    await page.locator('#dtMenu').waitFor();
    await context.clearCookies();
    const second = await page.goto(link);
    assert.ok(second.status() >= 400, `status ${second.status()}`);
    await page.goto(server.origin + '/');
    await page.locator(kSignIn).waitFor();
  },

  async 'without a session every page is the sign-in page'({ page, open }) {
    for (const path of ['/', '/?cmdID=0', '/TarloQuery.Zembra?action=ctrlSearch']) {
      await open(path);
      await page.locator(kSignIn).waitFor();
      assert.equal(await page.locator('#dtMenu, .tarlo-grid').count(), 0, path);
    }
  },

  async 'a wrong password and an unknown user are refused alike, the right one opens the desktop'({
    page,
    open,
    server,
  }) {
    server.run(['set-password', 'admin'], kPassword + '\n');
    delete server.cookies; // a new password ends the user's sessions
    await open('/');
    const attempt = async (user, password) => {
      await page.fill('#dtName', user);
      await page.fill('#dtPassword', password);
      await Promise.all([page.waitForNavigation(), page.click(kSignIn + ' button')]);
    };
    const refusals = [];
    for (const [user, password] of [
      ['admin', 'wrong password'],
      ["x' or '1'='1", kPassword],
    ]) {
      await attempt(user, password);
      refusals.push((await page.locator(kSignIn).innerText()).trim());
    }
    assert.equal(refusals[0], refusals[1]);
    assert.equal(await page.locator('#dtMenu').count(), 0);
    await attempt('admin', kPassword);
    await page.locator('#dtMenu').waitFor();
  },

  async 'signing out ends the session in every tab, and a grid left open says so'({
    page,
    context,
    server,
  }) {
    delete server.cookies;
    const frame = await signInToManager({ page, server });
    const other = await context.newPage();
    await other.goto(server.origin + '/');
    await openManager(other);
    await other.getByRole('button', { name: '退出' }).click();
    await other.locator(kSignIn).waitFor();
    await afterRows(page, frame, () => frame.evaluate(() => SearchTable.reload()));
    assert.match(await frame.locator('[role=alert]').innerText(), /登录/);
    await page.reload();
    await page.locator(kSignIn).waitFor();
    delete server.cookies;
  },

  async 'two tabs of one session page and sort apart'({ page, context, server }) {
    const frame = await signInToManager({ page, server });
    const other = await context.newPage();
    await other.goto(server.origin + '/');
    const second = await openManager(other);
    await afterRows(other, second, () => second.getByText('末页').click());
    await afterRows(page, frame, () => frame.getByText('下一页').click());
    assert.equal(await frame.locator('.tarlo-grid-page').inputValue(), '2');
    assert.equal(await second.locator('.tarlo-grid-page').inputValue(), '3');
    assert.equal(await rows(second).count(), 2);
  },

  async 'addresses with hostile values run nothing'({ page, server, seen }) {
    await signIn({ page, server });
    const hostile = [
      "/TarloQuery.Zembra?action=ctrlSearch'--",
      '/TarloQuery.Zembra?action=<script>alert(1)</script>',
      '/?cmdID=<script>alert(1)</script>',
      "/?cmdID=1'%20or%201=1--",
      '/?cmdID="><img src=x onerror=alert(1)>',
      '/?pane=%22><script>alert(1)</script>',
      '/sign-in?next=javascript:alert(1)',
      '/' + '<script>alert(1)</script>',
      '/?cmdID=' + 'x'.repeat(60_000),
      '/?cmdID=' + 'x'.repeat(90_000),
    ];
    for (const address of hostile) {
      const response = await page.request.get(server.origin + address);
      assert.ok(response.status() < 500, `${response.status()} for ${address.slice(0, 60)}`);
      await page.goto(server.origin + address);
      assert.equal(await page.locator('img[onerror]').count(), 0, address.slice(0, 60));
    }
    // An address typed in has no referring page, which the component answers with a message of its
    // own.
    assert.deepEqual(
      seen.messages.filter((message) => !/^alert: 无法识别的访问来源/.test(message)),
      [],
    );
    await page.goto(server.origin + '/');
    await openManager(page);
  },
};
