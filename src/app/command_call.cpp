// The sub-command "call": one operation on a page context in memory.

#include <fmt/format.h>

#include <memory>
#include <optional>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/json_value.h"
#include "app/nearest.h"
#include "app/options.h"
#include "app/platform_schema.h"
#include "component/operations.h"
#include "component/tarlo_query.h"
#include "frame/local_page.h"
#include "org/may_call.h"
#include "siblings/siblings.h"
#include "text/display_width.h"
#include "variant/convert.h"

namespace tarlo::app {
namespace {

using component::Operation;

struct CallOptions {
  std::string connection;
  Words standIns;  // what the parser is given in the place of words
  std::vector<std::string> session, request, application;
};

constexpr const char* kFooter =
    "Prints one JSON object: \"result\", \"arguments\" as they stand after the call, \"response\"\n"
    "(the page text), and \"error\" (number, description) when the operation raised one; a wrong\n"
    "number of arguments is error 450.\n"
    "\n"
    "An argument is text. json:5, json:true, json:null, json:\"text\" or json:[..] give other\n"
    "states, and json: alone gives Empty; the values of K=V are read alike. A word that begins "
    "with\n"
    "one dash, such as -1, is an argument; behind -- everything is.\n"
    "In the output Empty is {}, Null is null, a date is text, a table of rows is a list of "
    "columns,\n"
    "and a decimal is a number where that is exact and text otherwise.\n"
    "The session is empty unless given: most pages want --session usrID=1.\n";

const Operation& operationByName(std::string_view name) {
  if (const Operation* operation = component::findOperation(name)) return *operation;
  std::vector<std::string_view> names;
  for (const Operation& operation : component::operations()) names.push_back(operation.name);
  throw CommandError(kUsage,
                     fmt::format("There is no operation '{}'.{}", name, didYouMean(name, names)));
}

std::vector<Variant> argumentsFrom(const Words& words) {
  std::vector<Variant> arguments;
  for (std::size_t i = 1; i < words.size(); ++i) arguments.push_back(parseArgument(words[i]));
  return arguments;
}

void setValues(frame::ValueMap& map, const std::vector<std::string>& pairs) {
  for (const std::string& pair : pairs) {
    const std::size_t equals = pair.find('=');
    if (equals == std::string::npos || equals == 0) {
      throw CommandError(kUsage, fmt::format("'{}' is not of the form KEY=VALUE.", pair));
    }
    map[pair.substr(0, equals)] = parseArgument(std::string_view(pair).substr(equals + 1));
  }
}

// The component's own words for this name no operation.
RuntimeError wrongCount(const Operation& operation, std::size_t given) {
  return RuntimeError(
      ErrorNumber::WrongArgumentCount,
      fmt::format("{} takes {} argument{}{}{}; {} given", operation.name, operation.arity,
                  operation.arity == 1 ? "" : "s", operation.arity == 0 ? "" : ": ",
                  operation.argumentNames, given));
}

struct Outcome {
  Variant result;
  std::optional<RuntimeError> error;
};

// The request's boundary: what an operation raises is part of its outcome.
Outcome callOn(Page& page, const Operation& operation, std::span<Variant> arguments) {
  component::TarloQuery component;
  component.onStartPage(page);
  Outcome outcome;
  try {
    outcome.result = component.call(operation.name, arguments);
  } catch (const frame::PageEnd&) {
    // The page was complete; an operation that ends it has no result.
  } catch (const RuntimeError& error) {
    outcome.error = error;
    if (arguments.size() != operation.arity)
      outcome.error = wrongCount(operation, arguments.size());
  }
  component.onEndPage();
  return outcome;
}

void writeOutcome(std::ostream& out, const Outcome& outcome, std::span<const Variant> arguments,
                  const std::string& response) {
  Json values = Json::array();
  for (const Variant& argument : arguments) values.push_back(toJson(argument));
  out << "{\"result\": " << jsonText(toJson(outcome.result));
  out << ",\n \"arguments\": " << jsonText(values);
  out << ",\n \"response\": " << jsonText(Json(response));
  if (outcome.error) {
    const Json error = {{"number", outcome.error->number()},
                        {"description", outcome.error->description()}};
    out << ",\n \"error\": " << jsonText(error);
  }
  out << "}\n";
}

// A session with a user stands for that user, and asks as a page of theirs would; one without is
// the operator's own.
void requireAccess(Page& page, const Operation& operation) {
  if (page.session.get("usrID").isEmpty() || org::mayCall(page, operation.access)) return;
  throw CommandError(
      kFailed, fmt::format("User {} may not call {}.", variant::spliced(page.session.get("usrID")),
                           operation.name));
}

// Refused statements, for whoever looks at the console.
class RefusalsTo : public database::RefusalLog {
 public:
  explicit RefusalsTo(std::ostream& out) : out_(out) {}
  void refused(std::string_view statement, std::string_view reason) noexcept override {
    out_ << fmt::format("refused: {}; statement {}\n", text::visible(reason),
                        text::visible(statement));
  }

 private:
  std::ostream& out_;
};

int callOperation(Console console, const CallOptions& options, const Words& words) {
  const Operation& operation = operationByName(words.front());
  std::vector<Variant> arguments = argumentsFrom(words);
  database::Registry databases;
  openPlatform(databases, options.connection);
  frame::LocalPage local(databases, options.connection);
  for (const siblings::ProgId& progId : siblings::progIds()) {
    local.registerObject(std::string(progId.name), progId.make);
  }
  setValues(local.session(), options.session);
  setValues(local.request(), options.request);
  setValues(local.application(), options.application);
  requireAccess(local.page(), operation);
  RefusalsTo refusals(console.err);
  local.page().statements.refusals = &refusals;
  const Outcome outcome = callOn(local.page(), operation, arguments);
  writeOutcome(console.out, outcome, arguments, local.written());
  return outcome.error ? kFailed : kDone;
}

}  // namespace

Command addCall(CLI::App& program, Console console) {
  CLI::App* command = program.add_subcommand("call", "Call an operation of the component");
  const auto options = std::make_shared<CallOptions>();
  command
      ->add_option("operation", options->standIns, "The operation, in any case, then its arguments")
      ->type_name("OPERATION [ARG...]")
      ->expected(1, 1000)
      ->required();
  addDatabaseOption(*command, options->connection);
  const auto pairs = [&](const char* name, std::vector<std::string>& target, const char* what) {
    command->add_option(name, target, what)->type_name("K=V")->allow_extra_args(false);
  };
  pairs("--session", options->session, "A session value, such as usrID=1; may be repeated");
  pairs("--request", options->request, "A request value; may be repeated");
  pairs("--application", options->application, "An application value; may be repeated");
  command->footer(std::string(kFooter) + "\n" + std::string(kExitCodeHelp));
  return {command, [console, options](const Words& given) {
            return callOperation(console, *options, given);
          }};
}

}  // namespace tarlo::app
