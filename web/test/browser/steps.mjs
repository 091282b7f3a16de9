// The scripts of the wizard's step pages, on the pages' own text. What looks odd here is kept:
// schemes were stored by it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { kHead } from './harness.mjs';

/** A page text of the component with its holes filled. */
function filled(file, holes) {
  const text = readFileSync(new URL(`../../../src/scheme/pages/${file}`, import.meta.url), 'utf8');
  return text.replace(/\{\{(\w+)(?::[\w-]+)*\}\}/g, (_, name) => holes[name] ?? '');
}

const option = (value, text) => `<option><value>${value}</value><text>${text}</text></option>`;
const source = (...options) => `<root>${options.join('')}</root>`;
const kBody = `${kHead}</head><body style="background:menu">`;

const relationRow = (id, ...names) =>
  filled('relation_step_row.html', {
    id,
    mainTable: names[0],
    mainField: names[1],
    relatedTable: names[2],
    relatedField: names[3],
  });
const gridRow = (id, ...names) =>
  `<tr id=SearchTable_row${id} dataID=${id} ondblclick="picked=this.id;getRel()">${names.map((name) => `<td>${name}</td>`).join('')}</tr>`;

const computedRow = filled('computed_step_row.html', {}).trimEnd();
const fields = source(
  option('-1', '--选择字段--'),
  option('101', '订单.金额'),
  option('102', '*客户.折扣'),
);
const conditionFields = '金额<<<<<<101>>>>>>城市<<<<<<111|102>>>>>>';
const conditionRow = (holes) =>
  filled('filter_step_row.html', { fields: conditionFields, ...holes });
const groups = source(option('-1000', '--不分组--'), option('101', '金额'), option('102', '客户'));

export const pages = {
  '/relations': `${kBody}<table><tbody>${gridRow(5, '单', '客', '客户', '号')}${gridRow(6, '单', '收', '客户', '号')}${gridRow(7, 'A&amp;B', 'x', 'y', 'z')}</tbody></table>
    <script>var picked='',SearchTable={getSelectedRowID:function(){return picked;}};</script>
    ${filled('relation_step.html', { rows: relationRow(5, '单', '客', '客户', '号') + relationRow(9, '九', '九', '九', '九'), relations: '5,9' })}`,
  '/computed': `${kBody}${filled('computed_step.html', { fields, list: '旧:1;', rows: `${computedRow}旧:1</tr></td>`.replaceAll("'", "\\'") })}`,
  '/filter': `${kBody}${filled('filter_step.html', { rows: conditionRow({}), counting: 'selectIndex = 1;', row: conditionRow({}).replace(/\n/g, '') })}`,
  '/statistics': `${kBody}${filled('statistics_step.html', { fields, groups })}<script>${filled('statistics_step.js', { groups }).replace(/\n/g, '')}
    document.all("groupby").selectvalue=101,102;
    document.all("groupby").value=101,102;
    appgroup();
    document.all("groupby")[1].selectvalue=102;</script></body></html>`,
};

const select = (page, id, at, label) =>
  page.locator(`[id=${id}]`).nth(at).locator('select').selectOption({ label });

