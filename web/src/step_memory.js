// What a step has when it is left forward, for the way back to it. The script that leaves a step
// writes into its hidden fields, and the answers of the next steps take the place of the page in the
// hidden frame whose functions the step's buttons call: once more forward would then send something
// else, and the buttons would do nothing. What later steps write into the fields of an earlier one
// is what they have to say, and stays.

import { attempt } from './library.js';

const kAnswerFrame = 'pophidden';

/** The functions that the page of a frame declares in scripts of its own: [name, source]. */
function declaredFunctions(frame) {
  const scripts = [...frame.contentDocument.scripts].filter((script) => !script.src);
  const names = scripts.flatMap(({ text }) =>
    [...text.matchAll(/\bfunction\s+([\w$]+)/g)].map(([, name]) => name),
  );
  return names
    .map((name) => [name, frame.contentWindow[name]])
    .filter(([, value]) => typeof value === 'function')
    .map(([name, value]) => [name, value.toString()]);
}

export class StepMemory {
  constructor(document) {
    this.document = document;
    this.steps = new Map();
    this.left = undefined; // the step left last; what is written now is written by leaving it
  }

  answerFrame() {
    return this.document.querySelector(`iframe[name=${kAnswerFrame}]`);
  }

  remember(step) {
    this.closeLeft();
    const fields = [...step.querySelectorAll('input[type=hidden]')];
    this.steps.set(step, {
      fields: fields.map((field) => [field, field.value]),
      functions: attempt(() => declaredFunctions(this.answerFrame())) ?? [],
    });
    this.left = step;
  }

  /** Of the step left last, only the fields that leaving it has written into are its own. */
  closeLeft() {
    const memory = this.steps.get(this.left);
    if (memory) memory.fields = memory.fields.filter(([field, value]) => field.value !== value);
    this.left = undefined;
  }

  /** Nothing for a step that was not left forward. */
  restore(step) {
    const { fields = [], functions = [] } = this.steps.get(step) ?? {};
    if (this.left !== step) this.closeLeft();
    this.left = undefined;
    for (const [field, value] of fields) field.value = value;
    const page = attempt(() => this.answerFrame().contentWindow);
    for (const [name, source] of functions) {
      if (!page || typeof page[name] === 'function') continue;
      attempt(() => (page[name] = page.eval(`(${source})`)));
    }
  }
}
