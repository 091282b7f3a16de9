#pragma once
// A page context on a new database file of its own: what the fixtures of most folders begin with.

#include <string>
#include <string_view>

#include "database/script.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "support/temporary_folder.h"

namespace tarlo::testing {

class DatabasePage {
 public:
  Page& page() { return local_.page(); }
  frame::LocalPage& local() { return local_; }

  void execute(std::string_view sql) { frame::execSQL(page(), sql); }
  // Runs a script as the product does when it makes its tables.
  void runScript(std::string_view script) {
    database::Lease connection = frame::borrowConnection(page());
    connection->setContext(nullptr);
    connection->allowDdl(true);
    database::runScript(*connection, script);
  }
  void ask(std::string_view key, const Variant& value) {
    local_.request()[std::string(key)] = value;
  }
  // What the step writes into the page.
  template <class Step>
  std::string writtenBy(Step&& step) {
    const std::size_t before = local_.written().size();
    step();
    return local_.written().substr(before);
  }

 private:
  TemporaryFolder folder_;
  database::Registry databases_{{.create = true}};
  frame::LocalPage local_{databases_, "sqlite:" + (folder_.path() / "test.db").string()};
};

}  // namespace tarlo::testing
