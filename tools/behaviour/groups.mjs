// What is asked of a binary: the groups of a recording. Each works on a fresh demo database, and
// gives pairs of a heading and a text.
//
//   demo       what `init --demo` makes
//   commands   command lines that ask
//   examples   the example of every operation
//   compiles   random definitions, each with the first rows of what it compiles to
//   pages      the answers to a request list, and the log
//
// Behind what wrote, or should not have, stand the rows that it changed, as `diff` shows them.

import { execFileSync, spawnSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import * as fs from 'node:fs';
import { dirname, join } from 'node:path';
import { startServer } from '../../web/test/flows/server.mjs';
import { definitions } from './definitions.mjs';
import { replay } from './pages.mjs';

const kCompiles = 2000;
const kExamples = new URL('../../src/app/operation_examples.tsv', import.meta.url);
// "@" stands for the database.
const kHelped =
  'init upgrade call sql compile control propagate freeze serve config sign-in-link set-password ' +
  'api-token register unregister operations';
const kCommands = [
  ...['--help', '--version', 'config', 'operations', 'operations --markdown'],
  ...['operations --access', 'compile --all --rows 3 @', 'compile --all --compare @'],
  ...kHelped.split(' ').map((command) => `${command} --help`),
  ...[1, 2, 3, 4, 5, 6, 7, 99].map((id) => `control ${id} @`),
  ...['propagate 11 --dry-run @', 'propagate UserTb_Order --dry-run @', 'upgrade --dry-run @'],
  ...['nosuch', 'init @', 'compile 99 @', 'call getQuery_Nono @', 'sql select @'],
];
const kBounds = { maxBuffer: 1 << 30, timeout: 60_000 };
const kDatabase = ['--database', 'sqlite:demo.db'];

// The length is the body's, and changes with a request's number there.
const kUnsteady = ['date', 'content-length'];

export const sum = (bytes) => createHash('sha256').update(bytes).digest('hex');

const dump = (file) => execFileSync('sqlite3', [file, '.dump'], { maxBuffer: 1 << 30 });
const runIn = (binary, cwd, words) =>
  spawnSync(binary, words, { cwd, encoding: 'utf8', input: '', ...kBounds });
const outcome = ({ status, stdout, stderr }) =>
  `exit ${status}\n${stdout}${stderr && `errors: ${stderr}`}`;

/** The rows of a database that are not those of the demo, as `diff` shows them. */
function changes(demoRows, file) {
  const { status, stdout } = spawnSync('diff', [demoRows, '-'], {
    input: dump(file),
    maxBuffer: 1 << 30,
  });
  if (status !== 0 && status !== 1) throw new Error(`diff ended with ${status}`);
  return String(stdout);
}

/** Makes a demo database in the folder, for the groups to copy, and a file with its rows. */
export function makeDemo(binary, folder) {
  const made = runIn(binary, folder, ['init', '--demo', ...kDatabase]);
  if (made.status !== 0) throw new Error(`no demo database: ${made.error ?? made.stderr}`);
  const rows = join(folder, 'rows.sql');
  fs.writeFileSync(rows, dump(join(folder, 'demo.db')));
  return { binary, folder, rows, said: outcome(made) };
}

/** Calls the action with a run of the binary on a copy of the demo database, which then goes. */
function* onCopy({ binary, folder, rows }, action) {
  const own = fs.mkdtempSync(join(folder, 'copy-'));
  const file = join(own, 'demo.db');
  fs.copyFileSync(join(folder, 'demo.db'), file);
  try {
    yield* action(
      (words) => runIn(binary, own, words),
      () => changes(rows, file),
    );
  } finally {
    fs.rmSync(own, { recursive: true });
  }
}

export function* demo(base) {
  yield ['init --demo', base.said];
  yield ['rows', fs.readFileSync(base.rows, 'utf8')];
}

export const commands = (base) =>
  onCopy(base, function* (run, changed) {
    for (const line of kCommands) {
      const words = line.split(' ').flatMap((word) => (word === '@' ? kDatabase : word));
      yield [line, outcome(run(words))];
    }
    yield ['changed rows', changed()];
  });

/** Words as a shell parts them: quotes of both kinds, no escapes. */
const shellWords = (line) =>
  (line.match(/(?:'[^']*'|"[^"]*"|[^ '"])+/g) ?? []).map((word) =>
    word.replace(/'([^']*)'|"([^"]*)"/g, (_, one, two) => one ?? two),
  );

/** Each on a copy of its own, with the rows that it leaves changed. */
export function* examples(base) {
  for (const line of fs.readFileSync(kExamples, 'utf8').trim().split('\n').slice(1)) {
    const [operation, , words] = line.split('\t');
    yield* onCopy(base, function* (run, changed) {
      const called = run(['call', ...kDatabase, operation, ...shellWords(words)]);
      yield [`${operation} ${words}`, outcome(called) + changed()];
    });
  }
}

/** What a definition compiles to, and the first rows of that. */
export const compiles = (base, counts) =>
  onCopy(base, function* (run, changed) {
    const sql = (statement) => run(['sql', '--json', ...kDatabase, '--', statement]);
    const query = (statement) => JSON.parse(sql(statement).stdout).rows;
    for (const words of definitions(query, kCompiles)) {
      const compiled = run(['call', ...kDatabase, ...words]);
      const texts = [outcome(compiled)];
      if (compiled.status === 0) {
        const statement = JSON.parse(compiled.stdout).result;
        const rows = sql(statement.replace(/^select/, 'select top 5'));
        texts.push(outcome(rows));
        if (rows.status === 0) ++counts.ran;
      }
      ++counts[compiled.status === 0 ? 'compiled' : 'refused'];
      yield [words.join(' '), texts.join('')];
    }
    yield ['changed rows', changed()];
  });

/** An answer's text; where its bytes are not of its charset, each as a character. */
function textOf({ headers, bytes }) {
  const type = headers['content-type'] ?? '';
  if (type.startsWith('image/')) return `${bytes.length} bytes ${sum(bytes)}`;
  const charset = type.includes('gb2312') ? 'gb18030' : 'utf-8';
  try {
    return new TextDecoder(charset, { fatal: true, ignoreBOM: true }).decode(bytes);
  } catch {
    return `not ${charset}: ${bytes.toString('latin1')}`;
  }
}

/**
 * The answers to a request list, in its order on one server; `own` gets what names this server and
 * this run.
 */
export async function* pages({ binary, folder }, steps, counts, own) {
  const [log, accessLog, rows] = ['log', 'access', 'rows'].map((name) => join(folder, name));
  const config = `[log]\nfile = "${log}"\naccess_file = "${accessLog}"\n`;
  const server = await startServer({ config, binary });
  const { port } = new URL(server.origin);
  const answers = [];
  let changed;
  try {
    fs.writeFileSync(rows, dump(server.file));
    await replay(server, steps, (step, answer) => answers.push([step, answer]));
    changed = changes(rows, server.file);
  } finally {
    await server.stop();
  }
  own.push([new RegExp(`(?<=:|%3A)${port}(?!\\d)`, 'g'), '{port}']);
  own.push([dirname(server.file), '{folder}']);
  const [, run] = / ([0-9a-f]{6}-)\d/.exec(fs.readFileSync(accessLog, 'utf8'));
  own.push([new RegExp(run + '\\d+', 'g'), '{request}']);
  for (const [step, answer] of answers) {
    const asked = step.run ? step.run.join(' ') : `${step.method} ${step.path.slice(0, 300)}`;
    if (step.status !== undefined && step.status !== answer.status) ++counts.otherStatus;
    const headers = Object.entries(answer.headers).filter(([name]) => !kUnsteady.includes(name));
    const about = headers.map(([name, value]) => `${name}: ${value}\n`).join('');
    yield [asked.replaceAll('\n', ' '), `${answer.status}\n${about}\n${textOf(answer)}`];
  }
  yield ['changed rows', changed];
  yield ['log', fs.readFileSync(log, 'utf8')];
}
