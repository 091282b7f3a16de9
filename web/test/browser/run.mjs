// node run.mjs [NAME...]: runs the suites beside this file, or those named, in chromium.

import { runSuites } from './harness.mjs';
import { loadSuites, withBrowser } from './suites.mjs';

const kOthers = ['run.mjs', 'harness.mjs', 'suites.mjs'];

await withBrowser('playwright-core', ['chromium'], async ({ chromium }, executablePath) => {
  const suites = await loadSuites(new URL('.', import.meta.url), kOthers, process.argv.slice(2));
  return runSuites(suites, chromium, executablePath);
});
