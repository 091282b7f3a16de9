#include "app/arguments.h"

#include <cctype>
#include <string_view>

namespace tarlo::app {
namespace {

// A statement may begin with a comment, so "--" alone makes no option.
bool looksLikeLongOption(std::string_view argument) {
  if (!argument.starts_with("--") || argument.size() < 3) return false;
  const std::string_view name = argument.substr(2, argument.find('=') - 2);
  return std::isalpha(static_cast<unsigned char>(name.front())) != 0 &&
         name.find_first_of(" \t\r\n") == std::string_view::npos;
}

}  // namespace

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

}  // namespace tarlo::app
