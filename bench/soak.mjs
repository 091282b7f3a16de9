// node bench/soak.mjs [SECONDS]: a mixed load on the server at 32 connections, with faults, and
// what it must not do: an error that no fault explains, a saved row that is missing or there twice,
// memory that grows. TARLO_BINARY names the binary. Ends with 1 when one of these happened.

import { execFile, execFileSync, spawn } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { Agent, request } from 'node:http';
import { kBinary, startServer } from '../web/test/flows/server.mjs';

const kSeconds = Number(process.argv[2] ?? 240);
const kConnections = 32;
const kFaultSeconds = 3;
const kGraceMs = 1500; // what a fault held up may come in later
const kCutShare = 0.03;
const kMemoryGrowth = 1.15;

// All the connections are one session's.
const server = await startServer({
  config: '[server]\noperations_per_session = 64\noperations_per_user = 64\n',
});
const { hostname, port } = new URL(server.origin);
const agent = new Agent({ keepAlive: true, maxSockets: kConnections });
const begin = Date.now();
const elapsed = () => (Date.now() - begin) / 1000;

/** One request; the status is 0 for one that this side cut. */
function send(path, { form, cookie, cutAfter } = {}) {
  return new Promise((resolve) => {
    const body = form && new URLSearchParams(form).toString();
    const headers = { referer: server.origin + '/', ...(cookie && { cookie }) };
    if (body) headers['content-type'] = 'application/x-www-form-urlencoded';
    const method = body ? 'POST' : 'GET';
    const outgoing = request({ hostname, port, path, method, headers, agent }, (answer) => {
      const parts = [];
      answer.on('data', (part) => parts.push(part));
      answer.on('end', () =>
        resolve({
          status: answer.statusCode,
          headers: answer.headers,
          text: Buffer.concat(parts).toString('latin1'),
        }),
      );
      answer.on('error', () => resolve({ status: 0, text: '' }));
    });
    outgoing.on('error', (error) =>
      resolve({ status: cutAfter === undefined ? -1 : 0, text: String(error) }),
    );
    if (cutAfter !== undefined) setTimeout(() => outgoing.destroy(), cutAfter);
    outgoing.end(body);
  });
}

async function signIn() {
  const { pathname, search } = new URL(server.signInLink());
  const answer = await send(pathname + search);
  const cookie = answer.headers['set-cookie']?.map((line) => line.split(';')[0]).join('; ');
  if (!cookie) throw new Error('the sign-in gave no session: ' + answer.status);
  return cookie;
}

const kScheme = {
  TableName: '11',
  step0Multi: '1',
  Mulrelation: '0',
  step4Sys: '0',
  step4Dic: '1',
  step4Memo: '',
};
const saved = new Set();
const refused = new Set();
const unknown = new Set();
let number = 0;

const kLoads = [
  { name: 'list', share: 40, path: '/TarloQuery.Zembra?action=ctrlSearch', good: /SearchTable/ },
  { name: 'preview', share: 25, form: { action: 'previewSearchdlg', ...kScheme }, good: /<table/ },
  { name: 'save', share: 10, form: { action: 'addSearch', ...kScheme }, good: /switchStep/ },
  { name: 'rows', share: 25, path: '/api/controls/1/rows', good: /"rows"/ },
];
const counts = Object.fromEntries(
  kLoads.map(({ name }) => [name, { done: 0, cut: 0, failed: 0, excused: 0 }]),
);
const unexplained = [];

function pick() {
  let at = Math.random() * 100;
  return kLoads.find(({ share }) => (at -= share) < 0) ?? kLoads[0];
}

// When faults were on, as [from, to] in milliseconds.
const faults = [];
const isExcused = (from, to) =>
  faults.some((fault) => from <= (fault.to ?? Infinity) + kGraceMs && to >= fault.from);

async function once(cookie) {
  const load = pick();
  const count = counts[load.name];
  const form = load.form && { ...load.form };
  const name = `soak ${++number}`;
  if (load.name === 'save') form.step4Name = name;
  const cutAfter = Math.random() < kCutShare ? Math.random() * 10 : undefined;
  const from = Date.now();
  const answer = await send(load.path ?? '/TarloQuery.Zembra', { form, cookie, cutAfter });
  const isGood = answer.status === 200 && load.good.test(answer.text);
  if (load.name === 'save') (isGood ? saved : answer.status === 0 ? unknown : refused).add(name);
  if (isGood) ++count.done;
  else if (answer.status === 0) ++count.cut;
  else if (isExcused(from, Date.now())) ++count.excused;
  else {
    ++count.failed;
    if (unexplained.length < 5)
      unexplained.push(
        `${load.name} ${answer.status} at ${elapsed()}: ${answer.text.slice(0, 200)}`,
      );
  }
}