export const tests = {
  async 'relations: a double click toggles by the names, and takes the last row away'({
    page,
    open,
  }) {
    await open('/relations');
    const state = () =>
      page.evaluate(() => [
        MulRel,
        [...RelTbody.rows].map((row) => row.getAttribute('dataID')).join(),
      ]);
    await page.locator('#SearchTable_row6').dblclick();
    assert.deepEqual(await state(), ['5,9,6', '5,9,6']);
    // The selection loses what was clicked, the display its last row.
    await page.locator('#SearchTable_row5').dblclick();
    assert.deepEqual(await state(), ['9,6', '5,9']);
    await page.locator('#RelTbody tr').first().click();
    assert.deepEqual(await state(), ['9', '9']);
    await page.locator('#SearchTable_row7').dblclick();
    assert.equal(await page.locator('#wakitest td').first().innerText(), 'A&amp;B');
    await page.locator('input[value=清除选择]').click();
    assert.deepEqual(await state(), ['', '']);
  },

  async 'computed fields: the list is rebuilt from its end, names are tested by parts'({
    page,
    open,
    seen,
  }) {
    await open('/computed');
    const add = async (name, expression) => {
      await page.locator('#expresion').fill(expression);
      await page.locator('#expresionname').fill(name);
      await page.locator('input[value=保存]').click();
    };
    await add('', '1');
    await add('甲:乙;<', 'a&b<c\\%\\+');
    assert.equal(await page.evaluate(() => divHTML), '甲：乙:a&amp;b&lt;c%25%2B;旧:1;');
    await add('旧', '2'); // names of a restored list are not known
    await add('甲', '3'); // part of a name that is
    assert.deepEqual(seen.messages, [
      'alert: 计算字段名不能为空！',
      'alert: 计算字段名已存在,请另取个名字！',
    ]);
    assert.equal(await page.evaluate(() => divHTML), '旧:2;甲：乙:a&amp;b&lt;c%25%2B;旧:1;');
    // A restored row can be selected and not be given up; an added one can.
    const rows = page.locator('#StatsTbody td');
    for (const at of [0, 0, 1, 1]) await rows.nth(at).click();
    await page.locator('input[value=删除]').click();
    assert.equal(await page.evaluate(() => divHTML), '旧:2;甲：乙:a&amp;b&lt;c%25%2B;');
    await page.locator('input[value=全部清除]').click();
    assert.equal(await page.evaluate(() => divHTML + expname), '');
  },

  async 'computed fields: fields at the end, functions at the caret or around the selection'({
    page,
    open,
  }) {
    await open('/computed');
    const expression = page.locator('#expresion');
    await select(page, 'fieldcombox', 0, '*客户.折扣');
    assert.equal(await expression.inputValue(), '[*客户.折扣|102]');
    await select(page, 'fieldcombox', 0, '--选择字段--');
    await expression.fill('abc');
    await expression.evaluate((box) => {
      box.setSelectionRange(1, 2);
      box.dispatchEvent(new Event('keyup'));
    });
    const choose = (value) =>
      page.evaluate((wanted) => {
        funcombox.value = wanted;
        selectfun();
      }, value);
    await choose('ABS()');
    assert.equal(await expression.inputValue(), 'aABS(b)c');
    await expression.fill('abc');
    await expression.evaluate((box) => {
      box.setSelectionRange(1, 2);
      setLoc();
    });
    await choose('%');
    assert.equal(await expression.inputValue(), 'ab%c');
    await expression.evaluate((box) => {
      box.setSelectionRange(0, 0);
      setLoc();
    });
    await choose('GETDATE()');
    assert.equal(await expression.inputValue(), 'GETDATE()ab%c');
  },

  async 'filter: rows come and go with their logic, incomplete ones do not count'({ page, open }) {
    await open('/filter');
    const filter = () => page.evaluate(() => (setfilter(), document.all('filter').value));
    const fill = async (row, field, comparison, value, logic) => {
      if (field) await select(page, 'relfieldcombox', row, field);
      if (comparison) await select(page, 'relcomparecombox', row, comparison);
      await page.locator('[id=relexpresion]').nth(row).fill(value);
      if (logic) await select(page, 'rellogiccombox', row, logic);
    };
    const rows = () => page.evaluate(() => `${relation2.children.length} ${selectIndex}`);
    assert.equal(await filter(), '');
    await fill(0, '金额', null, '5');
    assert.equal(await filter(), ''); // no comparison
    await fill(0, '金额', '大于', '5', 'And');
    assert.equal(await rows(), '2 2');
    await fill(1, '城市', 'Like', '京');
    assert.equal(await filter(), '101,1,5,and|||111|102,6,京,-1');
    await fill(1, null, null, '京', 'Or');
    assert.equal(await rows(), '3 3');
    assert.equal(await filter(), '101,1,5,and|||111|102,6,京,or'); // the last complete row keeps its logic
    await fill(2, '金额', '等于', '7');
    await page.evaluate(() => {
      document.all('rellogiccombox')[1].value = '-1';
    });
    assert.equal(await filter(), '101,1,5,and|||101,7,7,-1'); // only the last row may be without logic
    await select(page, 'rellogiccombox', 0, '逻辑关系');
    assert.equal(await rows(), '1 1');
    assert.equal(await filter(), '101,1,5,-1');
  },

  async 'statistics: what is added, cleared and grouped'({ page, open }) {
    await open('/statistics');
    const groups = () => page.evaluate(() => (setGroupStats(), document.all('group').value));
    assert.equal(await groups(), '101,102');
    await page.locator('input[value=减少分组]').click();
    await page.locator('input[value=减少分组]').click();
    assert.equal(await groups(), '101');
    await select(page, 'groupby', 0, '--不分组--');
    assert.equal(await groups(), '');
    await select(page, 'fieldselect', 0, '订单.金额');
    await select(page, 'statsname', 0, '总和');
    await page.locator('input[value=保存]').click();
    await page.locator('input[value=保存]').click();
    assert.deepEqual(
      await page.evaluate(
        () => (
          setGroupStats(),
          [StatsRecord, document.all('statsnew').value, Result.innerText.trim()]
        ),
      ),
      ['101,4|||101,4|||', '101,4|||101,4', '1. 订单.金额_总和\n2. 订单.金额_总和'],
    );
    await page.locator('input[value=清除]').click();
    assert.deepEqual(await page.evaluate(() => [StatsRecord, count, Result.innerText]), [
      '',
      1,
      '',
    ]);
  },
};
