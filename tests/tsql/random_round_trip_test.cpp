#include <gtest/gtest.h>

#include "tsql/error.h"
#include "tsql/lex/shape.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/random_tree.h"

namespace tarlo::tsql {
namespace {

TEST(RoundTrip, GivesEveryRandomTreeBack) {
  Shape shape;
  for (unsigned seed = 0; seed < 4000; ++seed) {
    const ast::Batch batch = RandomTree(seed).batch();
    const std::string printed = printTsql(batch);
    ASSERT_TRUE(shapeOf(printed, shape)) << seed << ": " << printed;
    try {
      ASSERT_EQ(parse(printed), batch) << seed << ": " << printed;
    } catch (const StatementError& error) {
      FAIL() << seed << ": " << printed << "\n" << error.what();
    }
  }
}

}  // namespace
}  // namespace tarlo::tsql
