// FROM: tables, derived ones and joins.

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"
#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

class FromResolver {
 public:
  FromResolver(BatchContext& batch, Scope& scope) : batch_(batch), scope_(scope) {}

  void operator()(ast::FromItem& item) {
    const std::size_t begin = scope_.sources().size();
    add(item.table);
    for (ast::Join& join : item.joins) {
      add(join.table);
      if (!join.on) continue;
      scope_.show(begin, scope_.sources().size());
      resolveCondition({batch_, scope_, "ON"}, *join.on);
      scope_.show(0, 0);
    }
  }

 private:
  void add(ast::TableSource& source) {
    if (const auto* name = std::get_if<ast::TableName>(&source.table)) {
      const Table& table =
          findTable(batch_, Access::Read, name->schema, name->name, source.position);
      scope_.add(Source(name->alias.empty() ? name->name : name->alias, table), source.position);
      return;
    }
    auto& derived = std::get<ast::DerivedTable>(source.table);
    auto columns = resolveQuery(batch_, &scope_, *derived.query, QueryUse::Nested);
    checkTitles(columns, derived.alias, source.position);
    scope_.add(Source(derived.alias, std::move(columns)), source.position);
  }

  static void checkTitles(const std::vector<ResultColumn>& columns, const std::string& alias,
                          Position position) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const std::string& title = columns[i].title;
      if (title.empty()) {
        throw StatementError(Refusal::Rule, position,
                             fmt::format("column {} of {} has no name", i + 1, alias));
      }
      for (std::size_t j = 0; j < i; ++j) {
        if (!text::equalsNoCase(columns[j].title, title)) continue;
        throw StatementError(Refusal::Rule, position,
                             fmt::format("column {} stands twice in {}", title, alias));
      }
    }
  }

  BatchContext& batch_;
  Scope& scope_;
};

}  // namespace

void resolveFrom(BatchContext& batch, ast::QuerySpec& spec, Scope& scope) {
  FromResolver resolver(batch, scope);
  for (ast::FromItem& item : spec.from) resolver(item);
  scope.showAll();
}

const Table& findTable(BatchContext& batch, Access access, std::string_view schema,
                       std::string_view name, Position position) {
  const bool known = schema.empty() || text::equalsNoCase(schema, "dbo");
  if (const Table* table = known ? batch.catalogue.findTable(name) : nullptr) {
    batch.touched.push_back({access, table->name, position});
    return *table;
  }
  throw StatementError(
      Refusal::Name, position,
      fmt::format("unknown table {}{}{}", schema, schema.empty() ? "" : ".", name));
}

}  // namespace tarlo::tsql
