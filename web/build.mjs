// node build.mjs OUT: bundles src/ to OUT/scripts.js and css/ to OUT/tarlo.css, and copies static/
// to OUT/static. Prints nothing on success.

import { cpSync, existsSync, mkdirSync, readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { buildSync, transformSync } from 'esbuild';

const kWeb = dirname(fileURLToPath(import.meta.url));
const kTarget = 'es2020';
// Later sheets override earlier ones; those not named here come behind, by name.
const kSheetOrder = ['palette.css', 'base.css', 'desktop.css', 'grid.css'];

/** The sheets of css/ in the order of joining. */
export function orderSheets(names) {
  const place = (name) =>
    kSheetOrder.includes(name) ? kSheetOrder.indexOf(name) : kSheetOrder.length;
  return names
    .filter((name) => name.endsWith('.css'))
    .sort((a, b) => place(a) - place(b) || (a < b ? -1 : 1));
}

function buildScript(out) {
  buildSync({
    entryPoints: [join(kWeb, 'src/index.js')],
    outfile: join(out, 'scripts.js'),
    bundle: true,
    format: 'iife',
    target: kTarget,
    minify: true,
    charset: 'ascii', // pages of any character set load it
    logLevel: 'warning',
  });
}

function buildSheet(out) {
  const folder = join(kWeb, 'css');
  const names = existsSync(folder) ? orderSheets(readdirSync(folder)) : [];
  const text = names.map((name) => readFileSync(join(folder, name), 'utf8')).join('\n');
  writeFileSync(
    join(out, 'tarlo.css'),
    transformSync(text, { loader: 'css', target: kTarget, minify: true }).code,
  );
}

export function build(out) {
  mkdirSync(out, { recursive: true });
  buildScript(out);
  buildSheet(out);
  if (existsSync(join(kWeb, 'static')))
    cpSync(join(kWeb, 'static'), join(out, 'static'), { recursive: true });
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  if (process.argv.length !== 3) {
    console.error('usage: node build.mjs OUT');
    process.exit(2);
  }
  build(process.argv[2]);
}
