// The callable forms of element lists: row.children(0), document.all("name")(1),
// document.all("name", 1).

function bound(owner, value) {
  return typeof value === 'function' ? value.bind(owner) : value;
}

/** An HTMLCollection or list that can also be called with an index or a name. */
export function callableList(list) {
  const find = (key) => (isFinite(key) ? list[+key] : namedIn(list, key)) || null;
  // The target is an arrow function: an ordinary one owns a fixed `prototype` that a proxy cannot
  // hide.
  return new Proxy((key) => find(key), {
    get: (target, name) => bound(list, list[name]),
    has: (target, name) => name in list,
  });
}

function namedIn(list, name) {
  return typeof list.namedItem === 'function' ? list.namedItem(name) : null;
}

function quoted(name) {
  return '"' + name.replace(/["\\]/g, '\\$&').replace(/\n/g, '\\a ') + '"';
}

/**
 * What a name means in a document, as an array or collection: the browser's own answer, else
 * elements of any tag with that name attribute, else ids and names in another case.
 */
export function findNamed(document, nativeAll, name) {
  const own = nativeAll.namedItem(name);
  if (own) return own.nodeType ? [own] : own;
  const value = quoted(name);
  const named = document.querySelectorAll(`[name=${value}]`);
  return named.length ? named : document.querySelectorAll(`[id=${value} i],[name=${value} i]`);
}

/**
 * One match is the element itself: pages test `.length` of the answer for null to learn that there
 * is one.
 */
export function oneOrList(found) {
  if (found.length === 0) return null;
  return found.length === 1 ? found[0] : callableList(found);
}

/**
 * document.all for scripts. A name that is missing gives undefined as a property and null in a
 * call. `otherDocument` answers the document to look in next, or null.
 */
export function allCollection(document, nativeAll, otherDocument) {
  const lookUp = (key) => {
    if (typeof key === 'number' || /^\d+$/.test(key)) return nativeAll[key] || null;
    const found = oneOrList(findNamed(document, nativeAll, String(key)));
    if (found) return found;
    const next = otherDocument();
    return next && next !== document ? next.all(key) : null;
  };
  const call = (key, index) => {
    const found = lookUp(key);
    return index === undefined || !found ? found : found[index] || null;
  };
  return new Proxy(call, {
    get(target, name) {
      if (typeof name === 'symbol' || name in Object.getPrototypeOf(nativeAll))
        return bound(nativeAll, nativeAll[name]);
      return lookUp(name) || undefined;
    },
    has: (target, name) => name in nativeAll || (typeof name === 'string' && lookUp(name) !== null),
  });
}
