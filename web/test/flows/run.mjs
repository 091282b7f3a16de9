// node run.mjs [NAME...]: drives the product itself in chromium; the suites beside this file, or
// those named. TARLO_BINARY names the binary. firefox.mjs is a program of its own.

import { runTest } from '../browser/harness.mjs';
import { loadSuites, runTests, withBrowser } from '../browser/suites.mjs';
import { startServer } from './server.mjs';

const kOthers = [
  'run.mjs',
  'server.mjs',
  'product.mjs',
  'firefox.mjs',
  'wizard_steps.mjs',
  'control_steps.mjs',
];
const kArguments = [
  '--no-sandbox',
  '--disable-gpu',
  '--disable-background-networking',
  '--host-resolver-rules=MAP *.example 127.0.0.1',
];

await withBrowser('playwright-core', ['chromium'], async ({ chromium }, executablePath) => {
  const suites = await loadSuites(new URL('.', import.meta.url), kOthers, process.argv.slice(2));
  const server = await startServer();
  const counts = { passed: 0, failed: 0 };
  let browser;
  try {
    browser = await chromium.launch({ executablePath, args: kArguments });
    for (const suite of suites) {
      await runTests(suite, counts, (action) =>
        runTest(browser, server.origin, (test) => action({ ...test, server })),
      );
    }
  } finally {
    await browser?.close();
    await server.stop();
  }
  return counts;
});
