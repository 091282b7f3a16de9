// node run.mjs [NAME...]: runs the suites beside this file, or those named, in chromium.

import { readdirSync } from 'node:fs';
import { findChromium, runSuites } from './harness.mjs';

const kNotSuites = ['run.mjs', 'harness.mjs'];

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

const chromiumPath = findChromium();
const playwright = await import('playwright-core').catch(() => undefined);
if (!chromiumPath || !playwright) {
  console.log(
    `skipped: ${chromiumPath ? 'playwright-core is not installed (npm ci)' : 'chromium is not installed'}`,
  );
  console.log('0 passed, 0 failed');
} else {
  const suites = await loadSuites(process.argv.slice(2));
  const counts = await runSuites(suites, playwright.chromium, chromiumPath, console.log);
  console.log(`${counts.passed} passed, ${counts.failed} failed`);
  process.exitCode = counts.failed || counts.passed === 0 ? 1 : 0;
}
