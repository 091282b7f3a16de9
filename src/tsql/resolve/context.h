#pragma once
// What the resolving of one expression knows about its surroundings.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/access.h"
#include "tsql/catalogue.h"
#include "tsql/resolve/scope.h"

namespace tarlo::tsql {

// One batch: the catalogue, and the declared variables by their upper-case names.
struct BatchContext {
  Catalogue& catalogue;
  std::map<std::string, Type> variables;
  std::vector<Touched> touched;  // in the order of the text
};

// One clause of one query.
struct Context {
  BatchContext& batch;
  const Scope& scope;
  // The clause, where no aggregate may stand in it ("WHERE"); "" where one may.
  std::string_view noAggregatesIn;
  // Set when an aggregate of this query has been met.
  bool* sawAggregate = nullptr;
};

// The table of a statement, noted as touched. Refuses unknown names and schemas other than dbo.
const Table& findTable(BatchContext& batch, Access access, std::string_view schema,
                       std::string_view name, Position position);

}  // namespace tarlo::tsql
