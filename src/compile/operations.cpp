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

// The statement of a definition whose parts come as arguments. Those that take no part are Empty.
Variant compiled(Page& page, Parts parts, const Variant& sTable, const Variant& computed,
                 const Variant& filter, const Variant& stats, const Variant& group,
                 const Variant& rel) {
  return compileParts(page,
                      {.mainTable = lenient(sTable),
                       .computed = spliced(computed),
                       .filter = toText(filter),
                       .statistics = toText(stats),
                       .grouping = spliced(group),
                       .relations = lenient(rel)},
                      parts);
}

}  // namespace

Variant getQuery_None(Page& page, const Variant& sTable, const Variant& rel) {
  return compiled(page, {}, sTable, {}, {}, {}, {}, rel);
}

Variant getQuery_Vir(Page& page, const Variant& sTable, const Variant& computed,
                     const Variant& rel) {
  return compiled(page, {.computed = true}, sTable, lenient(computed), {}, {}, {}, rel);
}

Variant getQuery_Fil(Page& page, const Variant& sTable, const Variant& filter, const Variant& rel) {
  return compiled(page, {.filter = true}, sTable, {}, filter, {}, {}, rel);
}

Variant getQuery_Vir_Fil(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& filter, const Variant& rel) {
  return compiled(page, {.computed = true, .filter = true}, sTable, computed, filter, {}, {}, rel);
}

Variant getQuery_Sta(Page& page, const Variant& sTable, const Variant& stats, const Variant& group,
                     const Variant& rel) {
  return compiled(page, {.statistics = true}, sTable, {}, {}, stats, group, rel);
}

Variant getQuery_Vir_Sta(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& stats, const Variant& group, const Variant& rel) {
  return compiled(page, {.computed = true, .statistics = true}, sTable, computed, {}, stats, group,
                  rel);
}

Variant getQuery_Fil_Sta(Page& page, const Variant& sTable, const Variant& filter,
                         const Variant& stats, const Variant& group, const Variant& rel) {
  return compiled(page, {.filter = true, .statistics = true}, sTable, {}, filter, stats, group,
                  rel);
}

Variant getQuery_Vir_Fil_Sta(Page& page, const Variant& sTable, const Variant& computed,
                             const Variant& filter, const Variant& stats, const Variant& group,
                             const Variant& rel) {
  return compiled(page, {.computed = true, .filter = true, .statistics = true}, sTable, computed,
                  filter, stats, group, rel);
}

Variant getQuery_Field_In(Page& page, const Variant& sTable, const Variant& rel) {
  return clauseArray(fieldListClauses(page, lenient(sTable), lenient(rel)));
}

Variant Query_getStats(Page& page, const Variant& sTable, const Variant& stats,
                       const Variant& computed, const Variant& group, const Variant& rel) {
  const std::string fields = spliced(computed);
  return clauseArray(statisticsClauses(page,
                                       {.mainTable = lenient(sTable),
                                        .statistics = toText(stats),
                                        .grouping = spliced(group),
                                        .relations = lenient(rel)},
                                       ComputedFields(fields)));
}

Variant Query_getVirtual(Page& page, const Variant& computed) {
  const std::string fields = lenient(computed);
  return computedItems(page, ComputedFields(fields));
}

Variant Query_getfilterNoVir(Page& page, const Variant& filter) {
  return plainFilter(page, toText(filter));
}

Variant Query_getfilter(Page& page, const Variant& filter, const Variant& computed) {
  const std::string conditions = toText(filter);
  const std::string fields = spliced(computed);
  return filterWithComputed(page, conditions, ComputedFields(fields));
}

Variant Query_getGroupbyNoVir(Page& page, const Variant& group) {
  return groupBy(page, spliced(group));
}

Variant Query_getGroupby(Page& page, const Variant& group, const Variant& computed) {
  const std::string fields = spliced(computed);
  return groupByWithComputed(page, spliced(group), ComputedFields(fields));
}

}  // namespace tarlo::compile
