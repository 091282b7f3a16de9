#include "text/sql_text.h"

#include <gtest/gtest.h>

namespace tarlo::text {
namespace {

TEST(SqlText, KeepsAValueInsideItsLiteral) {
  EXPECT_EQ(sqlText("a'b''"), "N'a''b'''''");
  EXPECT_EQ(sqlText(""), "N''");
}

}  // namespace
}  // namespace tarlo::text
