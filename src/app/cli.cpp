#include "app/cli.h"

#include <fmt/format.h>

#include <cctype>
#include <memory>

#include "app/command.h"
#include "app/exit_code.h"
#include "app/json_value.h"
#include "app/nearest.h"
#include "variant/runtime_error.h"

namespace tarlo::app {
namespace {

using Arguments = std::span<const char* const>;

// Shows a command's words by what they are ("OPERATION [ARG...]"), not by how they are counted.
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(34); }
  std::string make_option_usage(const CLI::Option* option) const override {
    return option->get_required() ? option->get_type_name() : '[' + option->get_type_name() + ']';
  }
  std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
    return isPositional ? "" : CLI::Formatter::make_option_name(option, false);
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    if (option->get_type_size() == 0) return {};
    return option->get_positional() ? option->get_type_name() : ' ' + option->get_type_name();
  }
};

// A sub-command's arguments as options and words. The words stay out of the command-line library,
// which would take -1 for an option and a value in square brackets for a list.
struct SplitArguments {
  // For the library: the options with their values, then one stand-in for each word so that it can
  // count them.
  std::vector<std::string> forParser;
  Words words;
};

// A statement may begin with a comment, so "--" alone makes no option.
bool looksLikeLongOption(std::string_view argument) {
  if (!argument.starts_with("--") || argument.size() < 3) return false;
  const std::string_view name = argument.substr(2, argument.find('=') - 2);
  return std::isalpha(static_cast<unsigned char>(name.front())) != 0 &&
         name.find_first_of(" \t\r\n") == std::string_view::npos;
}

// A word is everything behind "--", and before it whatever is neither an option of the command, nor
// the value of one, nor looks like a long option (which is then refused as unknown).
SplitArguments splitArguments(const CLI::App& command, std::span<const char* const> arguments) {
  SplitArguments split;
  bool wordsOnly = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string argument = arguments[i];
    if (wordsOnly) {
      split.words.push_back(argument);
      continue;
    }
    if (argument == "--") {
      wordsOnly = true;
      continue;
    }
    const bool named = argument.size() > 1 && argument.front() == '-';
    const std::string name =
        argument.starts_with("--") ? argument.substr(0, argument.find('=')) : argument;
    const CLI::Option* option = named ? command.get_option_no_throw(name) : nullptr;
    if (option == nullptr && !looksLikeLongOption(argument)) {
      split.words.push_back(argument);
      continue;
    }
    split.forParser.push_back(argument);
    const bool takesNext =
        option != nullptr && option->get_items_expected_min() > 0 && name == argument;
    if (takesNext && i + 1 < arguments.size()) split.forParser.emplace_back(arguments[++i]);
  }
  for (std::size_t i = 0; i < split.words.size(); ++i) split.forParser.push_back(std::to_string(i));
  return split;
}

// How many words a command takes.
std::size_t wordLimit(const CLI::App& command) {
  std::size_t limit = 0;
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional())
      limit += static_cast<std::size_t>(option->get_items_expected_max());
  }
  return limit;
}

class Program {
 public:
  explicit Program(Console console)
      : console_(console),
        app_("The query-scheme designer: databases, operations, statements and schemes.",
             std::string(kProgram)) {
    app_.footer(std::string(kExitCodeHelp));
    app_.set_version_flag("--version", fmt::format("{} {}", kProgram, version()),
                          "Say the version, and end");
    app_.set_help_flag("-h,--help", "Say how it is used, and end");
    for (const auto add : {addServe, addInit, addCompile, addSql, addCall, addOperations, addConfig,
                           addSignInLink, addSetPassword, addApiToken, addControl, addPropagate,
                           addFreeze, addRegister, addUnregister, addUpgrade}) {
      commands_.push_back(add(app_, console_));
      commands_.back().options->formatter(std::make_shared<HelpFormatter>());
    }
  }

  int run(Arguments arguments) {
    if (arguments.empty()) {
      console_.err << app_.help();
      return kUsage;
    }
    const std::string_view first = arguments.front();
    if (first.starts_with('-')) return runOptions(arguments);
    for (const Command& command : commands_) {
      if (command.options->get_name() == first) return runCommand(command, arguments.subspan(1));
    }
    std::vector<std::string_view> names;
    for (const Command& command : commands_) names.push_back(command.options->get_name());
    return complain(kUsage, fmt::format("There is no command '{}'.{}\nThe commands are: {}.", first,
                                        didYouMean(first, names), fmt::join(names, ", ")));
  }

  int complain(int exitCode, std::string_view message) {
    console_.out.flush();
    console_.err << kProgram << ": " << message << '\n';
    return exitCode;
  }

 private:
  // The program's own options: all of them end it.
  int runOptions(Arguments arguments) {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    return parsed(app_, std::move(reversed), [] { return kDone; });
  }

  int runCommand(const Command& command, Arguments arguments) {
    const SplitArguments split = splitArguments(*command.options, arguments);
    const std::size_t limit = wordLimit(*command.options);
    if (split.words.size() > limit) {
      throw CommandError(kUsage,
                         fmt::format("'{}' is one argument too many.\nSee '{} {} --help'.",
                                     split.words[limit], kProgram, command.options->get_name()));
    }
    std::vector<std::string> reversed(split.forParser.rbegin(), split.forParser.rend());
    return parsed(*command.options, std::move(reversed), [&] { return command.run(split.words); });
  }

  template <class Then>
  int parsed(CLI::App& app, std::vector<std::string> reversed, Then&& then) {
    try {
      app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
      console_.out << app.help(std::string(&app == &app_ ? "" : kProgram));
      return kDone;
    } catch (const CLI::CallForVersion& version) {
      console_.out << version.what() << '\n';
      return kDone;
    } catch (const CLI::ParseError& error) {
      const std::string name = &app == &app_ ? "" : " " + app.get_name();
      return complain(kUsage, fmt::format("{}\nSee '{}{} --help'.", error.what(), kProgram, name));
    }
    return then();
  }

  Console console_;
  CLI::App app_;
  std::vector<Command> commands_;
};

int runGuarded(Program& program, Arguments arguments) {
  try {
    return program.run(arguments);
  } catch (const CommandError& error) {
    return program.complain(error.exitCode(), error.what());
  } catch (const ArgumentError& error) {
    return program.complain(kUsage, error.what());
  } catch (const RuntimeError& error) {
    return program.complain(kFailed, error.description());
  } catch (const std::exception& error) {
    return program.complain(kFailed, fmt::format("the command failed: {}", error.what()));
  }
}

}  // namespace

int run(std::span<const char* const> arguments, std::ostream& out, std::ostream& err) {
  Program program({out, err});
  const int exitCode = runGuarded(program, arguments.empty() ? arguments : arguments.subspan(1));
  out.flush();
  if (!out.good() && exitCode == kDone) {
    return program.complain(kFailed, "the output could not be written");
  }
  return exitCode;
}

}  // namespace tarlo::app
