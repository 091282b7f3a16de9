#include "app/scheme_report.h"

#include <fmt/format.h>

#include "app/refusal.h"
#include "frame/statement_scope.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::app {

Compiled compileFresh(Page& page, const scheme::Scheme& scheme) {
  ErrorState error;
  Compiled compiled;
  error.run([&] { compiled.statement = compile::compileDefinition(page, scheme.definition); });
  if (error.failed()) {
    compiled.failure = withoutPosition(error.description());
  } else if (compiled.statement.empty()) {
    compiled.failure = "the definition gives no statement";
  }
  return compiled;
}

std::string trialRun(database::Connection& connection, const std::string& statement) {
  // What was stored, by whomever, only ever reads.
  const database::StatementContext context = frame::statementContext(frame::kDesignersRights);
  connection.setContext(&context);
  ErrorState error;
  error.run([&] { connection.execute(statement); });
  connection.setContext(nullptr);
  return std::string(withoutPosition(error.description()));
}

SchemeReport compareScheme(Page& page, database::Connection& connection,
                           const scheme::Scheme& scheme) {
  SchemeReport report;
  const std::string& stored = scheme.stored;
  const Compiled compiled = compileFresh(page, scheme);
  const bool same = compiled.failure.empty() && compiled.statement == stored;
  report.compileFailure = compiled.failure;
  if (!stored.empty()) report.storedFailure = trialRun(connection, stored);
  if (compiled.failure.empty()) {
    report.compiledFailure = same ? report.storedFailure : trialRun(connection, compiled.statement);
    if (!stored.empty()) report.diff = diffStatements(stored, compiled.statement);
  }
  if (!report.storedFailure.empty()) {
    report.finding = Finding::Broken;
  } else if (!report.compileFailure.empty()) {
    report.finding = Finding::Uncompiled;
  } else if (stored.empty()) {
    report.finding = Finding::NotStored;
  } else {
    report.finding = same ? Finding::Equal : Finding::Different;
  }
  return report;
}

namespace {

std::string outlook(const SchemeReport& report) {
  if (!report.compileFailure.empty()) {
    return "  compiling it anew fails: " + report.compileFailure;
  }
  if (!report.compiledFailure.empty()) {
    return "  compiling it anew does not help: " + report.compiledFailure;
  }
  return "  compiled anew, it runs";
}

}  // namespace

std::vector<std::string> describe(const SchemeReport& report) {
  std::vector<std::string> lines;
  switch (report.finding) {
    case Finding::Equal:
      return {"equal"};
    case Finding::NotStored:
      return {"no statement is stored", outlook(report)};
    case Finding::Uncompiled:
      return {"cannot be compiled any more: " + report.compileFailure};
    case Finding::Broken:
      lines = {"no longer runs: " + report.storedFailure, outlook(report)};
      break;
    case Finding::Different:
      lines = {"differs: " + summaryOf(report.diff)};
      if (!report.compiledFailure.empty()) {
        lines.push_back("  the new statement does not run: " + report.compiledFailure);
      }
      break;
  }
  for (const std::string& line : report.diff.lines) lines.push_back("  " + line);
  return lines;
}

}  // namespace tarlo::app
