// Suites are files beside a runner: {tests} and what the runner reads of them besides.

import { execSync } from 'node:child_process';
import { readdirSync } from 'node:fs';

/** The path of the first of the programs that is installed. */
export function findProgram(...names) {
  for (const name of names) {
    try {
      return execSync(`command -v ${name}`, { shell: '/bin/sh', encoding: 'utf8' }).trim();
    } catch {
      // the next one, then
    }
  }
  return undefined;
}

/** The suites in a folder, or those wanted by name; `others` are its files that are none. */
export async function loadSuites(folder, others, wanted) {
  const names = readdirSync(folder)
    .filter((file) => file.endsWith('.mjs') && !others.includes(file))
    .map((file) => file.slice(0, -'.mjs'.length))
    .filter((name) => wanted.length === 0 || wanted.includes(name));
  return Promise.all(
    names.map(async (name) => ({ name, ...(await import(new URL(name + '.mjs', folder))) })),
  );
}

/** Runs each test of a suite through `runOne(action)`, and adds to the counts. */
export async function runTests(suite, counts, runOne) {
  for (const [name, action] of Object.entries(suite.tests)) {
    const began = Date.now();
    try {
      await runOne(action);
      counts.passed++;
      console.log(`ok      ${suite.name}: ${name} (${Date.now() - began} ms)`);
    } catch (error) {
      counts.failed++;
      const stack = String(error.stack).replace(/\n/g, '\n        ');
      console.log(`FAILED  ${suite.name}: ${name}\n        ${stack}`);
    }
  }
}

/** Calls `run(browsers, path)` when the npm package and the program are there; says so when not. */
export async function withBrowser(packageName, programs, run) {
  const path = findProgram(...programs);
  const module = await import(packageName).catch(() => undefined);
  if (!path || !module) {
    console.log(
      `skipped: ${path ? `${packageName} is not installed (npm ci)` : `${programs[0]} is not installed`}`,
    );
    console.log('0 passed, 0 failed');
    return;
  }
  const counts = await run(module, path);
  console.log(`${counts.passed} passed, ${counts.failed} failed`);
  process.exitCode = counts.failed || counts.passed === 0 ? 1 : 0;
}
