// The examples of the documentation do what it says.

#include "app/operation_examples.h"

#include <gtest/gtest.h>

#include <set>

#include "cli_fixture.h"
#include "component/operations.h"

namespace tarlo::app {
namespace {

// Words as a shell parts them: quotes of both kinds, no escapes.
std::vector<std::string> shellWords(std::string_view line) {
  std::vector<std::string> words;
  bool isOpen = false;
  char quote = 0;
  for (const char c : line) {
    if (quote != 0 ? c == quote : c == '\'' || c == '"') {
      quote = quote == 0 ? c : '\0';
      if (!isOpen) words.emplace_back();
      isOpen = true;
    } else if (quote == 0 && c == ' ') {
      isOpen = false;
    } else {
      if (!isOpen) words.emplace_back();
      isOpen = true;
      words.back() += c;
    }
  }
  return words;
}

using OperationExamplesTest = CliTest;

TEST_F(OperationExamplesTest, EachOperationHasOneAndItHolds) {
  ASSERT_EQ(cli({"init", "--demo", "--database", connection("demo.db")}).exitCode, 0);
  std::set<std::string_view> shown;
  for (const OperationExample& example : operationExamples()) {
    EXPECT_TRUE(shown.insert(example.operation).second) << example.operation;
    std::vector<std::string> words = {"call", "--database", connection("demo.db"),
                                      std::string(example.operation)};
    for (std::string& word : shellWords(example.words)) words.push_back(std::move(word));
    const CliResult result = cli(words);
    EXPECT_NE(result.out.find(example.holds), std::string::npos)
        << example.operation << ": " << result.out.substr(0, 500) << result.err;
    EXPECT_EQ(result.exitCode, example.result == "raises" ? 1 : 0) << example.operation;
  }
  for (const auto& operation : component::operations()) {
    EXPECT_EQ(shown.count(operation.name), 1u) << operation.name;
  }
}

}  // namespace
}  // namespace tarlo::app
