// Ids as global names.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

export const pages = {
  '/aliases': `${kHead}</head><body>
    <div id=Zembra_Head_Style class=x><img id=Zembra_Head_Style src="/1px.gif"></div>
    <iframe id=frametest name=frametest1 src="/inner"></iframe>
    <iframe id=sameName name=sameName src="/inner"></iframe>
    <script>var early = [Zembra_Head_Style.length, Zembra_Head_Style[1].localName];</script>
    <table><tr id=Sub7><td onclick="linkStatus(Sub7)">folder</td></tr>
      <tr style='display:none' id=Sub7><td id=Sub7>one</td></tr>
      <tr style='display:none' id=Sub7><td id=Sub7>two</td></tr></table>
    <b id=taken></b><b id=taken></b>
    <script>var taken = 'own';</script></body></html>`,
  '/inner': `<script>var SearchTable = { name: 'inner grid' };</script>`,
};

export const tests = {
  async 'a frame by its id is its window, also when its name differs'({ page, open }) {
    await open('/aliases');
    const found = await page.evaluate(() => [
      frametest.SearchTable.name,
      frametest1 === frametest,
      sameName.SearchTable.name,
    ]);
    assert.deepEqual(found, ['inner grid', true, 'inner grid']);
  },

  async 'an id on several elements is a list, already for the script behind them'({ page, open }) {
    await open('/aliases');
    assert.deepEqual(await page.evaluate(() => early), [2, 'img']);
  },

  async 'the list follows the document; variables of the page win'({ page, open }) {
    await open('/aliases');
    const found = await page.evaluate(async () => {
      document.querySelector('img').remove();
      const single = Zembra_Head_Style.localName;
      document.body.insertAdjacentHTML('beforeend', '<p id=late>1</p><p id=late>2</p>');
      await Promise.resolve();
      const late = window.late[1].innerText;
      window.late = 3;
      return { single, late, assigned: window.late, taken };
    });
    assert.deepEqual(found, { single: 'div', late: '2', assigned: 3, taken: 'own' });
  },

  async 'a folder of links opens and closes its rows'({ page, open }) {
    await open('/aliases');
    const shown = () =>
      page.evaluate(() => [...document.querySelectorAll('tr')].map((row) => row.offsetHeight > 0));
    await page.getByText('folder').click();
    assert.deepEqual(await shown(), [true, true, true]);
    await page.getByText('folder').click();
    assert.deepEqual(await shown(), [true, false, false]);
  },
};
