// The platform's tags on pages that leave them open, as the old pages do.

import assert from 'node:assert/strict';
import { kHead } from './harness.mjs';

const kMany = Array.from({ length: 5000 }, (_, at) => `项目${at}<<<<<<${at}`).join('>>>>>>');
const kDirectories =
  '<option><value>1</value><text>甲</text></option><option><value>2</value><text>乙</text></option>';

export const pages = {
  '/tags': `${kHead}</head><body><form id=f action=/posted method=get>
    <table><tr><td>字段:</td><td><tarlo:combobox id=c name=c width=150 editable=false data="无<<<<<<-1>>>>>>一<<<<<<1>>>>>>二<<<<<<2>>>>>>"
      onselect="log('select '+this.value)" onchange="log('change '+this.value)" /><input id=expresion name=e value=x></td></tr></table>
    <div><tarlo:radio id=r1 name=r text=甲 value=0 checked /></div><div><tarlo:radio id=r2 name=r text=乙 value=1 /></div>
    <div><Tarlo:Groupradio id=Querysys name=System text="用户,系统" values="0,1" defaultvalue="1" onclick="log('click '+this.value)" /></div>
    <div><tarlo:Groupcheckbox id=virtul col=3 text="甲,乙,丙" values="1,2,5" defaultValue="2,5" /></div>
    <div><tarlo:dupcombobox id=d name=d data="a<<<<<<1>>>>>>b<<<<<<2>>>>>>c<<<<<<3" /></div>
    <div><tarlo:combobox id=filter name=filter editable=filter data="${kMany}" /></div>
    </form><div id=rows></div>
    <script>var seen=[]; function log(text){ seen.push(text); }
      var early=c.value+'|'+c.text+'|'+virtul.value+'|'+Querysys.value;
      rows.insertAdjacentHTML('BeforeEnd','<tarlo:combobox id=late selectvalue=2 data="a<<<<<<1>>>>>>b<<<<<<2" />');
      var late1=late.value;
      rows.insertAdjacentHTML('BeforeEnd','<tarlo:combobox id=late data="a<<<<<<1>>>>>>b<<<<<<2" />');
      document.all("late")[1].selectvalue=2;
      var late2=document.all("late")[1].value+document.all("late").length;</script></body></html>`,
  '/cascade': `${kHead}</head><body><script>
      var asked=[];
      window.fetch=function(address){ asked.push(String(address)); if(window.fails) return Promise.reject(new Error('gone'));
        return new Promise(function(done){ setTimeout(function(){ done({ok:true,json:function(){ return Promise.resolve([['7','七'],['8','八']]); }}); },50); }); };
    </script><form id=f><div><tarlo:relcombobox id=t name=t beginvalue=8 selectvalue=2 relation="T,a,b,c,Zembra_Flag <> 0" src="<root>${kDirectories}</root>" /></div></form>
    <script>var early=t.value;</script></body></html>`,
};

const seen = (page) => page.evaluate(() => seen.splice(0));

