// Old document members in a real page: what the static pages call is written as pages write it.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

export const pages = {
  '/dom': `${kHead}</head><body>
    <table><tr id=row dataid="17" waki='w'><td>a</td><td>b</td></tr></table>
    <form name=TarloDialog><input name=step1virtual value=v><input id=relexpresion value=r></form>
    <tarlo:combobox name=byname></tarlo:combobox><tarlo:combobox id=viewFields></tarlo:combobox>
    <div class=many id=many>1</div><div class=many id=many>2</div>
    <span id=outer>x<b id=inner>y</b>z</span>
    <input id=field value="hello">
    <iframe name=hidden src="/answer"></iframe></body></html>`,
  '/answer': `<script>parent.window.execScript("var made = 5; function twice(x){ return 2 * x; }", 'JavaScript');</script>`,
};

export const tests = {
  async 'document.all in every form'({ page, open }) {
    await open('/dom');
    const found = await page.evaluate(() => ({
      property: document.all.row.localName,
      call: document.all('row').localName,
      form: document.all.TarloDialog.step1virtual.value,
      byName: document.all('byname').localName,
      otherCase: document.all('ViewFields').id,
      otherCaseName: document.all.step1Virtual.value,
      oneHasNoLength: document.all('relexpresion').length == null,
      many: [
        document.all('many').length,
        document.all('many')[1].innerText,
        document.all('many')(0).innerText,
        document.all('many', 1).innerText,
      ],
      missing: [typeof document.all.nothing, document.all('nothing')],
      counted: document.all.length === document.getElementsByTagName('*').length,
    }));
    assert.deepEqual(found, {
      property: 'tr',
      call: 'tr',
      form: 'v',
      byName: 'tarlo:combobox',
      otherCase: 'viewFields',
      otherCaseName: 'v',
      oneHasNoLength: true,
      many: [2, '2', '1', '2'],
      missing: ['undefined', null],
      counted: true,
    });
  },

  async 'children are callable and live; attributes are properties'({ page, open }) {
    await open('/dom');
    const found = await page.evaluate(() => {
      const { children } = row;
      const before = [
        children(1).innerText,
        children[0].innerText,
        children.length,
        row.children === children,
      ];
      row.insertCell(2);
      row.dataID = '18';
      return {
        before,
        after: children.length,
        id: row.getAttribute('dataid'),
        waki: row.waki,
        desc: row.desc,
      };
    });
    assert.deepEqual(found, {
      before: ['b', 'a', 2, true],
      after: 3,
      id: '18',
      waki: 'w',
      desc: undefined,
    });
  },

  async 'execScript from an answer defines globals of the page'({ page, open }) {
    await open('/dom');
    assert.equal(await page.evaluate(() => twice(made)), 10);
  },

  async 'removeNode, attachEvent, text ranges and selection'({ page, open }) {
    await open('/dom');
    const found = await page.evaluate(() => {
      inner.removeNode();
      const kept = outer.innerHTML;
      outer.removeNode(true);
      let clicks = 0;
      field.attachEvent('onclick', () => clicks++);
      field.click();
      field.focus();
      field.setSelectionRange(1, 3);
      const selected = document.selection.createRange().text;
      document.selection.createRange().text = 'EL';
      field.createTextRange().text += '!';
      return { kept, gone: document.getElementById('outer'), clicks, selected, value: field.value };
    });
    assert.deepEqual(found, {
      kept: 'xyz',
      gone: null,
      clicks: 1,
      selected: 'el',
      value: 'hELlo!',
    });
  },

  async 'a second load of the library changes nothing'({ page, open }) {
    await open('/dom');
    const same = await page.evaluate(async () => {
      const [first, message] = [TarloLibrary, sAlert];
      const again = document.createElement('script');
      again.src = '/TarloScripts.Zembra?action=Zembra';
      await new Promise((done) => {
        again.onload = done;
        document.head.append(again);
      });
      return (
        first === TarloLibrary &&
        message === sAlert &&
        document.querySelectorAll('link').length === 1
      );
    });
    assert.equal(same, true);
  },
};
