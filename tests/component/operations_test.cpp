#include "component/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <vector>

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::component {
namespace {

// The rows of operations.tsv: folder, operation, kind, arguments, errors.
std::vector<std::array<std::string, 5>> expectedRows() {
  std::ifstream file(TARLO_TEST_DATA "/operations.tsv");
  std::vector<std::array<std::string, 5>> rows;
  std::string line;
  std::getline(file, line);  // titles
  while (std::getline(file, line)) {
    const auto cells = text::split(line, "\t");
    if (cells.size() != 5) throw std::runtime_error(line);
    std::ranges::copy(cells, rows.emplace_back().begin());
  }
  return rows;
}

TEST(Operations, AgreeWithTheList) {
  const auto rows = expectedRows();
  EXPECT_EQ(operations().size(), rows.size());
  for (const auto& [folder, name, kind, arguments, errors] : rows) {
    const Operation* operation = findOperation(name);
    ASSERT_NE(operation, nullptr) << name;
    EXPECT_EQ(operation->name, name);
    EXPECT_EQ(operation->folder, folder) << name;
    EXPECT_EQ(operation->kind == OperationKind::Page, kind == "page") << name;
    EXPECT_EQ(operation->errors == ErrorMode::Raise, errors == "raise") << name;
    EXPECT_EQ(operation->argumentNames, arguments == "-" ? "" : arguments) << name;
    EXPECT_EQ(operation->arity, text::split(operation->argumentNames, ",").size()) << name;
  }
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
