#include "component/operations.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::component {
namespace {

TEST(Operations, AgreeWithTheList) {
  std::ifstream file(TARLO_TEST_DATA "/operations.tsv");
  std::string line;
  std::getline(file, line);  // titles
  std::size_t count = 0;
  for (; std::getline(file, line); ++count) {
    const auto cells = text::split(line, "\t");
    ASSERT_EQ(cells.size(), 5u) << line;
    const Operation* found = findOperation(cells[1]);
    ASSERT_NE(found, nullptr) << line;
    const std::string_view kind = found->kind == OperationKind::Page ? "page" : "service";
    const std::string_view errors = found->errors == ErrorMode::Raise ? "raise" : "resume-next";
    const std::string_view arguments = found->argumentNames.empty() ? "-" : found->argumentNames;
    EXPECT_EQ(
        text::joined({found->folder, "\t", found->name, "\t", kind, "\t", arguments, "\t", errors}),
        line);
    EXPECT_EQ(found->arity, text::split(found->argumentNames, ",").size()) << line;
  }
  EXPECT_EQ(operations().size(), count);
}

TEST(Operations, StandInOrderAndAreFoundInAnyCase) {
  for (std::size_t i = 0; i < operations().size(); ++i) {
    const std::string name = text::foldedName(operations()[i].name);
    const std::string before = i > 0 ? text::foldedName(operations()[i - 1].name) : "";
    EXPECT_LT(before, name);
    EXPECT_EQ(findOperation(name), &operations()[i]);
  }
  for (const char* name : {"", "getQuery", "getQuery_None2", "zzz", "OnStartPage"}) {
    EXPECT_EQ(findOperation(name), nullptr) << name;
  }
}

}  // namespace
}  // namespace tarlo::component
