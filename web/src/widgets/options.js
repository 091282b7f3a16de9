// The lists that tags carry, as arrays of {label, value}.

const kEntities = { amp: '&', lt: '<', gt: '>', quot: '"', apos: "'", nbsp: '\u00a0' };

function decoded(text) {
  return text.replace(/&(?:#(\d+)|#x([0-9a-f]+)|(\w+));/gi, (whole, decimal, hex, name) => {
    if (decimal) return String.fromCodePoint(Number(decimal));
    if (hex) return String.fromCodePoint(parseInt(hex, 16));
    return kEntities[name.toLowerCase()] ?? whole;
  });
}

/**
 * `label<<<<<<value` joined by `>>>>>>`; an empty last item is none. Values lose blanks and line
 * ends.
 */
export function optionsOfData(data) {
  const items = data.split('>>>>>>');
  if (items.at(-1).trim() === '') items.pop();
  return items.map((item) => {
    const at = item.indexOf('<<<<<<');
    if (at < 0) return { label: item, value: item.trim() };
    return { label: item.slice(0, at), value: item.slice(at + 6).trim() };
  });
}

/**
 * Options as XML. An attribute was decoded once by the browser, so a caption may hold a raw "&" and
 * this is no XML any more.
 */
export function optionsOfXml(xml) {
  const pattern = /<option>\s*<value>([^]*?)<\/value>\s*<text>([^]*?)<\/text>\s*<\/option>/gi;
  return [...xml.matchAll(pattern)].map(([, value, label]) => ({
    label: decoded(label),
    value: decoded(value).trim(),
  }));
}

/** What a combo box offers: its `data`, else its `src`. */
export function optionsOf(element) {
  const data = element.getAttribute('data');
  return data === null ? optionsOfXml(element.getAttribute('src') ?? '') : optionsOfData(data);
}

/** Labels and values of a group: two comma lists of the same length. */
export function groupOptions(element) {
  const values = (element.getAttribute('values') ?? '').split(',');
  const labels = (element.getAttribute('text') ?? '').split(',');
  return values.map((value, at) => ({ label: labels[at] ?? value, value: value.trim() }));
}

/** Levels of a cascade: `table,link column,value column,text column,condition`, joined by ";". */
export function levelsOf(relation) {
  return relation
    .split(';')
    .filter((level) => level.trim() !== '')
    .map((level) => {
      const [table, link, value, text, ...condition] = level.split(',').map((part) => part.trim());
      return { table, link, value, text, condition: condition.join(',') };
    });
}
