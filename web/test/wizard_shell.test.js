// The shell's script for every choice of optional steps, forward and back.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import test from 'node:test';
import { createContext, runInContext } from 'node:vm';

const kScript = readFileSync(
  new URL('../../src/scheme/pages/wizard_shell.js', import.meta.url),
  'utf8',
).replaceAll('{{mode:built}}', '&type=1&prikeyid=7');

/** A shell with frames that hold what a designer left in them; `log` is what the script did. */
function shellWith(chosen) {
  const log = [];
  const fields = new Map();
  const field = (name) => {
    const key = name.toLowerCase(); // names are not case sensitive
    if (!fields.has(key)) fields.set(key, { value: '' });
    return fields.get(key);
  };
  const frame = (name, content = {}) => {
    const values = content.fields ?? {};
    return {
      ...content,
      document: { all: (id) => ({ value: values[id] }) },
      set location(address) {
        log.push(`${name} ${address}`);
      },
    };
  };
  const form = { submit: () => log.push(`post ${form.action} to ${form.target}`) };
  const all = Object.assign((name) => field(name), { TarloDialog: form });
  const window = {
    document: { all },
    MainTableID: { value: '10' },
    MulrelationTmp2: { checked: true },
    s1iframe: frame('s1', { MulRel: '5,6', virtul: { value: chosen } }),
    s2iframe: frame('s2', { divHTML: 'b:2;a:1;' }),
    s3iframe: frame('s3', {
      setfilter: () => log.push('setfilter'),
      fields: { filter: '1,7,x,-1' },
    }),
    s4iframe: frame('s4', {
      setGroupStats: () => log.push('setGroupStats'),
      fields: { group: '3' },
      StatsRecord: '3,4|||',
    }),
    s5iframe: frame('s5'),
    s6iframe: frame('s6', {
      fields: { QuerySys: '1', Query_Name: 'n', diccombox: '2', Query_Desc: 'd' },
    }),
  };
  window.window = window;
  window.top = {
    switchStep: () => log.push('move 1'),
    moveStep: (by) => log.push(`move ${by}`),
  };
  createContext(window);
  runInContext(kScript, window);
  return { window, log, field };
}

const kBegin = '/TarloQuery.Zembra?action=';
const kScheme = '&type=1&prikeyid=7';
const kRest = `&multi=5,6${kScheme}`;
const kPreview = 'post TarloQuery.Zembra?action=previewSearchdlg to s5iframe';
const kComputed = `s2 ${kBegin}addSearchDlg2${kRest}&sTable=10`;
const filter = (virtual) => `s3 ${kBegin}addSearchDlg3${kRest}${virtual}&sTable=10`;
const statistics = (action, virtual) =>
  `s4 ${kBegin}${action}${kRest}&virtual=${virtual}&sTable=10`;

// What each Next and each Back does, by the optional steps that were chosen.
const kRows = [
  {
    chosen: '',
    step: 0,
    next2: [`post ${kBegin}previewSearchdlg to s5iframe`, 'move 4'],
    back5: 'move -4',
  },
  {
    chosen: '1',
    step: 1,
    next2: ['move 1', kComputed],
    next3: ['move 3', kPreview],
    back5: 'move -3',
  },
  {
    chosen: '2',
    step: 2,
    next2: ['move 2', filter('')],
    next4: ['setfilter', 'move 2', kPreview],
    back3: 'move -2',
    back5: 'move -2',
  },
  {
    chosen: '1,2',
    step: 3,
    next2: ['move 1', kComputed],
    next3: [filter('&virtual=b:2;a:1'), 'move 1'],
    next4: ['setfilter', 'move 2', kPreview],
    back3: 'move -1',
    back5: 'move -2',
  },
  {
    chosen: '5',
    step: 5,
    next2: ['move 3', statistics('addsearchdlg4', '')],
    back4: 'move -3',
    back5: 'move -1',
  },
  {
    chosen: '1,5',
    step: 6,
    next2: ['move 1', kComputed],
    next3: [statistics('addSearchDlg4', 'b:2;a:1'), 'move 2'],
    back4: 'move -2',
    back5: 'move -1',
  },
  {
    chosen: '2,5',
    step: 7,
    next2: ['move 2', filter('')],
    next4: ['setfilter', 'move 1', statistics('addSearchDlg4', '')],
    back3: 'move -2',
    back4: 'move -1',
    back5: 'move -1',
  },
  {
    chosen: '1,2,5',
    step: 8,
    next2: ['move 1', kComputed],
    next3: [filter('&virtual=b:2;a:1'), 'move 1'],
    next4: ['setfilter', 'move 1', statistics('addSearchDlg4', 'b:2;a:1')],
    back3: 'move -1',
    back4: 'move -1',
    back5: 'move -1',
  },
];

for (const row of kRows) {
  test(`the optional steps "${row.chosen}"`, () => {
    const { window, log, field } = shellWith(row.chosen);
    const did = (script) => {
      log.length = 0;
      window[script]();
      return [...log];
    };
    assert.deepEqual(did('nextStep1'), [
      'move 1',
      `s1 ${kBegin}addSearchDlg1&mul=1${kScheme}&sTable=10`,
    ]);
    assert.deepEqual(did('nextStep2'), row.next2);
    assert.equal(field('stepTxt').value, row.step);
    assert.equal(field('step0Multi').value, '5,6');
    if (row.next3) assert.deepEqual(did('nextStep3'), row.next3);
    if (row.next4) assert.deepEqual(did('nextStep4'), row.next4);
    assert.equal(field('step1Virtual').value, row.next3 ? 'b:2;a:1' : '');
    assert.equal(field('step2Rel').value, row.next4 ? '1,7,x,-1' : '');
    field('btnNext').disabled = true;
    for (const [script, moved] of [
      ['goBack3', row.back3],
      ['goBack4', row.back4],
      ['goBack5', row.back5],
    ]) {
      if (moved) assert.deepEqual(did(script), [moved], script);
    }
    assert.equal(field('btnNext').disabled, false);
  });
}

test('statistics, the last form and the save are copied and posted', () => {
  const { window, log, field } = shellWith('5');
  window.nextStep2();
  log.length = 0;
  window.nextStep5();
  assert.deepEqual(log.splice(0), ['move 1', 'setGroupStats', kPreview]);
  assert.equal(field('step3Groupby').value, '3');
  assert.equal(field('step3Stats').value, '3,4|||');
  window.nextStep6();
  assert.deepEqual(log.splice(0), ['move 1', `s6 ${kBegin}addSearchDlg6${kRest}&sTable=10`]);
  window.SaveQuery();
  assert.deepEqual(log, ['post TarloQuery.Zembra?action=addSearch to pophidden']);
  const saved = ['step4Sys', 'step4Name', 'step4Dic', 'step4Memo'].map((name) => field(name).value);
  assert.deepEqual(saved, ['1', 'n', '2', 'd']);
});
