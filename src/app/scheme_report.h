#pragma once
// What stands between a scheme's stored statement and the one that its definition gives today.

#include <string>
#include <vector>

#include "app/statement_diff.h"
#include "frame/page.h"
#include "scheme/scheme_store.h"

namespace tarlo::app {

struct Compiled {
  std::string statement;
  std::string failure;  // why there is no statement; "" when there is one
};
// Compiles from the definition strings; stores nothing.
Compiled compileFresh(Page& page, const scheme::Scheme& scheme);

// Runs the statement up to its first row. Gives "" or why the database refuses it.
std::string trialRun(database::Connection& connection, const std::string& statement);

enum class Finding {
  Equal,       // the same text, and it runs
  Different,   // the stored one runs, but is not what the definition gives today
  NotStored,   // no statement has been stored
  Broken,      // the stored one no longer runs
  Uncompiled,  // the definition gives no statement any more
};

struct SchemeReport {
  Finding finding = Finding::Equal;
  std::string storedFailure;    // why the stored statement does not run
  std::string compileFailure;   // why the definition gives none
  std::string compiledFailure;  // why the one it gives does not run
  StatementDiff diff;
};
SchemeReport compareScheme(Page& page, database::Connection& connection,
                           const scheme::Scheme& scheme);

// The report in words, one line each, without the scheme's name.
std::vector<std::string> describe(const SchemeReport& report);

}  // namespace tarlo::app
