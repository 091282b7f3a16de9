#include "variant/compare.h"

#include <gtest/gtest.h>

#include "variant/array.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

struct Row {
  Variant left;
  Variant right;
  int sign;
};

TEST(Compare, OrdersBothWaysRound) {
  const Row rows[] = {
      {"10", 9, 1},     // by value, though "10" < "9" as text
      {"10", "9", -1},  // text against text is ordinal
      {" 9 ", 9, 0},
      {"abc", 99999, 1},  // text that is no number
      {"", 0, 1},
      {{}, "", 0},
      {{}, 0, 0},
      {{}, "a", -1},
      {{}, {}, 0},
      {Decimal{"0.1"}, "0.1", 0},
      {"0.1", 0.1, 0},
      {Decimal{"0.10000000000000000001"}, "0.1", 1},
      {Decimal{"-2.5"}, -2, -1},
      {Decimal{"0"}, {}, 0},
      {std::int64_t{9007199254740993}, Decimal{"9007199254740992"}, 1},
      {"9223372036854775808", std::int64_t{9223372036854775807}, 1},
      {"1e400", 1e300, 1},  // beyond a double, but no error
      {true, -1, 0},
      {true, false, -1},
      {"True", true, 0},
      {"-1", true, 0},
      {"a", "B", 1},
      {"ab", "a", 1},
      {"中", "a", 1},
      {"\U0001F600", "\uFF1C", -1},  // a pair's units lie below U+E000
      {"\U0001F600", "\u4E2D", 1},
      {Date{37264}, "2002-01-08", 0},
      {Date{37264.5}, "2002/1/8", 1},
      {Date{-1.75}, "1899-12-29 06:00:00", 1},
      {Date{-1.75}, Date{-1.25}, 1},  // by time, though the day number is the smaller one
  };
  for (const Row& row : rows) {
    const auto forward = compare(row.left, row.right);
    const auto backward = compare(row.right, row.left);
    ASSERT_TRUE(forward && backward);
    const auto sign = [](std::weak_ordering order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
    EXPECT_EQ(sign(*forward), row.sign) << toText(row.left) << " | " << toText(row.right);
    EXPECT_EQ(sign(*backward), -row.sign) << toText(row.right) << " | " << toText(row.left);
    EXPECT_EQ(equals(row.left, row.right), row.sign == 0);
  }
}

TEST(Compare, NullIsUnknownAndArraysAreRefused) {
  EXPECT_FALSE(compare(Null{}, Null{}).has_value());
  EXPECT_FALSE(equals(Null{}, ""));
  EXPECT_FALSE(equals(0, Null{}));
  EXPECT_THROW(compare(Array({0}), Null{}), RuntimeError);
  EXPECT_THROW(equals("", std::shared_ptr<Object>()), RuntimeError);
}

TEST(Compare, AsTextTakesNullAsEmpty) {
  EXPECT_TRUE(equalsAsText(Null{}, ""));
  EXPECT_TRUE(equalsAsText(10, "10"));
  EXPECT_FALSE(equalsAsText("10.0", 10));
  EXPECT_TRUE(equalsAsText(true, "True"));
}

}  // namespace
}  // namespace tarlo::variant
