// The examples of the documentation do what it says.

#include "app/operation_examples.h"

#include <gtest/gtest.h>

#include <set>

#include "cli_fixture.h"
#include "component/operations.h"
#include "support/shell_words.h"
#include "support/text.h"

namespace tarlo::app {
namespace {

using tarlo::testing::holds;

using OperationExamplesTest = CliTest;

TEST_F(OperationExamplesTest, EachOperationHasOneAndItHolds) {
  ASSERT_EQ(cli({"init", "--demo", "--database", connection("demo.db")}).exitCode, 0);
  std::set<std::string_view> shown;
  for (const OperationExample& example : operationExamples()) {
    EXPECT_TRUE(shown.insert(example.operation).second) << example.operation;
    std::vector<std::string> words = {"call", "--database", connection("demo.db"),
                                      std::string(example.operation)};
    for (std::string& word : tarlo::testing::shellWords(example.words))
      words.push_back(std::move(word));
    const CliResult result = cli(words);
    EXPECT_TRUE(holds(result.out, example.holds))
        << example.operation << ": " << result.out.substr(0, 500) << result.err;
    EXPECT_EQ(result.exitCode, example.result == "raises" ? 1 : 0) << example.operation;
  }
  for (const auto& operation : component::operations())
    EXPECT_EQ(shown.count(operation.name), 1u) << operation.name;
}

}  // namespace
}  // namespace tarlo::app
