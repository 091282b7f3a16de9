// Records what a binary answers, and compares two recordings: for changes of the code that are to
// change no behaviour.
//
//   node run.mjs record BINARY FOLDER [--requests FILE]   without FILE the pages are left out
//   node run.mjs compare FOLDER FOLDER    0 the same, 1 differences, 2 a recording is incomplete
//   node run.mjs requests FILE BINARY     runs the browser's flows and keeps what they asked for
//
// groups.mjs says what is asked. Needs the programs sqlite3 and diff; `requests` needs chromium
// too, and `npm ci` in web.
//
// Answers are recorded as they are but for what differs whenever a binary is asked twice:
//   {now}, {today}  a time between the recording's begin and 15 minutes from now, for links end
//                   after ten; a date without a time of such a day
//   {secret N}      32 or 64 hexadecimal digits: sessions, links, keys of grids, nonces, hashes of
//                   these; by first appearance in the answer
//   {stamp N}       names a scheme's state, made of its time; by first appearance in the group
//   {hash}          a password's, which is salted
//   {port}, {folder}, {request}   the server's port, its database's folder, a request's number
// Of an answer's headers Date and Content-Length are left out.
// What is another day's (days that a task has left, rows chosen by GETDATE()) stands as it is:
// compare recordings of one day.

