#include "app/demo_statements.h"

#include <fmt/format.h>

#include "app/exit_code.h"
#include "app/platform_scripts.h"
#include "app/progress.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "scheme/scheme_store.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::app {
namespace {

constexpr std::string_view kInMemory = "sqlite::memory:";

// Deleted schemes too: they were saved like the others once.
std::vector<int> schemeIds(Page& page) {
  const Variant rows =
      frame::execSQLRows(page, "select Query_ID from Zembra_Query_Main order by Query_ID");
  std::vector<int> ids;
  if (!rows.isArray()) return ids;
  for (const Variant& id : rows.array().elements()) ids.push_back(variant::toInt32(id));
  return ids;
}

DemoStatement compileOne(Page& page, int id) {
  ErrorState error;
  DemoStatement compiled{id, {}};
  error.run([&] {
    const auto scheme = scheme::loadScheme(page, id);
    if (scheme) compiled.statement = compile::compileDefinition(page, scheme->definition);
  });
  if (error.failed()) {
    throw CommandError(
        kFailed, fmt::format("The demo scheme {} cannot be compiled: {}", id, error.description()));
  }
  return compiled;
}

}  // namespace

std::vector<DemoStatement> compileDemo(std::ostream& err) {
  database::Registry databases({.create = true});
  {
    database::Lease connection = databases.find(kInMemory).borrow();
    connection->allowDdl(true);
    database::Connection::Transaction transaction(*connection);
    runScripts(*connection, tableScripts());
    runScripts(*connection, demoScripts());
    transaction.commit();
  }
  frame::LocalPage local(databases, kInMemory);
  const std::vector<int> ids = schemeIds(local.page());
  Progress progress(err, "compiling", ids.size());
  std::vector<DemoStatement> statements;
  for (const int id : ids) {
    statements.push_back(compileOne(local.page(), id));
    progress.advance();
  }
  return statements;
}

}  // namespace tarlo::app
