// The sub-command "compile": what schemes give today, against what they hold.

#include <fmt/format.h>

#include <map>
#include <memory>
#include <optional>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/refusal.h"
#include "app/rows_output.h"
#include "app/scheme_report.h"
#include "app/terminal.h"
#include "compile/statement_parts.h"
#include "frame/local_page.h"
#include "frame/statement_scope.h"
#include "text/display_width.h"
#include "variant/error_state.h"

namespace tarlo::app {
namespace {

using scheme::Scheme;

struct CompileOptions {
  std::string connection;
  Words standIns;  // what the parser is given in the place of ids
  bool all = false, compare = false;
  std::size_t rows = 0;
};

constexpr const char* kFooter =
    "A scheme is compiled from its definition and today's dictionary; nothing is stored. Its id,\n"
    "name and compiler stand on one line, the statement as it is on the next.\n"
    "--rows runs it and is for reading: the statement is laid out over lines, and the table keeps\n"
    "to the width of the terminal (160 places elsewhere), with as many columns as fit; 'sql' "
    "prints\n"
    "them all.\n"
    "--compare holds it against the statement that is stored, and tries that one: it says whether\n"
    "they are equal, how they differ by select items and clauses (- stored, + compiled now), or "
    "why\n"
    "the stored one no longer runs.\n";

std::vector<int> idsOf(const Words& words) {
  std::vector<int> ids;
  for (const std::string& word : words) ids.push_back(idFrom(word));
  return ids;
}

// The library's own check answers with the largest double.
std::string rowCount(const std::string& text) {
  const bool digits = text.find_first_not_of("0123456789") == std::string::npos;
  const bool some = text.find_first_not_of('0') != std::string::npos;
  if (digits && some && text.size() <= 9) return {};
  return fmt::format("'{}' is not a number of rows from 1 on.", text);
}

class Compiler {
 public:
  Compiler(Console console, const CompileOptions& options)
      : console_(console),
        options_(options),
        database_(openForCommand(databases_, options.connection)),
        local_(databases_, options.connection),
        width_(widthOf(console.out)) {}

  int run(std::vector<int> ids) {
    if (options_.all) {
      for (const scheme::SchemeTitle& title : scheme::listSchemes(page())) ids.push_back(title.id);
    }
    Progress progress(console_.err, options_.compare ? "comparing" : "compiling", ids.size());
    for (const int id : ids) {
      progress.clear();
      one(id);
      progress.advance();
    }
    progress.clear();
    if (options_.compare) summarise();
    return failed_ > 0 && exitCode_ == kDone ? kFailed : exitCode_;
  }

 private:
  Page& page() { return local_.page(); }

  void one(int id) {
    std::optional<Scheme> scheme;
    ErrorState error;
    error.run([&] { scheme = scheme::loadScheme(page(), id); });
    if (!scheme) {
      const auto why = error.failed() ? error.description() : "there is no such scheme";
      fail(fmt::format("scheme {}: {}", id, why));
      return;
    }
    options_.compare ? compare(*scheme) : show(*scheme);
  }

  static std::string titleOf(const Scheme& scheme) {
    return fmt::format("scheme {} {}{}", scheme.id, text::visible(scheme.name),
                       scheme.deleted ? " (deleted)" : "");
  }

  void show(const Scheme& scheme) {
    const Compiled compiled = compileFresh(page(), scheme);
    const std::string title =
        fmt::format("{} ({})", titleOf(scheme), compile::operationFor(scheme.definition));
    if (!compiled.failure.empty()) {
      fail(fmt::format("{}: {}", title, compiled.failure));
      return;
    }
    console_.out << title << '\n';
    if (options_.rows == 0) {
      console_.out << compiled.statement << "\n\n";
      return;
    }
    console_.out << compile::laidOut(compiled.statement, width_) << '\n';
    showRows(title, compiled.statement);
    console_.out << '\n';
  }

  void showRows(const std::string& title, const std::string& statement) {
    ErrorState error;
    error.run([&] {
      const database::StatementContext context = frame::statementContext(frame::kDesignersRights);
      database::Lease connection = database_.borrow();
      connection->setContext(&context);
      writeRows(console_.out, *connection->open(statement), RowFormat::Table,
                {.rows = options_.rows, .width = width_});
    });
    if (error.failed()) {
      fail(fmt::format("{}: does not run: {}", title, withoutPosition(error.description())));
    }
  }

  void compare(const Scheme& scheme) {
    SchemeReport report;
    {
      database::Lease connection = database_.borrow();
      report = compareScheme(page(), *connection, scheme);
    }
    ++findings_[report.finding];
    if (report.finding != Finding::Equal) exitCode_ = kDifferent;
    const std::vector<std::string> lines = describe(report);
    console_.out << titleOf(scheme) << ": " << lines.front() << '\n';
    for (std::size_t i = 1; i < lines.size(); ++i) console_.out << text::visible(lines[i]) << '\n';
  }

  void summarise() {
    const std::size_t odd = findings_[Finding::NotStored] + findings_[Finding::Uncompiled];
    console_.out << fmt::format("{} equal, {} different, {} no longer running",
                                findings_[Finding::Equal], findings_[Finding::Different],
                                findings_[Finding::Broken]);
    if (odd > 0) console_.out << fmt::format(", {} without a statement", odd);
    if (failed_ > 0) console_.out << fmt::format(", {} not found", failed_);
    console_.out << '\n';
  }

  void fail(const std::string& message) {
    console_.out.flush();
    console_.err << message << '\n';
    ++failed_;
  }

  Console console_;
  const CompileOptions& options_;
  database::Registry databases_;
  database::Database& database_;
  frame::LocalPage local_;
  std::size_t width_;
  std::map<Finding, std::size_t> findings_;
  std::size_t failed_ = 0;
  int exitCode_ = kDone;
};

int runCompile(Console console, const CompileOptions& options, const Words& words) {
  if (words.empty() != options.all) {
    throw CommandError(kUsage, "Give the ids of schemes, or --all.");
  }
  if (options.compare && options.rows > 0) {
    throw CommandError(kUsage, "--compare and --rows cannot stand together.");
  }
  std::vector<int> ids = idsOf(words);
  return Compiler(console, options).run(std::move(ids));
}

}  // namespace

Command addCompile(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("compile", "Compile schemes without storing them");
  const auto options = std::make_shared<CompileOptions>();
  command->add_option("ids", options->standIns, "Ids of schemes")->type_name("ID...");
  addDatabaseOption(*command, options->connection);
  command->add_flag("--all", options->all, "Every scheme that is not deleted");
  command->add_option("--rows", options->rows, "Run each statement and print its first N rows")
      ->type_name("N")
      ->check(rowCount);
  command->add_flag("--compare", options->compare, "Hold them against the stored statements");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& ids) { return runCompile(console, *options, ids); }};
}

}  // namespace tarlo::app
