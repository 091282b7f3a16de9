// The sub-command "control": what a form gets from a control scheme.

#include <fmt/format.h>

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/refusal.h"
#include "app/rows_output.h"
#include "app/terminal.h"
#include "compile/statement_parts.h"
#include "control/control.h"
#include "frame/local_page.h"
#include "frame/statement_scope.h"
#include "text/display_width.h"
#include "variant/error_state.h"

namespace tarlo::app {
namespace {

using control::Control;
using text::visible;

struct ControlOptions {
  Words standIns;
  std::string connection;
  std::size_t rows = 5;
};

Control controlOf(Page& page, int id) {
  if (auto control = control::loadControl(page, id)) return std::move(*control);
  throw CommandError(kFailed, fmt::format("There is no control scheme {}.", id));
}

std::string fieldLine(const std::optional<control::BoundField>& field) {
  if (!field) return "none";
  return fmt::format("{} [{}].[{}] {}", field->id, field->names.table, field->names.column,
                     field->names.display);
}

void describe(Console console, Page& page, const Control& control) {
  const auto line = [&](std::string_view name, const std::string& value) {
    console.out << fmt::format("{:<10} {}\n", name, visible(value));
  };
  line("control", fmt::format("{} {}", control.id, control.name));
  line("kind", std::string(control::nameOf(control.kind)));
  line("scheme", std::to_string(control.scheme));
  line("field", fieldLine(control::boundField(page, control)));
  for (const std::string& title : control.titles) line("title", title);
  for (const std::string& level : control.levels) line("level", level);
}

// A list that does not run is given to no form, so its statement is not shown.
bool isGiven(Page& page, const Control& control) {
  if (control.kind == control::ControlKind::List) return control::runs(page, control);
  return !control.statement.empty();
}

int showControl(Console console, const ControlOptions& options, const Words& words) {
  database::Registry databases;
  database::Database& database = openForCommand(databases, options.connection);
  frame::LocalPage local(databases, options.connection);
  const Control control = controlOf(local.page(), idFrom(words.front()));
  describe(console, local.page(), control);
  if (!isGiven(local.page(), control)) {
    throw CommandError(kFailed, "The control has no statement that runs.");
  }
  const std::size_t width = widthOf(console.out);
  console.out << '\n' << compile::laidOut(control.statement, width) << '\n';
  ErrorState error;
  error.run([&] {
    const database::StatementContext context = frame::statementContext(frame::kDesignersRights);
    database::Lease connection = database.borrow();
    connection->setContext(&context);
    writeRows(console.out, *connection->open(control.statement), RowFormat::Table,
              {.rows = options.rows, .width = width});
  });
  if (!error.failed()) return kDone;
  throw CommandError(kFailed, fmt::format("The control's statement does not run: {}",
                                          withoutPosition(error.description())));
}

}  // namespace

Command addControl(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("control", "Show what a form gets from a control");
  const auto options = std::make_shared<ControlOptions>();
  addSubject(*command, {"id", "ID", "Id of the control scheme"}, options->standIns,
             options->connection);
  command->add_option("--rows", options->rows, "How many of its rows to print")
      ->type_name("N")
      ->check(CLI::Range(0, 100'000))
      ->capture_default_str();
  command->footer(
      "Prints kind, scheme, the field that it is bound to, the titles of a list or the levels of\n"
      "a cascade, the statement laid out, and its first rows.\n\n" +
      std::string(kExitCodeHelp));
  return {command,
          [console, options](const Words& words) { return showControl(console, *options, words); }};
}

}  // namespace tarlo::app