async function fault(name, action) {
  const entry = { name, from: Date.now() };
  faults.push(entry);
  await action();
  entry.to = Date.now();
}

/** Somebody else holds the whole database. */
function lockDatabase() {
  const script =
    'import sqlite3,sys,time\nc=sqlite3.connect(sys.argv[1],timeout=30)\nc.execute("begin exclusive")\n' +
    `time.sleep(${kFaultSeconds})\nc.rollback()`;
  return new Promise((resolve) =>
    spawn('python3', ['-c', script, server.file]).on('exit', resolve),
  );
}

/** No file may be written beyond its first page. */
async function fillDisk() {
  const limit = (size) =>
    execFileSync('prlimit', ['--pid', String(server.pid), `--fsize=${size}:`]);
  limit(4096);
  await new Promise((later) => setTimeout(later, kFaultSeconds * 1000));
  limit('unlimited');
}

const propagations = [];
const propagate = () =>
  new Promise((resolve) =>
    execFile(
      kBinary,
      ['propagate', 'UserTb_Region', '--database', `sqlite:${server.file}`],
      (error) => {
        propagations.push(error?.code ?? 0);
        resolve();
      },
    ),
  );

const memory = [];
const residentMegabytes = () =>
  Number(/VmRSS:\s+(\d+)/.exec(readFileSync(`/proc/${server.pid}/status`, 'utf8'))[1]) / 1024;

const cookie = await signIn();
const end = begin + kSeconds * 1000;
const at = (share, action) => setTimeout(action, kSeconds * 1000 * share);
const sampling = setInterval(() => memory.push(residentMegabytes()), 500);
at(0.2, propagate);
at(0.35, () => fault('locked', lockDatabase));
at(0.6, () => fault('disk full', fillDisk));
at(0.8, propagate);
await Promise.all(
  Array.from({ length: kConnections }, async () => {
    while (Date.now() < end) await once(cookie);
  }),
);
clearInterval(sampling);

const stored = new Map();
const listing = JSON.parse(
  server.run([
    'sql',
    '--json',
    "select Query_Name from Zembra_Query_Main where Query_Name like 'soak %'",
  ]),
);
for (const [name] of listing.rows) stored.set(name, (stored.get(name) ?? 0) + 1);
const lost = [...saved].filter((name) => !stored.has(name));
const doubled = [...stored].filter(([, times]) => times > 1).map(([name]) => name);
const ghosts = [...refused].filter((name) => stored.has(name));

const middle = (samples) => [...samples].sort((a, b) => a - b)[Math.floor(samples.length / 2)];
// By then the page caches of all connections are full, which they may be.
const early = middle(
  memory.slice(Math.floor(memory.length * 0.65), Math.floor(memory.length * 0.75)),
);
const late = middle(memory.slice(Math.floor(memory.length * 0.8)));

console.log(`${kSeconds} s at ${kConnections} connections`);
console.table(counts);
console.log(
  'faults:',
  faults
    .map(
      ({ name, from, to }) =>
        `${name} ${((from - begin) / 1000).toFixed(1)}-${((to - begin) / 1000).toFixed(1)} s`,
    )
    .join(', '),
);
console.log(
  `saves: ${saved.size} said, ${refused.size} refused, ${unknown.size} cut; ` +
    `lost ${lost.length}, doubled ${doubled.length}, stored though refused ${ghosts.length}`,
);
console.log(`propagate ended with ${propagations.join(', ')}`);
const steps = Array.from({ length: 11 }, (_, i) =>
  memory[Math.min(memory.length - 1, Math.floor((memory.length * i) / 10))].toFixed(0),
);
console.log('memory by tenths:', steps.join(' '), 'MiB');
console.log(
  `memory: ${early.toFixed(0)} MiB early, ${late.toFixed(0)} MiB late, ratio ${(late / early).toFixed(2)}`,
);
unexplained.forEach((line) => console.log('UNEXPLAINED', line));
const health = await send('/readyz');
await server.stop();
const failed = Object.values(counts).reduce((sum, { failed }) => sum + failed, 0);
const isGood =
  !failed &&
  !lost.length &&
  !doubled.length &&
  !ghosts.length &&
  late / early < kMemoryGrowth &&
  health.status === 200;
console.log(isGood ? 'soak: good' : 'soak: BAD');
process.exit(isGood ? 0 : 1);
