// node firefox.mjs: a smoke test of the product in Firefox, driven by puppeteer.

import assert from 'node:assert/strict';
import { withBrowser } from '../browser/suites.mjs';
import { kMenuEntry } from './product.mjs';
import { startServer } from './server.mjs';

async function zembra(page) {
  const frame = await (await page.waitForSelector('iframe[name=Zembra]')).contentFrame();
  await frame.waitForSelector('#SearchTable_row1');
  return frame;
}

const kTimes = () =>
  [...document.querySelectorAll('#SearchTable_grid td:nth-child(5)')].map((cell) => cell.innerText);

async function smoke(page, server) {
  const errors = [];
  page.on('pageerror', (error) => errors.push(error.message));
  await page.evaluateOnNewDocument(() => {
    addEventListener('securitypolicyviolation', (event) => {
      throw new Error(`Content Security Policy: ${event.effectiveDirective} ${event.blockedURI}`);
    });
  });
  page.setDefaultTimeout(10_000);
  await page.goto(server.signInLink());
  await page.waitForFunction(() => window.Zembra.document.querySelector('h1'));
  await page.evaluate((caption) => {
    [...document.querySelectorAll('#dtMenu a')]
      .find((link) => link.textContent.trim() === caption)
      .click();
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
    [...document.querySelectorAll('.tarlo-menu a')]
      .find((link) => link.textContent.includes('Olive'))
      .click();
  });
  await page.waitForFunction(() => startHead.className === 'startHeadolive');
  frame = await zembra(page);
  assert.equal(await frame.evaluate(() => Zembra_Head_Style[0].className), 'ZembraxTitle_olive');
  assert.deepEqual(errors, []);
}

await withBrowser(
  'puppeteer-core',
  ['firefox-esr', 'firefox'],
  async ({ default: puppeteer }, executablePath) => {
    const server = await startServer();
    let browser;
    try {
      browser = await puppeteer.launch({ browser: 'firefox', executablePath, headless: true });
      await smoke(await browser.newPage(), server);
      return { passed: 1, failed: 0 };
    } catch (error) {
      console.log(`FAILED  ${error.stack}`);
      return { passed: 0, failed: 1 };
    } finally {
      await browser?.close();
      await server.stop();
    }
  },
);
