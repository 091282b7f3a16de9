// Attacks the product over HTTP as a stranger, as users with few rights and as a designer, and
// looks at the database before and after: what a user may not write must be the same to the last
// value, and no answer may tell of the engine, of paths or of secrets.
//
//   node tests/attack/run.mjs [requests]     a sample of that size; "all" sends every one

import { execFileSync } from 'node:child_process';
import { createHash } from 'node:crypto';
import { once } from 'node:events';
import { Agent, request } from 'node:http';
import { connect } from 'node:net';

import { kBinary, startServer } from '../../web/test/flows/server.mjs';
import { kHonest, kKeys, kNeverShown, kPayloads } from './payloads.mjs';

const kConcurrent = 8;
const kSample = 20_000;
// Rows that come and go with every page, whoever asks.
const kTransient = new Set(['Zembra_OperateLog', 'Zembra_Temp_TarloTable', 'Tarlo_SignInLink']);
const kDesigners = new Set(['Zembra_Query_Main', 'Zembra_Query_Field', 'Zembra_Query_Ver2']);

const wanted = process.argv[2] === 'all' ? Infinity : Number(process.argv[2] ?? kSample);
const agent = new Agent({ keepAlive: true, maxSockets: kConcurrent });

let passed = 0;
const failures = [];
function check(isRight, what) {
  if (isRight) passed += 1;
  else failures.push(what);
}

async function send(origin, { path, cookie, method = 'GET', body = '', headers: more = {} }) {
  const headers = { Referer: origin + '/', ...(cookie ? { Cookie: cookie } : {}) };
  if (body) headers['Content-Type'] = 'application/x-www-form-urlencoded';
  const sent = request(origin + path, { agent, method, headers: { ...headers, ...more } });
  sent.on('error', () => {}); // once tells of it, unless the answer has begun
  sent.end(body);
  const [answer] = await once(sent, 'response');
  const pieces = [];
  for await (const piece of answer) pieces.push(piece);
  const text = Buffer.concat(pieces).toString('latin1');
  return { status: answer.statusCode, headers: answer.headers, text };
}

/** A generator of fixed numbers, so that a failing sample can be sent again. */
function numbers(seed) {
  let state = seed;
  return () => (state = (Math.imul(state, 1664525) + 1013904223) >>> 0) / 2 ** 32;
}

function pageOperations() {
  return execFileSync(kBinary, ['operations', '--markdown'], { encoding: 'utf8' })
    .split('\n')
    .map((line) => line.split('|').map((cell) => cell.trim()))
    .filter((cells) => cells[3] === 'page' && cells[4] === '')
    .map((cells) => cells[1]);
}

const kSiblings = [
  '/TarloTable.Zembra?action=rows',
  '/TarloTable.Zembra?action=csv',
  '/TarloRelation.Zembra?action=options',
  '/TarloDialog.Zembra?action=schemeState',
  '/demo/form?x=1',
  '/api/controls/1/rows?x=1',
  '/api/controls/1?x=1',
  '/api/schemes/1?x=1',
  '/?cmdID=127',
];

/** Every address with every payload under every key: as a query and, for what pages post, a body. */
function* attacks(operations) {
  const paths = operations.map((name) => [`/TarloQuery.Zembra?action=${name}`, kHonest[name]]);
  for (const [path, honest = {}] of [...paths, ...kSiblings.map((path) => [path])]) {
    for (const key of new Set([...Object.keys(honest), ...kKeys])) {
      for (const payload of kPayloads) {
        const values = new URLSearchParams({ ...honest, [key]: payload });
        yield { path: `${path}&${values}` };
        if (key in honest) yield { path, method: 'POST', body: String(values) };
      }
    }
  }
}

function sample(all, most, random) {
  if (all.length <= most) return all;
  return all.filter(() => random() < most / all.length);
}

async function sendAll(origin, cookie, list, look) {
  const queue = list.values();
  const workers = Array.from({ length: kConcurrent }, async () => {
    for (const attack of queue) {
      try {
        look(attack, await send(origin, { ...attack, cookie }));
      } catch (error) {
        failures.push(`${attack.path.slice(0, 200)}: ${error.message}`);
      }
    }
  });
  await Promise.all(workers);
}

/** Each table's rows as one hash. */
function snapshot(server) {
  const tables = server
    .run(['sql', '--csv', 'select DDT_Name from Zembra_DataDict_Table'])
    .split(/\r?\n/)
    .slice(1)
    .filter(Boolean);
  const hashes = new Map();
  for (const table of [...tables, ...kPlatformTables]) {
    const rows = server.run(['sql', '--csv', `select * from ${table}`]);
    hashes.set(table, createHash('sha256').update(rows).digest('hex'));
  }
  return hashes;
}

