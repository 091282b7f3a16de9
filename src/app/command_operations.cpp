// The sub-command "operations": the table of operations for people and for the documentation.

#include <fmt/format.h>

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/operation_examples.h"
#include "app/table.h"
#include "component/operations.h"
#include "variant/text.h"

namespace tarlo::app {
namespace {

using component::Operation;

const std::vector<std::string> kTitles = {"operation", "folder", "kind", "arguments", "errors"};

std::vector<std::string> rowOf(const Operation& operation) {
  const bool page = operation.kind == component::OperationKind::Page;
  const bool raises = operation.errors == component::ErrorMode::Raise;
  std::string names;
  for (const char c : operation.argumentNames) {
    names += c;
    if (c == ',') names += ' ';
  }
  return {std::string(operation.name), std::string(operation.folder), page ? "page" : "service",
          names, raises ? "raise" : "resume-next"};
}

void writeAligned(std::ostream& out) {
  Table table(out, kTitles);
  for (const Operation& operation : component::operations()) {
    std::vector<Cell> cells;
    for (std::string& text : rowOf(operation)) cells.push_back({std::move(text), false});
    table.add(std::move(cells));
  }
  table.finish();
}

// A bar would end the cell.
std::string shown(const OperationExample& example) {
  const std::string_view gap = example.words.empty() ? "" : " ";
  const std::string text =
      fmt::format("`call {}{}{}` gives `{}`", example.operation, gap, example.words, example.holds);
  return variant::replace(text, "|", "\\|");
}

void writeMarkdown(std::ostream& out) {
  out << fmt::format("| {} | result | example |\n", fmt::join(kTitles, " | "));
  out << "|---|---|---|---|---|---|---|\n";
  for (const Operation& operation : component::operations()) {
    const OperationExample* example = exampleOf(operation.name);
    out << fmt::format("| {} | {} | {} |\n", fmt::join(rowOf(operation), " | "),
                       example ? example->result : "", example ? shown(*example) : "");
  }
}

}  // namespace

Command addOperations(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("operations", "List the operations");
  const auto markdown = std::make_shared<bool>(false);
  command->add_flag("--markdown", *markdown, "As a Markdown table");
  return {command, [console, markdown](const Words&) {
            *markdown ? writeMarkdown(console.out) : writeAligned(console.out);
            return kDone;
          }};
}

}  // namespace tarlo::app
