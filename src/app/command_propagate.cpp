// The sub-command "propagate": what a change of a table means for the schemes over it, and the
// change itself.

#include <fmt/format.h>

#include <map>
#include <memory>
#include <optional>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "app/scheme_report.h"
#include "app/terminal.h"
#include "compile/operations.h"
#include "control/control.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "metadata/stored_schemes.h"
#include "text/display_width.h"
#include "text/pieces.h"
#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::app {
namespace {

struct PropagateOptions {
  Words standIns;
  std::string connection;
  bool isDryRun = false;
};

enum class Outcome { Unchanged, Changed, Broken };

// What UpdateQuery will make of the scheme.
Outcome outcomeOf(const SchemeReport& report) {
  const bool runs = report.compileFailure.empty() && report.compiledFailure.empty();
  if (!runs) return Outcome::Broken;
  return report.finding == Finding::Equal ? Outcome::Unchanged : Outcome::Changed;
}

class Propagation {
 public:
  Propagation(Console console, const PropagateOptions& options)
      : console_(console),
        options_(options),
        database_(openPlatform(databases_, options.connection)),
        local_(databases_, options.connection) {}

  int run(const std::string& word) {
    const int table = tableFrom(word);
    const std::vector<int> schemes = schemesOf(table);
    Progress progress(console_.err, "trying", schemes.size());
    for (const int id : schemes) {
      progress.clear();
      one(id);
      progress.advance();
    }
    progress.clear();
    if (!options_.isDryRun && !schemes.empty()) compile::UpdateQuery(page(), table);
    summarise(schemes.size());
    if (counts_[Outcome::Broken] > 0 || brokenControls_ > 0) return kDifferent;
    return options_.isDryRun && counts_[Outcome::Changed] > 0 ? kDifferent : kDone;
  }

 private:
  Page& page() { return local_.page(); }

  // An id or a physical name.
  int tableFrom(const std::string& word) {
    const bool isId = !word.empty() && word.size() <= 9 &&
                      word.find_first_not_of("0123456789") == std::string::npos;
    const std::string condition =
        isId ? "Zembra_ID=" + word : "DDT_Name='" + text::doubledQuotes(word) + "'";
    const frame::Rows rows =
        frame::rows(page(), "select Zembra_ID from Zembra_DataDict_Table where " + condition);
    if (!rows.empty()) return variant::toInt32(rows.front().value(0));
    throw CommandError(kFailed, fmt::format("The dictionary has no table '{}'.", word));
  }

  std::vector<int> schemesOf(int table) {
    std::vector<int> ids;
    for (const std::string& id : metadata::schemesOver(page(), std::to_string(table))) {
      ids.push_back(variant::toInt32(id));
    }
    return ids;
  }

  void one(int id) {
    const std::optional<scheme::Scheme> scheme = scheme::loadScheme(page(), id);
    if (!scheme) return;  // gone in the meantime
    SchemeReport report;
    {
      database::Lease connection = database_.borrow();
      report = compareScheme(page(), *connection, *scheme);
    }
    const Outcome outcome = outcomeOf(report);
    ++counts_[outcome];
    if (outcome != Outcome::Unchanged) print(*scheme, report, outcome);
    checkControls(id);
  }

  void print(const scheme::Scheme& scheme, const SchemeReport& report, Outcome outcome) {
    const std::string& reason =
        report.compileFailure.empty() ? report.compiledFailure : report.compileFailure;
    console_.out << fmt::format("scheme {} {}{}: {}\n", scheme.id, text::visible(scheme.name),
                                scheme.deleted ? " (deleted)" : "",
                                outcome == Outcome::Broken ? "broken: " + reason : "changed");
    if (outcome == Outcome::Broken) return;
    for (const std::string& line : report.diff.lines)
      console_.out << "  " << text::visible(line) << '\n';
  }

  // Stored statements of control schemes are not touched by the propagation; the forms that use
  // them will find out.
  void checkControls(int scheme) {
    for (const control::Control& control : control::controlsOn(page(), scheme)) {
      database::Lease connection = database_.borrow();
      const std::string failure = trialRun(*connection, control.statement);
      if (failure.empty()) continue;
      ++brokenControls_;
      console_.out << fmt::format("control {} {} on scheme {}: no longer runs: {}\n", control.id,
                                  text::visible(control.name), scheme, failure);
    }
  }

  void summarise(std::size_t schemes) {
    console_.out << fmt::format(
        "{} schemes: {} unchanged, {} {}, {} broken; {} controls no longer run\n", schemes,
        counts_[Outcome::Unchanged], counts_[Outcome::Changed],
        options_.isDryRun ? "would change" : "changed", counts_[Outcome::Broken], brokenControls_);
  }

  Console console_;
  const PropagateOptions& options_;
  database::Registry databases_;
  database::Database& database_;
  frame::LocalPage local_;
  std::map<Outcome, std::size_t> counts_;
  std::size_t brokenControls_ = 0;
};

constexpr const char* kFooter =
    "TABLE is a table of the dictionary, by id or physical name. Every scheme over it, deleted "
    "ones\n"
    "included, is compiled anew and tried: a changed one is shown by select items and clauses\n"
    "(- stored, + compiled now), a broken one with the reason. Then the new statements are "
    "stored;\n"
    "a broken scheme keeps the one it has. --dry-run stores nothing. Control schemes keep their\n"
    "statements in any case; those that no longer run are named.\n"
    "Exit code 4: something is broken, or, with --dry-run, something would change.\n";

}  // namespace

Command addPropagate(CLI::App& program, Console console) {
  CLI::App* command =
      program.add_subcommand("propagate", "Compile the schemes over a changed table again");
  const auto options = std::make_shared<PropagateOptions>();
  addSubject(*command, {"table", "TABLE", "Id or name of the table"}, options->standIns,
             options->connection);
  command->add_flag("--dry-run", options->isDryRun, "Say what would change, and store nothing");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command, [console, options](const Words& words) {
            return Propagation(console, *options).run(words.front());
          }};
}

}  // namespace tarlo::app