const kPlatformTables = `
  Zembra_User Zembra_Group Zembra_Rank Zembra_Quarters Zembra_ICON Zembra_Menu Zembra_Permission
  Zembra_DataDict_Table Zembra_DataDict_Field Zembra_DataDict_Relation Zembra_Dict_TableDir
  Zembra_Dict_FieldType Zembra_Query_Main Zembra_Query_Field Zembra_Query_Ver2
  Zembra_Query_Field_Ver2 Zembra_Query_Type Zembra_Policy Zembra_SubHelp Zembra_Functions
  Zembra_MyTask_Record Zembra_WorkFlow_Custom Zembra_WorkFlowInstance_Main
  Zembra_ExchangePermission Tarlo_Credential Tarlo_ApiToken`
  .trim()
  .split(/\s+/);

function compare(who, before, after, mayChange) {
  for (const [table, hash] of before) {
    if (kTransient.has(table) || mayChange.has(table)) continue;
    check(after.get(table) === hash, `${who}: ${table} was changed`);
  }
}

/** Values that nobody who attacks may ever see. */
function plantCanaries(server) {
  for (const sql of [
    "update Zembra_User set User_joinGroupID='canary-user' where User_ID=24",
    "insert into Tarlo_Credential (User_ID,Hash) values (24,'canary-hash')",
    "insert into Zembra_Policy (Policy_Name,Policy_ParaA) values ('x','canary-policy')",
  ]) {
    server.run(['sql', sql]);
  }
}

const kMostShown = 12;
function judge(who) {
  let shown = 0;
  return ({ path, body }, answer) => {
    const where = `${who}: ${path.slice(0, 300)} ${(body ?? '').slice(0, 300)}`;
    // What was sent may come back; what is looked for must be the server's own.
    const sent = decodeURIComponent((path + '&' + (body ?? '')).replace(/\+/g, ' ')).toLowerCase();
    for (const secret of kNeverShown) {
      const hit = secret.exec(answer.text);
      const isOwn = hit && !sent.includes(hit[0].toLowerCase());
      if (isOwn && ++shown <= kMostShown) failures.push(`${where}\n    shows ${hit[0]}`);
    }
    check(answer.status < 600 && answer.status !== 0, `${where}: ${answer.status}`);
    check('content-security-policy' in answer.headers, `${where}: no policy`);
    check(!('set-cookie' in answer.headers && /a=b/.test(answer.headers['set-cookie'])), where);
  };
}

async function signIn(server, user) {
  const link = new URL(server.signInLink(user));
  const answer = await send(server.origin, { path: link.pathname + link.search });
  return answer.headers['set-cookie'][0].split(';')[0];
}

/** Each of the requests must be refused. */
async function allRefused(server, cookie, requests) {
  for (const asked of requests) {
    const { status } = await send(server.origin, { cookie, ...asked });
    check(status === 403, `not refused: ${JSON.stringify(asked)}: ${status}`);
  }
}

/** Changes without evidence of this site, and with another's. */
function crossSite(origin) {
  const path = '/TarloQuery.Zembra?action=delSearch&id=1&k7wwworvane=1';
  return [
    { Referer: '' },
    { Referer: 'http://evil.example/' },
    { Referer: `${origin}.evil.example/` },
    { Referer: `http://evil.example/?${origin}/` },
    { Referer: '', Origin: 'http://evil.example' },
    { Referer: '', Origin: 'null' },
    { 'Sec-Fetch-Site': 'cross-site' },
    { 'Sec-Fetch-Site': 'same-site' },
    { Referer: '', 'Sec-Fetch-Site': 'none' },
  ].map((headers) => ({ path, headers }));
}

/** What is posted, and the sign-out, by a browser that says nothing. */
const kSilent = [
  { path: '/sign-out' },
  { path: '/sign-out', method: 'POST' },
  { path: '/sign-in', method: 'POST', body: 'user=admin&password=x' },
  { path: '/demo/form', method: 'POST', body: 'dropDown=1' },
  { path: '/TarloQuery.Zembra', method: 'POST', body: 'action=addSearch&k7wwworvane=1' },
  { path: '/TarloTable.Zembra?action=rows', method: 'POST', body: 'key=1' },
  { path: '/api/controls/1', method: 'POST' },
].map((asked) => ({ ...asked, headers: { Referer: '' } }));

