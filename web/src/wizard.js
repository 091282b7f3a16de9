// The stepped dialog: positions, the rail of steps, and what leaves a step. The page's own scripts
// move through switchStep() and moveStep(n); a step without a script moves by one.

import { attempt, define, libraryOf } from './library.js';
import { StepMemory } from './step_memory.js';

const kSize = { width: 940, height: 600 };
const kLongestLoad = 30_000; // milliseconds; then the page may be used again, whatever came
const kFocusable =
  'input:not([type=hidden]):not(:disabled),select,textarea,button,tarlo-ui,[tabindex="0"]';

class Wizard {
  constructor(window, library, scripts) {
    this.window = window;
    this.library = library;
    this.document = window.document;
    this.scripts = scripts;
    this.position = 0;
    this.passed = new Set(); // the positions left by the forward button
    this.isTouched = false;
    this.isDone = false;
    this.steps = [...this.document.querySelectorAll('.tarlo-step')];
    this.memory = new StepMemory(this.document);
    this.busy = undefined;
  }

  find(id) {
    return this.document.getElementById(id);
  }

  start() {
    this.drawRail();
    this.listen();
    this.show();
    if (typeof this.window.doFirstStep === 'function') this.window.doFirstStep();
  }

  listen() {
    const form = this.find('TarloDialog');
    // Enter in a text box would post the form; scripts post it by submit(), which asks nobody.
    form.addEventListener('submit', (event) => event.preventDefault());
    const post = form.submit.bind(form);
    form.submit = () => {
      this.waitFor(this.frameNamed(form.target));
      post();
    };
    this.find('btnNext').onclick = () => this.leave('next');
    this.find('btnBack').onclick = () => this.leave('back');
    this.find('btnCancel').onclick = () => this.cancel();
    this.find('btnHelp').onclick = () => this.toggleHelp();
    this.touchedBy(this.document);
    this.document.addEventListener('load', (event) => this.loaded(event.target), true);
    define(this.window, { catchCode: (code) => String(code) === '27' && this.cancel() });
  }

  frameNamed(name) {
    return this.document.querySelector(`iframe[name="${name}"]`);
  }

  touchedBy(document) {
    for (const type of ['input', 'change']) {
      document.addEventListener(type, () => (this.isTouched = true), true);
    }
  }

  loaded(frame) {
    if (frame.localName !== 'iframe') return;
    const document = attempt(() => frame.contentDocument);
    if (document) attempt(() => this.touchedBy(document));
    if (this.busy?.frame === frame) this.ready();
    if (document && this.steps[this.position]?.contains(frame)) this.focusStep();
  }

  waitFor(frame) {
    if (!frame) return;
    this.ready();
    this.document.body.classList.add('tarlo-busy');
    this.find('dialogState').textContent = '正在处理，请稍候…';
    const timer = this.window.setTimeout(() => this.ready(), kLongestLoad);
    this.busy = { frame, timer };
  }

  ready() {
    if (!this.busy) return;
    this.window.clearTimeout(this.busy.timer);
    this.busy = undefined;
    this.document.body.classList.remove('tarlo-busy');
    this.find('dialogState').textContent = '';
  }

  /** Runs the script of the step, or moves by one. A step that still loads is not left forward. */
  leave(way) {
    if (way === 'next' && this.busy) return;
    this.ready();
    const before = this.position;
    if (way === 'next') {
      this.passed.add(before);
      this.memory.remember(this.steps[before]);
    }
    const script = this.scripts[this.position][way];
    if (script) (0, this.window.eval)(script);
    else this.move(way === 'next' ? 1 : -1);
    // A script that moves forward loads the new step's page, whose frame cannot be watched earlier.
    if (script && this.position > before && !this.busy) {
      this.waitFor(this.steps[this.position].querySelector('iframe'));
    }
  }

  move(by) {
    const next = this.position + Number(by);
    if (next >= this.steps.length) return this.finish();
    this.position = Math.max(0, next);
    if (by > 0) this.isTouched = true;
    else this.memory.restore(this.steps[this.position]);
    this.show();
  }

  finish() {
    this.isDone = true;
    this.window.returnValue = 1;
    this.window.close();
  }

  cancel() {
    const loses = this.isTouched && !this.isDone;
    if (loses && !this.window.confirm('已填写的内容尚未保存，确定要关闭吗？')) return;
    this.isDone = true;
    this.window.close();
  }

  toggleHelp() {
    const help = this.find('dialogHelp');
    help.hidden = !help.hidden;
    this.find('btnHelp').value = help.hidden ? '显示帮助' : '隐藏帮助';
  }

  drawRail() {
    const rail = this.find('dialogRail');
    this.steps.forEach((step, at) => {
      const item = this.document.createElement('li');
      item.textContent = step.getAttribute('aria-label') || `第 ${at + 1} 步`;
      item.dataset.number = at + 1;
      rail.append(item);
    });
  }

  show() {
    const last = this.steps.length - 1;
    this.steps.forEach((step, at) =>
      step.classList.toggle('tarlo-step-current', at === this.position),
    );
    [...this.find('dialogRail').children].forEach((item, at) => {
      item.toggleAttribute('aria-current', at === this.position);
      if (at === this.position) item.setAttribute('aria-current', 'step');
      item.dataset.state = this.stateOf(at);
    });
    this.find('btnBack').disabled = this.position === 0;
    this.find('btnNext').value = this.position === last ? '完成' : '下一步';
    this.focusStep();
  }

  /**
   * How the rail draws the position: what was jumped over on the way is told from what was done.
   */
  stateOf(at) {
    if (at >= this.position) return at === this.position ? 'current' : 'open';
    return this.passed.has(at) ? 'done' : 'skipped';
  }

  focusStep() {
    const step = this.steps[this.position];
    const frame = step.querySelector('iframe');
    const page = frame && attempt(() => frame.contentDocument);
    const first = (page?.body ?? step).querySelector(kFocusable);
    attempt(() => (first ?? frame)?.focus());
  }
}

export function install(window, library) {
  let wizard;
  define(window, {
    TarloWizard: {
      start(scripts) {
        wizard = new Wizard(window, library, scripts);
        libraryOf(window.top)?.fitDialog?.(window, kSize);
        define(window, {
          switchStep: () => wizard.move(1),
          moveStep: (by) => wizard.move(by),
        });
        wizard.start();
      },
    },
  });
}
