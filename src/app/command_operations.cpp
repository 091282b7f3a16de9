// The sub-command "operations": the table of operations for people and for the documentation.

#include <fmt/format.h>

#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/operation_examples.h"
#include "app/table.h"
#include "component/operations.h"
#include "org/may_call.h"
#include "siblings/siblings.h"
#include "text/pieces.h"

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
  return text::replace(text, "|", "\\|");
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

std::string_view wordFor(frame::Caller caller) {
  switch (caller) {
    case frame::Caller::Program:
      return "programs";
    case frame::Caller::SignedIn:
      return "signed in";
    case frame::Caller::FormUser:
      return "users with a menu";
    case frame::Caller::Designer:
      return "designers";
    case frame::Caller::Administrator:
      return "administrators";
  }
  return {};
}

std::string whoMay(const frame::Access& access) {
  if (access.manager == frame::Manager::None) return std::string(wordFor(access.caller));
  const bool isEither = access.subAction == frame::SubAction::AddOrModify;
  return fmt::format("{} of `{}`", isEither ? "add, modify" : org::nameOf(access.subAction),
                     org::addressOf(access.manager));
}

std::string listOf(database::TableGroups groups) {
  constexpr auto kLast = static_cast<int>(database::TableGroup::Server);
  std::vector<std::string_view> names;
  for (int number = 0; number <= kLast; ++number) {
    const auto group = static_cast<database::TableGroup>(number);
    if (groups.contains(group)) names.push_back(database::nameOf(group));
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

void writeAccessRow(std::ostream& out, std::string_view name, const frame::Access& access,
                    const database::StatementRights& rights) {
  out << fmt::format("| {} | {} | {} | {} |\n", name, whoMay(access), listOf(rights.reads),
                     listOf(rights.writes));
}

void writeAccess(std::ostream& out) {
  out << "| operation | who may call it | its statements read | and write |\n|---|---|---|---|\n";
  for (const Operation& operation : component::operations()) {
    writeAccessRow(out, operation.name, operation.access, operation.rights);
  }
  for (const auto& operation : siblings::pageOperations()) {
    writeAccessRow(out, fmt::format("{}.{}", operation.component, operation.name), operation.access,
                   operation.rights);
  }
}

}  // namespace

Command addOperations(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("operations", "List the operations");
  struct Form {
    bool markdown = false, access = false;
  };
  const auto form = std::make_shared<Form>();
  auto* markdown = command->add_flag("--markdown", form->markdown, "As a Markdown table");
  command
      ->add_flag("--access", form->access,
                 "Who may call them and what their statements touch, as a Markdown table")
      ->excludes(markdown);
  return {command, [console, form](const Words&) {
            if (form->access) {
              writeAccess(console.out);
            } else if (form->markdown) {
              writeMarkdown(console.out);
            } else {
              writeAligned(console.out);
            }
            return kDone;
          }};
}

}  // namespace tarlo::app
