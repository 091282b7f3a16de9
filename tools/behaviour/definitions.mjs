// Random definitions of schemes over the dictionary, always the same ones. Half of them may be
// broken in one of their parts.

const kSeed = 20_000;
const kOperations = ['None', 'Vir', 'Fil', 'Vir_Fil', 'Sta', 'Vir_Sta', 'Fil_Sta', 'Vir_Fil_Sta'];
const kTexts = ['苏州', "it's", '100%', '2026-01-01', '', '<b>&"', '[x]', 'ＡＢＣ'];
const kExpressions = ['GETDATE()', 'GETDATE()-30', 'ABS(-3)', '(5', ')(', '(1+2)*3', "LEN('a)')"];
const kUnknown = ['99999', '40000', '0', '-9', '1.5', 'abc', 'x1', '', ' '];
const kBroken = {
  computed: ['无冒号', 'x:[', 'y:]5308[', ':', '', 'z:NOSUCH([1])'],
  filter: ['', '5308', '5308,1', '5308;1;2,-1', ',,,', '5308,x,1,-1', '|||', '-7,1,2,-1'],
  statistics: ['5308', ',', '-7,4', 'x,1', '', '5308,7'],
};

/** A generator of fixed whole numbers from 0, below a limit. */
function numbers(seed) {
  let state = seed;
  return (limit) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 2 ** 32) * limit);
  };
}

function readDictionary(query) {
  const fields = new Map();
  const all = query(
    'select DDF_TableID, Zembra_ID from Zembra_DataDict_Field order by DDF_TableID, Zembra_ID',
  );
  for (const [table, id] of all) fields.set(table, [...(fields.get(table) ?? []), id]);
  const relations = query(
    'select Zembra_ID, DDR_MainTableID, DDR_MainFieldID, DDR_RelationTableID, DDR_RelationFieldID ' +
      'from Zembra_DataDict_Relation order by Zembra_ID',
  ).flatMap(([id, from, via, to, otherVia]) => [
    { id, from, to, via },
    { id, from: to, to: from, via: otherVia },
  ]);
  return { fields, relations };
}

/** The words of `call` for each of `count` definitions; `query` gives a statement's rows. */
export function* definitions(query, count) {
  const { fields, relations } = readDictionary(query);
  const below = numbers(kSeed);
  const one = (list) => list[below(list.length)];
  const some = (most, make) => Array.from({ length: 1 + below(most) }, make);
  const from = (table) => relations.filter((relation) => relation.from === table);

  function definition(main, broken) {
    const breaks = (part) => broken === part && below(3) === 0;
    const near = below(6) === 0 || from(main).length === 0 ? [] : some(3, () => one(from(main)));
    const far = near.length && below(3) === 0 ? [one(from(one(near).to))] : [];
    const reached = [...near, ...far];
    const tables = [main, main, ...reached.map((relation) => relation.to)];
    const id = (part) => (breaks(part) ? one(kUnknown) : one(fields.get(one(tables))));

    const ref = () => `[${id('computed')}]`;
    const expression = () =>
      one([
        () => `${ref()}*2`,
        () => `${ref()}-${ref()}`,
        () => `ISNULL(${ref()},0)+1`,
        () => `CASE ${ref()} WHEN 1 THEN '是' ELSE '否' END`,
        () => `YEAR([表.列|${id('computed')}])`,
        () => `'常量'`,
      ])();
    const computed = some(3, () => `字段${below(90)}:${expression()}`);
    if (breaks('computed')) computed.push(one(kBroken.computed));

    const operation = one(kOperations);
    const withComputed = operation.includes('Vir');
    const token = (part) =>
      withComputed && below(3) === 0 ? -1 - below(computed.length) : id(part);
    const condition = (_, at) => {
      const via = reached.length && below(4) === 0 ? one(reached) : undefined;
      const field = via ? `${one(fields.get(via.to))}|${via.via}` : token('filter');
      const value = one([below(90), one(kTexts), one(kExpressions)]);
      return `${field},${breaks('filter') ? one(['9', '0', 'x']) : 1 + below(8)},${value},${one(['and', 'or'])}`;
    };
    const filter = some(3, condition).join('|||').replace(/\w+$/, '-1');
    const group = some(2, () => token('statistics'));
    const counted = some(2, () => `${token('statistics')},${1 + below(5)}`);
    const statistics = [...group.map((field) => `${field},6`), ...counted];
    if (breaks('statistics')) statistics.push(one(kBroken.statistics));
    const rel = reached.map((relation) => relation.id);
    if (broken === 'rel') rel.push(one([...kUnknown, 999]));
    return [
      `getQuery_${operation}`,
      '--',
      breaks('main') ? one(kUnknown) : main,
      ...(withComputed ? [computed.join(';')] : []),
      ...(operation.includes('Fil') ? [breaks('filter') ? one(kBroken.filter) : filter] : []),
      ...(operation.includes('Sta') ? [statistics.join('|||'), group.join(',')] : []),
      rel.join(','),
    ].map(String);
  }

  const parts = ['main', 'rel', 'computed', 'filter', 'statistics'];
  for (let made = 0; made < count; ++made)
    yield definition(one([...fields.keys()]), one([...parts, ...parts.map(() => undefined)]));
}
