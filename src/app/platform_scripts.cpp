#include "app/platform_scripts.h"

#include <embedded_schema.h>
#include <fmt/format.h>

#include <algorithm>

#include "app/exit_code.h"
#include "app/interruption.h"
#include "app/refusal.h"
#include "database/script.h"
#include "text/fold.h"

namespace tarlo::app {
namespace {

constexpr std::string_view kTables = "tables/";
constexpr std::string_view kDemo = "demo/";
// Demo scripts from this name on tell what happened after the schemes were compiled.
constexpr std::string_view kLaterDemo = "demo/90";

template <class Wanted>
std::vector<Script> scriptsWhere(Wanted&& wanted) {
  std::vector<Script> scripts;
  for (const auto& file : embedded::schema::files()) {
    if (wanted(file.name)) scripts.push_back({file.name, file.text});
  }
  std::sort(scripts.begin(), scripts.end(),
            [](const Script& a, const Script& b) { return a.name < b.name; });
  return scripts;
}

// The name behind CREATE TABLE; "" for another statement. Lines of comment may stand before it.
std::string_view createdTable(std::string_view batch) {
  while (batch.starts_with("--") || batch.starts_with('\n') || batch.starts_with('\r')) {
    batch.remove_prefix(std::min(batch.find('\n'), batch.size() - 1) + 1);
  }
  constexpr std::string_view kCreate = "CREATE TABLE ";
  if (!text::equalsNoCase(batch.substr(0, kCreate.size()), kCreate)) return {};
  batch.remove_prefix(kCreate.size());
  return batch.substr(0, batch.find_first_of(" (\r\n"));
}

void runBatches(database::Connection& connection, const Script& script) {
  for (const database::ScriptBatch& batch : database::splitScript(script.text)) {
    endWhenInterrupted();
    try {
      connection.execute(batch.text);
    } catch (const RuntimeError& error) {
      throw CommandError(kFailed, fmt::format("{}, {}", script.name,
                                              placedInFile(error.description(), batch.firstLine)));
    }
  }
}

}  // namespace

std::vector<Script> tableScripts() {
  return scriptsWhere([](std::string_view name) { return name.starts_with(kTables); });
}

std::vector<Script> demoScripts() {
  return scriptsWhere(
      [](std::string_view name) { return name.starts_with(kDemo) && name < kLaterDemo; });
}

std::vector<Script> laterDemoScripts() {
  return scriptsWhere(
      [](std::string_view name) { return name.starts_with(kDemo) && name >= kLaterDemo; });
}

void runScripts(database::Connection& connection, const std::vector<Script>& scripts) {
  for (const Script& script : scripts) runBatches(connection, script);
}

std::vector<std::string> tablesMadeBy(const std::vector<Script>& scripts) {
  std::vector<std::string> tables;
  for (const Script& script : scripts) {
    for (const database::ScriptBatch& batch : database::splitScript(script.text)) {
      const std::string_view name = createdTable(batch.text);
      if (!name.empty()) tables.emplace_back(name);
    }
  }
  return tables;
}

}  // namespace tarlo::app
