// The pages of the browser's flows, in two parts. A stand-in for the binary notes what the flows
// ask of it: commands, and requests by a proxy in front of the server. `replay` asks another binary
// for the same, one thing after the other.
//
// A request list is a list of steps: a command line, {run, input}, or a request, {method, path,
// headers, body, status}, with the status that the browser was given. What the server made up
// (sessions, links, keys of grids) stands there as {{STEP.PLACE}}, the place in the answer to an
// earlier step, and its port as {{port}}.

import { spawn, spawnSync } from 'node:child_process';
import { appendFileSync, readFileSync } from 'node:fs';
import { Agent, createServer, request } from 'node:http';
import { freePort } from '../../web/test/flows/server.mjs';

// All that the server reads of a request's headers.
const kHeaders = 'host origin referer sec-fetch-site content-type cookie if-none-match'.split(' ');
const kLongest = 60_000;
const kMostHeader = 1 << 20; // an address of the flows is beyond what the server takes

/** What the server makes up: 16 or 32 random bytes. */
export const kSecret = /(?<![0-9a-f])(?:[0-9a-f]{32}){1,2}(?![0-9a-f])/g;

function bytesOf(stream) {
  return new Promise((resolve, reject) => {
    const pieces = [];
    stream.on('data', (piece) => pieces.push(piece));
    stream.on('end', () => resolve(Buffer.concat(pieces)));
    stream.on('error', reject);
  });
}

/** Sends it and gives status, headers and the bytes of the answer. */
async function ask(port, { method, path, headers, body }, agent = false) {
  const answer = await new Promise((resolve, reject) => {
    const signal = AbortSignal.timeout(kLongest);
    const to = { host: '127.0.0.1', port, method, path, headers, agent, signal };
    const sent = request({ ...to, maxHeaderSize: kMostHeader, setHost: false }, resolve);
    sent.on('error', reject);
    sent.end(Buffer.from(body, 'latin1'));
  });
  const { statusCode, headers: given, rawHeaders } = answer;
  return { status: statusCode, headers: given, rawHeaders, bytes: await bytesOf(answer) };
}

const secretsOfAnswer = ({ headers, bytes }) =>
  [...(headers['set-cookie'] ?? []), bytes.toString('latin1')].join('\n').match(kSecret) ?? [];

/** One line of the stand-in's notes. Commands are processes of their own and write there too. */
const note = (line) => appendFileSync(process.env.BEHAVIOUR_NOTES, JSON.stringify(line) + '\n');

async function standBeforeServer(binary, words) {
  const at = words.indexOf('--listen') + 1;
  const [host, port] = words[at].split(':');
  const inner = await freePort();
  note({ port });
  const server = spawn(binary, words.with(at, `${host}:${inner}`), { stdio: 'ignore' });
  server.on('exit', (code) => process.exit(code ?? 1));
  process.on('SIGTERM', () => server.kill('SIGTERM'));
  let requests = 0;
  const proxy = createServer({ maxHeaderSize: kMostHeader }, async (asked, reply) => {
    const { method, url: path, headers, rawHeaders } = asked;
    const body = (await bytesOf(asked)).toString('latin1');
    const number = path === '/readyz' ? 0 : ++requests;
    const read = kHeaders.filter((name) => name in headers).map((name) => [name, headers[name]]);
    if (number) note({ number, method, path, headers: Object.fromEntries(read), body });
    try {
      const answer = await ask(inner, { method, path, headers: rawHeaders, body });
      const secrets = secretsOfAnswer(answer);
      if (number) note({ answerTo: number, status: answer.status, secrets });
      reply.sendDate = false;
      reply.writeHead(answer.status, answer.rawHeaders).end(answer.bytes);
    } catch {
      reply.destroy();
    }
  });
  proxy.listen(Number(port), host);
}

/** Does what the flows ask of the binary, and notes it. */
export function standIn(words) {
  const binary = process.env.BEHAVIOUR_BINARY;
  if (words[0] === 'serve') return standBeforeServer(binary, words);
  const input = readFileSync(0, 'utf8');
  const { status, stdout, stderr } = spawnSync(binary, words, { input });
  process.stdout.write(stdout);
  process.stderr.write(stderr);
  process.exitCode = status ?? 1;
  if (words[0] === 'init') return undefined; // a replay has a database of its own
  const run = words.toSpliced(words.indexOf('--database'), 2);
  return note({ run, input, secrets: String(stdout).match(kSecret) ?? [] });
}

/** The request list of a stand-in's notes. */
export function requestList(notes) {
  const answers = new Map(notes.filter((line) => line.answerTo).map((l) => [l.answerTo, l]));
  const ownPort = new RegExp(`(:|%3A)${notes.find((line) => line.port).port}(?!\\d)`, 'g');
  const places = new Map();
  return notes
    .filter((line) => line.run || line.number)
    .map(({ number, secrets, ...step }, index) => {
      const answer = answers.get(number);
      const text = JSON.stringify({ ...step, status: answer?.status })
        .replace(ownPort, '$1{{port}}')
        .replace(kSecret, (secret) => `{{${places.get(secret) ?? 'unknown'}}}`);
      for (const [place, secret] of (secrets ?? answer?.secrets ?? []).entries())
        if (!places.has(secret)) places.set(secret, `${index}.${place}`);
      return JSON.parse(text);
    });
}

// Times of saves have seconds, and lists are ordered by them.
const kSaves = /action=(addsearch|savesearch\w*)(?!\w)/i;
const nextSecond = () => new Promise((later) => setTimeout(later, 1010 - (Date.now() % 1000)));

const notAnswered = ({ code, message }) => ({
  status: 'none',
  headers: {},
  bytes: Buffer.from(code ?? message),
});

/** Takes the steps on a server of web/test/flows/server.mjs: `take(step, answer)` for each. */
export async function replay(server, steps, take) {
  const { port } = new URL(server.origin);
  const agent = new Agent({ keepAlive: true, maxSockets: 1 });
  const known = new Map([['port', port]]);
  for (const [index, step] of steps.entries()) {
    const text = JSON.stringify(step);
    const asked = JSON.parse(
      text.replace(/\{\{([\w.]+)\}\}/g, (_, name) => known.get(name) ?? 'none'),
    );
    let answer;
    if (asked.run) {
      try {
        answer = { status: 0, headers: {}, bytes: Buffer.from(server.run(asked.run, asked.input)) };
      } catch (error) {
        answer = { status: error.status, headers: {}, bytes: Buffer.from(error.stderr) };
      }
    } else {
      if (kSaves.test(`${asked.path} ${asked.body}`)) await nextSecond();
      answer = await ask(port, asked, agent).catch((error) => notAnswered(error));
    }
    for (const [place, secret] of secretsOfAnswer(answer).entries())
      known.set(`${index}.${place}`, secret);
    take(step, answer);
  }
  agent.destroy();
}