export const tests = {
  async 'values stand before anything is drawn, and for what a script puts in'({ page, open }) {
    await open('/tags');
    assert.equal(await page.evaluate(() => early), '-1|无|2,5|1');
    assert.deepEqual(await page.evaluate(() => [late1, late2]), ['2', '22']);
    await page.locator('#c select').waitFor();
    // The box stands where its tag is, with what the parser put behind it.
    assert.equal(await page.evaluate(() => expresion.parentElement === c), true);
  },

  async 'a choice is told once; what scripts set, and what the tag has swallowed, is not'({
    page,
    open,
  }) {
    await open('/tags');
    await page.locator('#c select').selectOption('2');
    assert.deepEqual(await seen(page), ['select 2', 'change 2']);
    await page.evaluate(() => {
      c.value = 1;
      c.selectvalue = '2';
      c.value = 'none of them';
    });
    await page.locator('#expresion').fill('y');
    await page.locator('#expresion').selectText();
    await page.locator('#expresion').blur();
    assert.deepEqual(await seen(page), []);
    assert.equal(await page.evaluate(() => c.value + c.text), '2二');
    await page.locator('#Querysys').getByText('用户').click();
    assert.deepEqual(await seen(page), ['click 0']);
  },

  async 'keys choose, names of the controls are their captions'({ page, open }) {
    await open('/tags');
    await page.getByRole('combobox', { name: '字段', exact: true }).focus();
    await page.keyboard.press('ArrowDown');
    assert.equal(await page.evaluate(() => c.value), '1');
    await page.keyboard.press('End');
    assert.equal(await page.evaluate(() => c.value), '2');
    await page.getByRole('radio', { name: '乙' }).check();
    assert.deepEqual(await page.evaluate(() => [r1.checked, r2.checked]), [false, true]);
  },

  async 'a form posts the tags by their names'({ page, open }) {
    await open('/tags');
    await page.evaluate(() => {
      r2.checked = true;
      d.value = '3,1';
      filter.value = 4999;
    });
    const posted = await page.evaluate(() =>
      [...new FormData(f)].map((pair) => pair.join('=')).sort(),
    );
    assert.deepEqual(posted, ['System=1', 'c=-1', 'd=3,1', 'e=x', 'filter=4999', 'r=1'].sort());
  },

  async 'a long list narrows by typing, and takes no text that is no option'({ page, open }) {
    await open('/tags');
    const box = page.locator('#filter input');
    await box.fill('项目4321');
    await box.blur();
    assert.equal(await page.evaluate(() => filter.value), '4321');
    await box.fill('something else');
    await box.blur();
    assert.equal(await box.inputValue(), '项目4321');
  },

  async 'two lists: chosen in order, moved, given back'({ page, open }) {
    await open('/tags');
    const [left, right] = [page.locator('#d select').nth(0), page.locator('#d select').nth(1)];
    await left.selectOption(['2']);
    await page.locator('#d button', { hasText: '＞' }).click();
    await left.selectOption(['1']);
    await left.press('Enter');
    assert.equal(await page.evaluate(() => d.value), '2,1');
    await page.locator('#d button', { hasText: '↑' }).click();
    assert.equal(await page.evaluate(() => d.value), '1,2');
    await right.selectOption(['2']);
    await page.locator('#d button', { hasText: '＜' }).click();
    assert.equal(await page.evaluate(() => d.value + d.text), '1a');
  },

  async 'a cascade answers its preset until its rows have come, and asks again by choice'({
    page,
    open,
  }) {
    await open('/cascade');
    assert.equal(await page.evaluate(() => early), '8');
    const last = page.locator('#t select').nth(1);
    await last.locator('option[value="8"]').waitFor({ state: 'attached' });
    await page.waitForFunction(() => t.text === '八');
    assert.equal(await page.evaluate(() => t.value + [...new FormData(f)][0].join('=')), '8t=8');
    await page.locator('#t select').nth(0).selectOption('1');
    await page.waitForFunction(() => asked.length === 2 && t.value === '7');
    // Between a choice and its answer there is nothing of the older choice to send.
    const between = await page.locator('#t select').evaluateAll(([first, second]) => {
      first.dispatchEvent(new Event('change'));
      return [t.value, second.disabled];
    });
    assert.deepEqual(between, ['', true]);
    await page.waitForFunction(() => t.value === '7');
    const asked = new URL(await page.evaluate(() => asked[1]), 'http://x').searchParams;
    assert.deepEqual(
      ['table', 'link', 'value', 'text', 'condition', 'parent'].map((key) => asked.get(key)),
      ['T', 'a', 'b', 'c', 'Zembra_Flag <> 0', '1'],
    );
    await page.evaluate(() => {
      window.fails = true;
    });
    await page.locator('#t select').nth(0).selectOption('2');
    await page.locator('#t .note', { hasText: '列表读取失败' }).waitFor();
    assert.equal(await page.evaluate(() => t.value), '');
  },
};
