// The lists that the platform's tags carry.

import assert from 'node:assert/strict';
import test from 'node:test';
import { levelsOf, optionsOfData, optionsOfXml } from '../src/widgets/options.js';
import { pixelsOf } from '../src/widgets/widget.js';

test('data: labels and values, an empty last option, line ends in values', () => {
  assert.deepEqual(optionsOfData('逻辑关系<<<<<<-1>>>>>>And<<<<<<and\r\n>>>>>>'), [
    { label: '逻辑关系', value: '-1' },
    { label: 'And', value: 'and' },
  ]);
  assert.deepEqual(optionsOfData('a<<<<<<b<<<<<<c'), [{ label: 'a', value: 'b<<<<<<c' }]);
  assert.deepEqual(optionsOfData('\u00a0\u00a0x<<<<<<1'), [{ label: '\u00a0\u00a0x', value: '1' }]);
  assert.deepEqual(optionsOfData(''), []);
});

test('src: captions that the attribute has decoded once, doubled apostrophes', () => {
  const option = (value, text) => `<option><value>${value}</value><text>${text}</text></option>`;
  const xml = `<?xml version = '1.0'?><root>${option(' 1 ', "a&b''c")}${option('-1', '&lt;x&gt; &#20013;')}</root>`;
  assert.deepEqual(optionsOfXml(xml), [
    { value: '1', label: "a&b''c" },
    { value: '-1', label: '<x> 中' },
  ]);
  assert.deepEqual(optionsOfXml(''), []);
});

test('levels of a cascade, with and without a condition', () => {
  assert.deepEqual(levelsOf('[T],[T].[a],[T].[b],[T].[c],Zembra_Flag <> 0;U,a,b,c;'), [
    {
      table: '[T]',
      link: '[T].[a]',
      value: '[T].[b]',
      text: '[T].[c]',
      condition: 'Zembra_Flag <> 0',
    },
    { table: 'U', link: 'a', value: 'b', text: 'c', condition: '' },
  ]);
  assert.deepEqual(levelsOf(''), []);
});

test('widths in the ways that pages write them', () => {
  assert.deepEqual(['190', 'width:150', '80px', '', null].map(pixelsOf), [
    190,
    150,
    80,
    undefined,
    undefined,
  ]);
});
