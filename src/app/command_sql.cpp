// The sub-command "sql": statements and scripts, as an operator types them.

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <system_error>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/refusal.h"
#include "app/rows_output.h"
#include "database/script.h"

namespace tarlo::app {
namespace {

struct SqlOptions {
  std::string connection;
  std::string standIn;  // what the parser is given in the place of the statement
  std::string file;
  bool translate = false, json = false, csv = false;
};

constexpr const char* kFooter =
    "Statements are T-SQL, whatever the engine. CREATE TABLE, CREATE INDEX and\n"
    "SET IDENTITY_INSERT table ON|OFF are understood. A statement without rows prints \"done\";\n"
    "an INSERT into a table that numbers its rows prints the new number.\n"
    "\n"
    "The table measures its columns on the first 1000 rows and pads a column to 60 places at "
    "most;\n"
    "later rows and longer values are printed whole and push their row to the right. Line ends,\n"
    "control characters and the like are shown as \\n, \\u{1b}; NULL and the text NULL look alike\n"
    "there, and stay apart in --json (null) and --csv (nothing against \"\"). Both print each row "
    "as\n"
    "it comes, so memory does not grow; when a statement fails on the way, the JSON stays open.\n"
    "\n"
    "A script is batches parted by lines that hold only GO. Each batch commits by itself; the "
    "first\n"
    "refused one ends the script with its line. --file - reads standard input.\n";

RowFormat formatOf(const SqlOptions& options) {
  if (options.json) return RowFormat::JsonText;
  return options.csv ? RowFormat::Csv : RowFormat::Table;
}

std::string readFile(const std::string& name) {
  std::ifstream file;
  if (name != "-") {
    std::error_code error;
    if (std::filesystem::is_directory(name, error)) {
      throw CommandError(kFailed, fmt::format("{} is a folder, not a script.", name));
    }
    errno = 0;
    file.open(name, std::ios::binary);
    if (!file) {
      throw CommandError(kFailed, fmt::format("The file {} cannot be read: {}.", name,
                                              std::generic_category().message(errno)));
    }
  }
  std::istream& source = name == "-" ? std::cin : file;
  return {std::istreambuf_iterator<char>(source), {}};
}

// Gives whether the statement had rows to print.
bool runStatement(database::Connection& connection, std::string_view text, std::ostream& out,
                  RowFormat format) {
  const auto rows = connection.open(text);
  if (rows->fieldCount() == 0 && format != RowFormat::JsonText) return false;
  writeRows(out, *rows, format);
  return true;
}

// `name` is the script's, as its user gave it.
void runBatches(database::Connection& connection, const std::string& name,
                const std::string& script, std::ostream& out, RowFormat format) {
  std::size_t silent = 0;
  for (const database::ScriptBatch& batch : database::splitScript(script)) {
    try {
      if (!runStatement(connection, batch.text, out, format)) ++silent;
    } catch (const RuntimeError& error) {
      throw CommandError(
          kFailed, fmt::format("{}, {}", name, placedInFile(error.description(), batch.firstLine)));
    }
  }
  if (silent > 0 && format == RowFormat::Table) {
    out << fmt::format("done: {} batch{} without rows\n", silent, silent == 1 ? "" : "es");
  }
}

int runSql(Console console, const SqlOptions& options, const Words& words) {
  if (words.empty() == options.file.empty()) {
    throw CommandError(kUsage, "Give either a statement or --file with a script.");
  }
  if (options.translate && words.empty()) {
    throw CommandError(kUsage, "--translate wants a statement, not a script.");
  }
  const std::string script = options.file.empty() ? std::string() : readFile(options.file);
  database::Registry databases;
  database::Lease connection = openForCommand(databases, options.connection).borrow();
  connection->allowDdl(true);
  // Somebody sits before it, and can end it.
  connection->setCommandTimeout(std::chrono::milliseconds(0));
  if (!options.file.empty()) {
    runBatches(*connection, options.file, script, console.out, formatOf(options));
  } else if (options.translate) {
    const std::string text = connection->explainTranslation(words.front());
    console.out << text << (text.ends_with('\n') ? "" : "\n");
  } else if (!runStatement(*connection, words.front(), console.out, formatOf(options)) &&
             !options.csv) {
    console.out << "done\n";
  }
  return kDone;
}

}  // namespace

Command addSql(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("sql", "Run a statement or a script");
  const auto options = std::make_shared<SqlOptions>();
  command->add_option("statement", options->standIn, "The statement")->type_name("STATEMENT");
  addDatabaseOption(*command, options->connection);
  command->add_option("--file", options->file, "Run the script in this file")->type_name("FILE");
  auto* json =
      command->add_flag("--json", options->json, "Print {\"columns\": [..], \"rows\": [[..], ..]}");
  command->add_flag("--csv", options->csv, "Print comma-separated values (RFC 4180)")
      ->excludes(json);
  command->add_flag("--translate", options->translate,
                    "Print what the engine would be given, and run nothing");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return runSql(console, *options, words); }};
}

}  // namespace tarlo::app
