// Calling operations from C++: a database, a page context in memory, the component.
//
//   call_operations CONNECTION
//
// prints the statement and the titles of the first query scheme.

#include <iostream>

#include "component/tarlo_query.h"
#include "frame/local_page.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace {

using tarlo::Variant;

// Operations are found by name, in any case; they may write into their arguments.
Variant call(tarlo::component::TarloQuery& query, std::string_view operation,
             std::vector<Variant> arguments) {
  return query.call(operation, arguments);
}

int run(const char* connection) {
  tarlo::database::Registry databases;
  tarlo::frame::LocalPage local(databases, connection);
  local.session()["usrID"] = 1;
  tarlo::component::TarloQuery query;
  query.onStartPage(local.page());

  // Rows come as (column, row), both from 0; Empty says that there are none.
  const Variant sql = call(query, "getQuerySQL", {1, false});
  std::cout << "statement: " << tarlo::variant::spliced(sql).substr(0, 60) << "...\n";
  const Variant titles = call(query, "getQueryAllTitle", {1, false});
  if (titles.isArray()) {
    for (std::ptrdiff_t i = 1; i <= titles.array().upperBound(); ++i) {
      std::cout << "column " << i << ": " << tarlo::variant::spliced(titles.array().at(i)) << '\n';
    }
  }
  query.onEndPage();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "call_operations CONNECTION\n";
    return 2;
  }
  try {
    return run(argv[1]);
  } catch (const tarlo::RuntimeError& error) {
    // Number, description, source: as a page's script would see them.
    std::cerr << error.number() << ": " << error.description() << '\n';
    return 1;
  }
}