/** What a user without the sub-action asks for, and a level that no page offered. */
const kWithoutRights = `
  delSearch&id=1 addSearch addSearchDlg modisearchdlg&type=1&prikeyid=1 ctrlSearch_Usrfield
  delSearch_UsrField&id=1 savesearch_UsrField ctrlSearch_Sysfield savesearch_sysField1
  addSearchDlg_UsrModel3 showSearchDlg_UsrField&id=1`
  .trim()
  .split(/\s+/)
  .map((action) => `/TarloQuery.Zembra?action=${action}`)
  .concat(
    '/TarloRelation.Zembra?action=options&table=UserTb_Employee&link=Status&value=Name&text=Salary' +
      `&parent=${encodeURIComponent('在职')}`,
  )
  .map((path) => ({ path }));

/** What a client that writes its own bytes gets: the first line of the answer. */
function sendRaw(origin, bytes) {
  const { hostname, port } = new URL(origin);
  return new Promise((resolve) => {
    const socket = connect(Number(port), hostname);
    let text = '';
    socket.setTimeout(5000, () => socket.destroy());
    socket.on('data', (piece) => (text += piece.toString('latin1')));
    socket.on('error', () => {});
    socket.on('close', () => resolve(text.split('\r\n')[0]));
    socket.end(bytes);
  });
}

/** Requests that other servers read in another way, or that want memory. */
async function rawRequests(origin) {
  const chunked = 'POST /sign-in HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n';
  const large = 'x'.repeat(70_000);
  for (const [bytes, status] of [
    [`${chunked}0\r\nT: ${large}\r\n\r\n`, 431],
    [`${chunked}0\r\n${`T: ${'x'.repeat(500)}\r\n`.repeat(4000)}\r\n`, 431],
    [`${chunked}1;${large}\r\na\r\n0\r\n\r\n`, 431],
    [`GET /${large} HTTP/1.1\r\nHost: a\r\n\r\n`, 431],
    [`GET / HTTP/1.1\r\nHost: a\r\n${'A: b\r\n'.repeat(5000)}\r\n`, 431],
    ['GET / HTTP/1.1\r\n\r\n', 400],
    ['GET / HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n', 400],
    ['GET / HTTP/1.1\r\nHost: a\r\n folded: x\r\n\r\n', 400],
    ['POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1\r\nContent-Length: 2\r\n\r\nab', 400],
    [chunked.replace('chunked', 'chunked\r\nContent-Length: 3'), 400],
    [chunked.replace('chunked', 'gzip, chunked'), 501],
    [`${chunked}ffffffffffffffff\r\n`, 413],
    ['POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 99999999999999999999\r\n\r\n', 413],
    ['GET / HTTP/2.0\r\nHost: a\r\n\r\n', 505],
    ['\x16\x03\x01\x02\x00\x01\x00', 400],
  ]) {
    const line = await sendRaw(origin, bytes);
    check(line.startsWith(`HTTP/1.1 ${status} `), `${bytes.slice(0, 120)}: ${line}`);
  }
}

async function main() {
  const server = await startServer();
  try {
    await rawRequests(server.origin);
    const operations = pageOperations();
    check(operations.length > 50, `only ${operations.length} page operations were found`);
    const all = [...attacks(operations)];
    plantCanaries(server);
    const before = snapshot(server);

    const stranger = sample(all, wanted / 10, numbers(1));
    const look = judge('a stranger');
    await sendAll(server.origin, '', stranger, (attack, answer) => {
      look(attack, answer);
      const isClosed = [200, 303, 401, 403, 404].includes(answer.status);
      check(
        isClosed && !/SearchTable|name="TarloDialog"/.test(answer.text),
        `a stranger: ${attack.path}`,
      );
    });
    compare('a stranger', before, snapshot(server), new Set());

    for (const [user, mayChange, part, seed] of [
      ['shenwy', new Set(), 0.25, 2],
      ['fangyr', new Set(), 0.15, 3],
      ['admin', kDesigners, 0.5, 4],
    ]) {
      const cookie = await signIn(server, user);
      const refused = user === 'admin' ? [...crossSite(server.origin), ...kSilent] : kWithoutRights;
      if (user !== 'fangyr') await allRefused(server, cookie, refused);
      compare(user, before, snapshot(server), new Set());
      await sendAll(server.origin, cookie, sample(all, wanted * part, numbers(seed)), judge(user));
      compare(user, before, snapshot(server), mayChange);
    }
    const ready = await send(server.origin, { path: '/readyz' });
    check(ready.status === 200, `/readyz afterwards: ${ready.status}`);
  } finally {
    agent.destroy();
    await server.stop();
  }
  for (const failure of failures.slice(0, 40)) console.log(`FAILED ${failure}`);
  console.log(`attack: ${passed} passed, ${failures.length} failed`);
  process.exitCode = failures.length === 0 ? 0 : 1;
}

await main();
