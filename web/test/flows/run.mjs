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

// So many run side by side, each with a server and a browser of its own.
const kWorkers = 2;

await withBrowser('playwright-core', ['chromium'], async ({ chromium }, executablePath) => {
  const suites = await loadSuites(new URL('.', import.meta.url), kOthers, process.argv.slice(2));
  const counts = { passed: 0, failed: 0 };
  const work = async (mine) => {
    if (mine.length === 0) return;
    const server = await startServer();
    let browser;
    try {
      browser = await chromium.launch({ executablePath, args: kArguments });
      for (const suite of mine) {
        await runTests(suite, counts, (action) =>
          runTest(browser, server.origin, (test) => action({ ...test, server })),
        );
      }
    } finally {
      await browser?.close();
      await server.stop();
    }
  };
  const shares = Array.from({ length: kWorkers }, (_, worker) =>
    suites.filter((_, i) => i % kWorkers === worker),
  );
  await Promise.all(shares.map(work));
  return counts;
});