import { spawnSync } from 'node:child_process';
import * as fs from 'node:fs';
import { tmpdir } from 'node:os';
import { join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { commands, compiles, demo, examples, makeDemo, pages, sum } from './groups.mjs';
import { kSecret, requestList, standIn } from './pages.mjs';

const kMostShown = 10;
const kShown = 160;
const kShort = 200; // texts that are no longer stand where they are, however often
const kLinkLife = 15 * 60_000;
const kMoment =
  /(?<!\d)(20\d\d)[-,年](\d\d?)[-,月](\d\d?)(?:[ ,](\d\d?)[:,](\d\d?)[:,](\d\d?)(?:\.\d+)?|日 星期.)?(?!\d)/g;

const path = (name) => fileURLToPath(new URL(name, import.meta.url));
const readJson = (name) => JSON.parse(fs.readFileSync(name, 'utf8'));

/** Replaces what differs at every run; `own` holds pairs of a pattern and a word. */
function plainTexts(since, own) {
  const numbered = (map, key) => map.set(key, map.get(key) ?? map.size + 1).get(key);
  const stamps = new Map();
  const moment = (text, year, month, day, hour = 24, minute = 0, second = 0) => {
    const time = Date.UTC(year, month - 1, day, hour, minute, second);
    if (time < since || time > Date.now() + (hour === 24 ? 86_400_000 : kLinkLife)) return text;
    return hour === 24 ? '{today}' : '{now}';
  };
  return (text) => {
    const secrets = new Map();
    return own
      .reduce((all, [pattern, word]) => all.replaceAll(pattern, word), text)
      .replace(kSecret, (secret) => `{secret ${numbered(secrets, secret)}}`)
      .replace(/(?<="stamp":")[0-9a-f]{16}/g, (stamp) => `{stamp ${numbered(stamps, stamp)}}`)
      .replace(/\$argon2id\$[^']*/g, '{hash}')
      .replace(kMoment, moment);
  };
}

/** Writes a group's file and gives the number of its entries. An answer stands there once. */
async function writeGroup(file, entries, since, own = []) {
  const plain = plainTexts(since, own);
  const seen = new Map();
  const pieces = [];
  for await (const [heading, answer] of entries) {
    const number = pieces.length + 1;
    const text = plain(answer);
    const first = seen.get(text);
    if (text.length > kShort && !first) seen.set(text, number);
    const lines = first ? [`as ${first}`] : text.split('\n');
    pieces.push(`@ ${number} ${plain(heading)}\n${lines.map((line) => `  ${line}\n`).join('')}`);
  }
  fs.writeFileSync(file, pieces.join(''));
  return pieces.length;
}

async function record(binary, folder, requests) {
  const since = Math.floor(Date.now() / 1000) * 1000;
  const summary = join(folder, 'summary.json');
  fs.mkdirSync(folder, { recursive: true });
  fs.rmSync(summary, { force: true }); // comes last: without it a recording is incomplete
  const temporary = fs.mkdtempSync(join(tmpdir(), 'tarlo-behaviour-'));
  const counts = { compiled: 0, refused: 0, ran: 0 };
  const groups = {};
  const group = async (name, entries, own) => {
    const began = Date.now();
    groups[name] = await writeGroup(join(folder, name + '.txt'), entries, since, own);
    console.log(`${name}: ${groups[name]} in ${Math.round((Date.now() - began) / 1000)} s`);
  };
  try {
    const base = makeDemo(binary, temporary);
    await group('demo', demo(base));
    await group('commands', commands(base));
    await group('examples', examples(base));
    await group('compiles', compiles(base, counts));
    if (requests) {
      const own = [];
      counts.otherStatus = 0;
      await group('pages', pages(base, readJson(requests), counts, own), own);
    }
  } finally {
    fs.rmSync(temporary, { recursive: true });
  }
  const day = new Date(since).toISOString().slice(0, 10);
  const inputs = { requests: requests ? sum(fs.readFileSync(requests)) : '' };
  const all = { day, binary: sum(fs.readFileSync(binary)), ...inputs, groups, counts };
  fs.writeFileSync(summary, JSON.stringify(all, null, 1) + '\n');
  console.log(counts);
}

/** The texts of a group by their headings; throws when there are not as many as were written. */
function readGroup(folder, name, count) {
  const pieces = fs
    .readFileSync(join(folder, name + '.txt'), 'utf8')
    .split(/^@ /m)
    .slice(1);
  const entries = new Map(pieces.map((piece) => piece.split(/\n([^]*)/, 2)));
  if (!count || entries.size !== count)
    throw new Error(`${name} holds ${entries.size} of ${count}`);
  return entries;
}

function readRecording(folder) {
  try {
    const summary = readJson(join(folder, 'summary.json'));
    const names = Object.entries(summary.groups);
    if (names.length === 0) throw new Error('it has no groups');
    const groups = names.map(([name, count]) => [name, readGroup(folder, name, count)]);
    return { ...summary, groups: Object.fromEntries(groups) };
  } catch (error) {
    console.error(`${folder} is incomplete: ${error.message}`);
    process.exit(2);
  }
}

/** In words, where two texts part. */
function parting(before, after) {
  const [lines, others] = [before, after].map((text) => text.split('\n'));
  const differs = (_, index) => lines[index] !== others[index];
  const longer = lines.length < others.length ? others : lines;
  const at = longer.findIndex(differs);
  const [one, two] = [lines[at] ?? '', others[at] ?? ''];
  let column = 0;
  while (column < one.length && one[column] === two[column]) ++column;
  const begin = Math.max(0, column - kShown / 2);
  const shown = (line) => JSON.stringify(line.slice(begin, begin + kShown));
  const count = longer.filter(differs).length;
  const where = `line ${at + 1}, column ${column + 1}; lines that differ: ${count}`;
  return `${where}\n    - ${shown(one)}\n    + ${shown(two)}`;
}

/** The entry's text, its first one's where it only names that. */
function wholeText(entries, heading) {
  const text = entries.get(heading);
  const first = /^ {2}as (\d+)\n$/.exec(text)?.[1];
  return first ? entries.get([...entries.keys()][first - 1]) : text;
}

function compareGroup(name, before, after) {
  const headings = [...new Set([...before.keys(), ...after.keys()])];
  const different = headings.filter((heading) => before.get(heading) !== after.get(heading));
  console.log(`${name}: ${headings.length} entries, ${different.length} different`);
  for (const heading of different.slice(0, kMostShown)) {
    const only = !before.has(heading)
      ? 'only in the second'
      : !after.has(heading) && 'only in the first';
    const how = only || parting(wholeText(before, heading), wholeText(after, heading));
    console.log(`  ${heading.slice(0, kShown)}: ${how}`);
  }
  if (different.length > kMostShown) console.log(`  and ${different.length - kMostShown} more`);
  return different.length;
}

function compare(...folders) {
  const [before, after] = folders.map(readRecording);
  const names = Object.keys(before.groups);
  if (before.requests !== after.requests || String(names) !== String(Object.keys(after.groups))) {
    console.error('the recordings are not of the same groups and requests');
    process.exit(2);
  }
  if (before.day !== after.day) console.log(`recorded on two days: ${before.day}, ${after.day}`);
  if (!before.groups.pages) console.log('pages: in neither recording');
  let different = 0;
  for (const name of names)
    different += compareGroup(name, before.groups[name], after.groups[name]);
  console.log(different ? `${different} differences` : 'no difference');
  process.exitCode = different ? 1 : 0;
}

function requests(file, binary) {
  const folder = fs.mkdtempSync(join(tmpdir(), 'tarlo-behaviour-'));
  const program = join(folder, 'tarloquery');
  const notes = join(folder, 'notes');
  const command = `exec '${process.execPath}' '${path('run.mjs')}' stand-in "$@"`;
  fs.writeFileSync(program, `#!/bin/sh\n${command}\n`, { mode: 0o700 });
  const env = { TARLO_BINARY: program, BEHAVIOUR_BINARY: binary, BEHAVIOUR_NOTES: notes };
  const flows = spawnSync(process.execPath, [path('../../web/test/flows/run.mjs')], {
    stdio: 'inherit',
    env: { ...process.env, ...env },
  });
  if (flows.status === 0) {
    const steps = requestList(fs.readFileSync(notes, 'utf8').trim().split('\n').map(JSON.parse));
    fs.writeFileSync(file, `[\n${steps.map((step) => JSON.stringify(step)).join(',\n')}\n]\n`);
    console.log(
      `${steps.length} steps, ${steps.filter((step) => step.run).length} of them commands`,
    );
  }
  fs.rmSync(folder, { recursive: true });
  process.exitCode = flows.status ? 1 : 0;
}

process.env.TZ = 'UTC';
const [command, ...words] = process.argv.slice(2);
if (
  command === 'record' &&
  (words.length === 2 || (words.length === 4 && words[2] === '--requests'))
)
  await record(resolve(words[0]), words[1], words[3]);
else if (command === 'compare' && words.length === 2) compare(...words);
else if (command === 'requests' && words.length === 2) requests(words[0], resolve(words[1]));
else if (command === 'stand-in') await standIn(words);
else {
  console.error(
    'run.mjs record BINARY FOLDER [--requests FILE] | compare FOLDER FOLDER | requests FILE BINARY',
  );
  process.exitCode = 2;
}
