// node firefox.mjs: a smoke test of the product in Firefox, driven by puppeteer.

import assert from 'node:assert/strict';
import { execSync } from 'node:child_process';
import { existsSync } from 'node:fs';
import { kMenuEntry } from './product.mjs';
import { kBinary, startServer } from './server.mjs';

function findFirefox() {
  try {
    return execSync('command -v firefox-esr || command -v firefox', { shell: '/bin/sh', encoding: 'utf8' }).trim();
  } catch {
    return undefined;
  }
}

async function zembra(page) {
  const frame = await (await page.waitForSelector('iframe[name=Zembra]')).contentFrame();
  await frame.waitForSelector('#SearchTable_row1');
  return frame;
}

const kTimes = () => [...document.querySelectorAll('#SearchTable_grid td:nth-child(5)')].map((cell) => cell.innerText);

async function smoke(page, server) {
  const errors = [];
  page.on('pageerror', (error) => errors.push(error.message));
  page.setDefaultTimeout(10_000);
  await page.goto(server.signInLink());
  await page.waitForFunction(() => window.Zembra.document.querySelector('h1'));
  await page.evaluate((caption) => {
    [...document.querySelectorAll('#dtMenu a')].find((link) => link.textContent.trim() === caption).click();
  }, kMenuEntry);
  let frame = await zembra(page);
  const newestFirst = await frame.evaluate(kTimes);
  assert.equal(newestFirst.length, 15);
  await (await frame.$('#SearchTable_grid th:nth-child(5)')).click();
  await frame.waitForSelector('th[aria-sort=ascending]');
  const oldestFirst = await frame.evaluate(kTimes);
  assert.deepEqual(oldestFirst, [...oldestFirst].sort());
  assert.notDeepEqual(oldestFirst, newestFirst);
  await frame.evaluate(() => {
    [...document.querySelectorAll('.tarlo-menu a')].find((link) => link.textContent.includes('Olive')).click();
  });
  await page.waitForFunction(() => startHead.className === 'startHeadolive');
  frame = await zembra(page);
  assert.equal(await frame.evaluate(() => Zembra_Head_Style[0].className), 'ZembraxTitle_olive');
  assert.deepEqual(errors, []);
}

const executablePath = findFirefox();
const puppeteer = await import('puppeteer-core').catch(() => undefined);
if (!executablePath || !puppeteer) {
  console.log(`skipped: ${executablePath ? 'puppeteer-core is not installed (npm ci)' : 'firefox is not installed'}`);
  console.log('0 passed, 0 failed');
} else if (!existsSync(kBinary)) {
  console.log(`there is no ${kBinary}: build it, or name it in TARLO_BINARY`);
  process.exitCode = 1;
} else {
  const server = await startServer();
  let browser;
  let failure;
  try {
    browser = await puppeteer.launch({ browser: 'firefox', executablePath, headless: true });
    await smoke(await browser.newPage(), server);
  } catch (error) {
    failure = error;
    console.log(`FAILED  ${error.stack}`);
  } finally {
    await browser?.close();
    await server.stop();
  }
  console.log(failure ? '0 passed, 1 failed' : '1 passed, 0 failed');
  process.exitCode = failure ? 1 : 0;
}
