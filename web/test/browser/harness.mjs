// A browser, a small site for it, and what a test gets: pages of its own, the messages shown, and
// the errors thrown.

import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { build } from '../../build.mjs';
import { runTests } from './suites.mjs';

/** The head every page of the product begins with. */
export const kHead =
  '<html><head><meta http-equiv="Content-Type" content="text/html; charset=gb2312">' +
  '<script type="text/javascript" src="/TarloScripts.Zembra?action=Zembra"></script>';

/** The start of a dialog's page, with its own way to close. */
export function dialogHead(title) {
  return (
    '<script language=javascript>\nfunction catchCode(keyCode) {\n    if ("27" == keyCode) {\n' +
    "            self.close();\n    }\n}\nwindow.returnValue = '-1';\nfunction closeWebDialog(resultx){\n" +
    ' window.returnValue = resultx;\n window.close();\n}\n</script>\n<html xmlns:tarlo><head>' +
    `<title>Zembra${title}${'&nbsp;'.repeat(300)} ${title}</title>${kHead.replace('<html><head>', '')}</head>` +
    "<body scroll=no><iframe name='pophidden' style='display:none' src='about:blank'></iframe>"
  );
}

/** The library and the pages, from memory. A page is a text, or {type, body}. */
async function serve(pages) {
  const out = mkdtempSync(join(tmpdir(), 'tarlo-web-'));
  build(out);
  const script = readFileSync(join(out, 'scripts.js'));
  const sheet = readFileSync(join(out, 'tarlo.css'));
  rmSync(out, { recursive: true });
  const server = createServer((request, response) => {
    const { pathname } = new URL(request.url, 'http://site');
    const send = (type, body, status = 200) => {
      response.writeHead(status, { 'Content-Type': type });
      response.end(body);
    };
    if (pathname === '/TarloScripts.Zembra') return send('text/javascript; charset=utf-8', script);
    if (pathname === '/assets/tarlo.css') return send('text/css; charset=utf-8', sheet);
    if (pathname === '/favicon.ico') return send('image/x-icon', '');
    const page = pages[pathname];
    if (page === undefined) return send('text/plain', 'no such page', 404);
    return send(page.type ?? 'text/html; charset=utf-8', page.body ?? page);
  });
  await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
  return server;
}

/**
 * Notes what a page's Content-Security-Policy refuses, in every frame, as an error. The browser
 * writes a line for each; what happens before a document stands is known by that line alone.
 */
function watchPolicy(context, errors) {
  context.on('console', (message) => {
    if (/Content[- ]Security[- ]Policy/i.test(message.text())) errors.push(message.text());
  });
  return context.addInitScript(() => {
    addEventListener('securitypolicyviolation', (event) => {
      const what = `${event.effectiveDirective} ${event.blockedURI} ${event.sample}`;
      console.error(`Content Security Policy: ${what} in ${event.documentURI}`);
    });
  });
}

/** Runs one test in a context of its own; errors of pages that it does not list fail it. */
export async function runTest(browser, origin, action) {
  const context = await browser.newContext({ viewport: { width: 1100, height: 760 } });
  const page = await context.newPage();
  const seen = { messages: [], errors: [], answer: true };
  await watchPolicy(context, seen.errors);
  context.on('weberror', (error) => seen.errors.push(String(error.error().message)));
  context.on('dialog', (dialog) => {
    seen.messages.push(dialog.type() + ': ' + dialog.message());
    return seen.answer ? dialog.accept() : dialog.dismiss();
  });
  page.setDefaultTimeout(5000);
  const open = (path) => page.goto(origin + path, { waitUntil: 'load' });
  try {
    const allowed = (await action({ page, open, seen, origin, context })) ?? [];
    const unexpected = seen.errors.filter(
      (error) => !allowed.some((pattern) => pattern.test(error)),
    );
    if (unexpected.length) throw new Error('errors in the page: ' + unexpected.join(' | '));
  } finally {
    await context.close();
  }
}

/** Runs suites [{name, pages, tests}]; a test may return patterns of the page errors it expects. */
export async function runSuites(suites, chromium, executablePath) {
  const browser = await chromium.launch({ executablePath, args: ['--no-sandbox'] });
  const counts = { passed: 0, failed: 0 };
  for (const suite of suites) {
    const server = await serve(suite.pages);
    const origin = `http://127.0.0.1:${server.address().port}`;
    await runTests(suite, counts, (action) => runTest(browser, origin, action));
    server.closeAllConnections();
    server.close();
  }
  await browser.close();
  return counts;
}
