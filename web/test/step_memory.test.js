// What a step has again when the user comes back to it.

import assert from 'node:assert/strict';
import test from 'node:test';
import { StepMemory } from '../src/step_memory.js';

/** A memory of steps with these hidden fields: {step: {field: value}}. */
function memoryOf(steps) {
  const answer = { contentDocument: { scripts: [] }, contentWindow: {} };
  const memory = new StepMemory({ querySelector: () => answer });
  const made = Object.fromEntries(
    Object.entries(steps).map(([name, fields]) => {
      const elements = Object.fromEntries(
        Object.entries(fields).map(([field, value]) => [field, { value }]),
      );
      return [name, { elements, querySelectorAll: () => Object.values(elements) }];
    }),
  );
  return {
    leave: (step, written = {}) => {
      memory.remember(made[step]);
      for (const [name, value] of Object.entries(written)) {
        const [owner, field] = name.split('.');
        made[owner].elements[field].value = value;
      }
    },
    back: (step) => memory.restore(made[step]),
    values: (step) => Object.values(made[step].elements).map(({ value }) => value),
  };
}

test('what leaving a step wrote into its own fields is taken back', () => {
  const { leave, back, values } = memoryOf({
    first: { id: '', action: 'a' },
    second: { list: '' },
  });
  leave('first', { 'first.action': 'b' });
  leave('second', { 'second.list': 'x', 'first.id': '7' });
  back('second');
  assert.deepEqual(values('second'), ['']);
  back('first');
  assert.deepEqual(values('first'), ['7', 'a']);
  leave('first', { 'first.action': 'b' });
  back('first');
  assert.deepEqual(values('first'), ['7', 'a']);
});

test('what later steps wrote into the form of the first one stays there', () => {
  const { leave, back, values } = memoryOf({
    table: { stepTxt: '2', step0Multi: '0', step1Virtual: '' },
    relations: {},
    computed: {},
  });
  leave('table');
  leave('relations', { 'table.stepTxt': '1', 'table.step0Multi': '5,6' });
  leave('computed', { 'table.step1Virtual': 'N:1' });
  for (const step of ['computed', 'relations', 'table']) back(step);
  assert.deepEqual(values('table'), ['1', '5,6', 'N:1']);
});
