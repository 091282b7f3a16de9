#include "compile/assembly.h"

#include <string>

#include "compile/clause_set.h"
#include "compile/computed_fields.h"
#include "compile/field_list.h"
#include "compile/filter.h"
#include "compile/filter_merge.h"
#include "compile/grouping.h"
#include "compile/statistics.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

// What the compilers have made. A part that a scheme has not stays empty.
struct Parts {
  ClauseSet clauses;
  std::string computed;  // select items
  std::string filter;    // conditions, marked items not yet merged
  std::string grouping;  // with its own leading " group by "
};

// Filter text of blanks is still wrapped: the test is against empty text.
Variant statement(const Parts& parts) {
  const std::string merged = mergedFilter(parts.filter, parts.clauses.where);
  std::string sql;
  sql.reserve(parts.clauses.select.size() + parts.clauses.from.size() + parts.clauses.where.size() +
              parts.computed.size() + merged.size() + parts.grouping.size() + 32);
  sql.append("select ").append(parts.clauses.select);
  if (!text::trim(parts.computed).empty()) sql.append(",").append(parts.computed);
  sql.append(" from ").append(parts.clauses.from);
  sql.append(" where ").append(parts.clauses.where);
  if (!merged.empty()) sql.append(" and (").append(merged).append(")");
  sql.append(parts.grouping);
  return sql;
}

}  // namespace

Variant getQuery_None(Page& page, const Variant& sTable, const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(getQuery_Field_In(page, sTable, rel));
  return statement(parts);
}

Variant getQuery_Vir(Page& page, const Variant& sTable, const Variant& computed,
                     const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(getQuery_Field_In(page, sTable, rel));
  parts.computed = Query_getVirtual(page, computed).text();
  return statement(parts);
}

Variant getQuery_Fil(Page& page, const Variant& sTable, const Variant& filter, const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(getQuery_Field_In(page, sTable, rel));
  parts.filter = Query_getfilterNoVir(page, filter).text();
  return statement(parts);
}

Variant getQuery_Vir_Fil(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& filter, const Variant& rel) {
  Parts parts;
  parts.computed = Query_getVirtual(page, computed).text();
  parts.clauses = clauseSet(getQuery_Field_In(page, sTable, rel));
  parts.filter = Query_getfilter(page, filter, computed).text();
  return statement(parts);
}

Variant getQuery_Sta(Page& page, const Variant& sTable, const Variant& stats, const Variant& group,
                     const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(Query_getStats(page, sTable, stats, "", group, rel));
  parts.grouping = Query_getGroupbyNoVir(page, group).text();
  return statement(parts);
}

Variant getQuery_Vir_Sta(Page& page, const Variant& sTable, const Variant& computed,
                         const Variant& stats, const Variant& group, const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(Query_getStats(page, sTable, stats, computed, group, rel));
  parts.grouping = Query_getGroupby(page, group, computed).text();
  return statement(parts);
}

Variant getQuery_Fil_Sta(Page& page, const Variant& sTable, const Variant& filter,
                         const Variant& stats, const Variant& group, const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(Query_getStats(page, sTable, stats, "", group, rel));
  parts.filter = Query_getfilterNoVir(page, filter).text();
  parts.grouping = Query_getGroupbyNoVir(page, group).text();
  return statement(parts);
}

Variant getQuery_Vir_Fil_Sta(Page& page, const Variant& sTable, const Variant& computed,
                             const Variant& filter, const Variant& stats, const Variant& group,
                             const Variant& rel) {
  Parts parts;
  parts.clauses = clauseSet(Query_getStats(page, sTable, stats, computed, group, rel));
  parts.grouping = Query_getGroupby(page, group, computed).text();
  parts.filter = Query_getfilter(page, filter, computed).text();
  return statement(parts);
}

}  // namespace tarlo::compile
