// The product under test: the binary, with a demo database and a port of its own.

import { execFileSync, spawn } from 'node:child_process';
import { existsSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { fileURLToPath } from 'node:url';

export const kBinary =
  process.env.TARLO_BINARY ??
  fileURLToPath(new URL('../../../build/release/tarloquery', import.meta.url));

const kStartSeconds = 10;

export async function freePort() {
  const server = createServer();
  await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
  const { port } = server.address();
  await new Promise((closed) => server.close(closed));
  return port;
}

async function waitUntilReady(origin, child) {
  for (let tries = 0; tries < kStartSeconds * 20; ++tries) {
    if (child.exitCode !== null) throw new Error(`the server ended with ${child.exitCode}`);
    const answer = await fetch(origin + '/readyz').catch(() => undefined);
    if (answer?.ok) return;
    await new Promise((later) => setTimeout(later, 50));
  }
  throw new Error(`the server is not ready after ${kStartSeconds} seconds`);
}

/**
 * Starts the server over a new demo database, with the configuration's text where it is given. `stop` ends it and
 * removes what it wrote.
 */
export async function startServer({ config = '', binary = kBinary } = {}) {
  if (!existsSync(binary))
    throw new Error(`there is no ${binary}: build it, or name it in TARLO_BINARY`);
  const folder = mkdtempSync(join(tmpdir(), 'tarlo-flows-'));
  const database = `sqlite:${join(folder, 'demo.db')}`;
  const run = (args, input = '') =>
    execFileSync(binary, [...args, '--database', database], {
      input,
      encoding: 'utf8',
      stdio: 'pipe',
    });
  const origin = `http://127.0.0.1:${await freePort()}`;
  let child;
  async function stop() {
    if (child && child.exitCode === null && child.signalCode === null) {
      const ended = new Promise((resolve) => child.once('exit', resolve));
      child.kill('SIGTERM');
      await ended;
    }
    rmSync(folder, { recursive: true });
  }
  try {
    run(['init', '--demo']);
    const listen = origin.slice('http://'.length);
    const configFile = join(folder, 'config.toml');
    writeFileSync(configFile, config);
    const args = ['serve', '--config', configFile, '--database', database, '--listen', listen];
    child = spawn(binary, args, { stdio: 'ignore' });
    await waitUntilReady(origin, child);
  } catch (error) {
    await stop();
    throw error;
  }
  const signInLink = (user = 'admin') =>
    /http\S+/.exec(run(['sign-in-link', user, '--base-url', origin]))[0];
  return { origin, run, signInLink, stop, pid: child.pid, file: join(folder, 'demo.db') };
}
