// Every scheme of the palette keeps its texts readable: a contrast of 4.5 (WCAG AA) for text on the
// surfaces that it stands on, 3 for the focus ring.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

const kCss = readFileSync(new URL('../css/palette.css', import.meta.url), 'utf8');
const kOnSurfaces = ['text', 'muted', 'accent', 'accent-strong', 'danger'];
const kSurfaces = ['surface', 'bg', 'hover'];

function block(selector) {
  const at = kCss.indexOf(selector);
  assert.notEqual(at, -1, selector);
  const body = kCss.slice(kCss.indexOf('{', at), kCss.indexOf('}', at));
  return Object.fromEntries(
    [...body.matchAll(/--t-([a-z-]+): (#[0-9a-f]{6});/g)].map((found) => [found[1], found[2]]),
  );
}

function luminance(color) {
  const [r, g, b] = [1, 3, 5].map((at) => {
    const part = parseInt(color.slice(at, at + 2), 16) / 255;
    return part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
  });
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
}

function contrast(a, b) {
  const [dark, light] = [luminance(a), luminance(b)].sort((x, y) => x - y);
  return (light + 0.05) / (dark + 0.05);
}

for (const scheme of ['sea', 'olive', 'orange', 'sun']) {
  test(`${scheme} is readable`, () => {
    const colors = { ...block(':root {'), ...block(`[data-scheme='${scheme}']`), white: '#ffffff' };
    const pairs = kOnSurfaces.flatMap((text) => kSurfaces.map((surface) => [text, surface, 4.5]));
    pairs.push(
      ['text', 'selected', 4.5],
      ['accent-strong', 'selected', 4.5],
      ['accent-strong', 'accent-soft', 4.5],
    );
    pairs.push(
      ['muted', 'accent-soft', 4.5],
      ['white', 'accent', 4.5],
      ['white', 'accent-strong', 4.5],
    );
    pairs.push(['danger', 'danger-soft', 4.5], ['focus', 'surface', 3]);
    for (const [text, surface, least] of pairs) {
      const reached = contrast(colors[text], colors[surface]);
      assert.ok(reached >= least, `${text} on ${surface}: ${reached.toFixed(2)}`);
    }
  });
}
