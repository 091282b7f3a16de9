#include "compile/operations.h"

#include "compile/clauses.h"
#include "compile/definition.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::compile {
namespace {

using variant::spliced;
using variant::toText;

Variant clauseArray(ClauseSet clauses) {
  return Array::of({Variant(), Variant(std::move(clauses.select)), Variant(std::move(clauses.from)),
                    Variant(std::move(clauses.where))});
}

// For look-ups, which never raise: "" for an argument that is no text, and nothing is found.
std::string lenient(const Variant& argument) {
  ErrorState errors;
  std::string text;
  errors.run([&] { text = spliced(argument); });
  return text;
}

struct Loaded : DictionaryReader {
  Loaded(Page& page, const Definition& definition, Columns columns) : DictionaryReader(page) {
    loadFor(*this, definition, columns);
  }
};

// The statement of a definition whose parts come as arguments. Those that take no part are Empty.
Variant compiled(Page& page, Parts parts, const Variant& mainTable, const Variant& computed,
                 const Variant& filter, const Variant& statistics, const Variant& grouping,
                 const Variant& relations) {
  return compileParts(page,
                      {.mainTable = lenient(mainTable),
                       .computed = spliced(computed),
                       .filter = toText(filter),
                       .statistics = toText(statistics),
                       .grouping = spliced(grouping),
                       .relations = lenient(relations)},
                      parts);
}

}  // namespace

Variant getQuery_None(Page& page, const Variant& mainTable, const Variant& relations) {
  return compiled(page, {}, mainTable, {}, {}, {}, {}, relations);
}

Variant getQuery_Vir(Page& page, const Variant& mainTable, const Variant& computed,
                     const Variant& relations) {
  return compiled(page, {.computed = true}, mainTable, lenient(computed), {}, {}, {}, relations);
}

Variant getQuery_Fil(Page& page, const Variant& mainTable, const Variant& filter,
                     const Variant& relations) {
  return compiled(page, {.filter = true}, mainTable, {}, filter, {}, {}, relations);
}

Variant getQuery_Vir_Fil(Page& page, const Variant& mainTable, const Variant& computed,
                         const Variant& filter, const Variant& relations) {
  return compiled(page, {.computed = true, .filter = true}, mainTable, computed, filter, {}, {},
                  relations);
}

Variant getQuery_Sta(Page& page, const Variant& mainTable, const Variant& statistics,
                     const Variant& grouping, const Variant& relations) {
  return compiled(page, {.statistics = true}, mainTable, {}, {}, statistics, grouping, relations);
}

Variant getQuery_Vir_Sta(Page& page, const Variant& mainTable, const Variant& computed,
                         const Variant& statistics, const Variant& grouping,
                         const Variant& relations) {
  return compiled(page, {.computed = true, .statistics = true}, mainTable, computed, {}, statistics,
                  grouping, relations);
}

Variant getQuery_Fil_Sta(Page& page, const Variant& mainTable, const Variant& filter,
                         const Variant& statistics, const Variant& grouping,
                         const Variant& relations) {
  return compiled(page, {.filter = true, .statistics = true}, mainTable, {}, filter, statistics,
                  grouping, relations);
}

Variant getQuery_Vir_Fil_Sta(Page& page, const Variant& mainTable, const Variant& computed,
                             const Variant& filter, const Variant& statistics,
                             const Variant& grouping, const Variant& relations) {
  return compiled(page, {.computed = true, .filter = true, .statistics = true}, mainTable, computed,
                  filter, statistics, grouping, relations);
}

Variant getQuery_Field_In(Page& page, const Variant& mainTable, const Variant& relations) {
  const Definition definition{.mainTable = lenient(mainTable), .relations = lenient(relations)};
  Loaded dictionary(page, definition, Columns::All);
  return clauseArray(fieldListClauses(dictionary, definition.mainTable, definition.relations));
}

Variant Query_getStats(Page& page, const Variant& mainTable, const Variant& statistics,
                       const Variant& computed, const Variant& grouping, const Variant& relations) {
  const std::string fields = spliced(computed);
  const Definition definition{.mainTable = lenient(mainTable),
                              .computed = fields,
                              .statistics = toText(statistics),
                              .grouping = spliced(grouping),
                              .relations = lenient(relations)};
  Loaded dictionary(page, definition, Columns::Named);
  return clauseArray(statisticsClauses(dictionary, definition, ComputedFields(fields)));
}

Variant Query_getVirtual(Page& page, const Variant& computed) {
  const std::string fields = lenient(computed);
  Loaded dictionary(page, {.computed = fields}, Columns::Named);
  return computedItems(dictionary, ComputedFields(fields));
}

Variant Query_getfilterNoVir(Page& page, const Variant& filter) {
  const std::string conditions = toText(filter);
  Loaded dictionary(page, {.filter = conditions}, Columns::Named);
  return plainFilter(dictionary, conditions);
}

Variant Query_getfilter(Page& page, const Variant& filter, const Variant& computed) {
  const std::string conditions = toText(filter);
  const std::string fields = spliced(computed);
  Loaded dictionary(page, {.computed = fields, .filter = conditions}, Columns::Named);
  return filterWithComputed(dictionary, conditions, ComputedFields(fields));
}

Variant Query_getGroupbyNoVir(Page& page, const Variant& grouping) {
  const std::string tokens = spliced(grouping);
  Loaded dictionary(page, {.grouping = tokens}, Columns::Named);
  return groupBy(dictionary, tokens);
}

Variant Query_getGroupby(Page& page, const Variant& grouping, const Variant& computed) {
  const std::string fields = spliced(computed);
  const std::string tokens = spliced(grouping);
  Loaded dictionary(page, {.computed = fields, .grouping = tokens}, Columns::Named);
  return groupByWithComputed(dictionary, tokens, ComputedFields(fields));
}

}  // namespace tarlo::compile
