// node run.mjs [NAME...]: drives the product itself in chromium; the suites beside this file, or those named.
// TARLO_BINARY names the binary. firefox.mjs is a program of its own.

import { existsSync, readdirSync } from 'node:fs';
import { findChromium, runTest } from '../browser/harness.mjs';
import { kBinary, startServer } from './server.mjs';

const kNotSuites = ['run.mjs', 'server.mjs', 'product.mjs', 'firefox.mjs'];
const kArguments = ['--no-sandbox', '--disable-gpu', '--disable-background-networking'];

async function loadSuites(wanted) {
  const folder = new URL('.', import.meta.url);
  const names = readdirSync(folder)
    .filter((file) => file.endsWith('.mjs') && !kNotSuites.includes(file))
    .map((file) => file.slice(0, -'.mjs'.length))
    .filter((name) => wanted.length === 0 || wanted.includes(name));
  return Promise.all(
    names.map(async (name) => ({ name, ...(await import(new URL(name + '.mjs', folder))) })),
  );
}

async function runAll(browser, server, suites) {
  const counts = { passed: 0, failed: 0 };
  for (const suite of suites) {
    for (const [name, action] of Object.entries(suite.tests)) {
      const began = Date.now();
      try {
        await runTest(browser, server.origin, (test) => action({ ...test, server }));
        counts.passed++;
        console.log(`ok      ${suite.name}: ${name} (${Date.now() - began} ms)`);
      } catch (error) {
        counts.failed++;
        console.log(`FAILED  ${suite.name}: ${name}\n        ${String(error.stack).replace(/\n/g, '\n        ')}`);
      }
    }
  }
  return counts;
}

const executablePath = findChromium();
const playwright = await import('playwright-core').catch(() => undefined);
if (!executablePath || !playwright) {
  console.log(
    `skipped: ${executablePath ? 'playwright-core is not installed (npm ci)' : 'chromium is not installed'}`,
  );
  console.log('0 passed, 0 failed');
} else if (!existsSync(kBinary)) {
  console.log(`there is no ${kBinary}: build it, or name it in TARLO_BINARY`);
  process.exitCode = 1;
} else {
  const suites = await loadSuites(process.argv.slice(2));
  const server = await startServer();
  let browser;
  try {
    browser = await playwright.chromium.launch({ executablePath, args: kArguments });
    const counts = await runAll(browser, server, suites);
    console.log(`${counts.passed} passed, ${counts.failed} failed`);
    process.exitCode = counts.failed || counts.passed === 0 ? 1 : 0;
  } finally {
    await browser?.close();
    await server.stop();
  }
}
