#include "variant/text.h"

#include <gtest/gtest.h>

#include "variant/runtime_error.h"

namespace tarlo::variant {
namespace {

// Beyond the eight-byte steps that ASCII is scanned in, so that both ways of counting meet.
constexpr std::string_view kMixed = "select * 中文😀b";

TEST(Text, CutsInUnitsAndDropsHalfCharacters) {
  EXPECT_EQ(mid(kMixed, 10), "中文😀b");
  EXPECT_EQ(mid(kMixed, 11, 1), "文");
  EXPECT_EQ(mid(kMixed, 12, 1), "");
  EXPECT_EQ(mid(kMixed, 12, 2), "😀");
  EXPECT_EQ(mid(kMixed, 13, 1), "");
  EXPECT_EQ(mid(kMixed, 13, 2), "b");
  EXPECT_EQ(mid(kMixed, 13), "b");
  EXPECT_EQ(mid(kMixed, 15), "");
  EXPECT_EQ(mid(kMixed, 1, PTRDIFF_MAX), kMixed);
  EXPECT_EQ(left(kMixed, 12), "select * 中文");
  EXPECT_EQ(left(kMixed, 0), "");
  EXPECT_EQ(left(kMixed, 99), kMixed);
  EXPECT_EQ(right(kMixed, 1), "b");
  EXPECT_EQ(right(kMixed, 2), "b");
  EXPECT_EQ(right(kMixed, 3), "😀b");
  EXPECT_EQ(right(kMixed, 99), kMixed);
  EXPECT_THROW(mid("a", 0), RuntimeError);
  EXPECT_THROW(mid("a", 1, -1), RuntimeError);
  EXPECT_THROW(left("a", -1), RuntimeError);
  EXPECT_THROW(right("a", -1), RuntimeError);
}

TEST(Text, FindsByUnitPosition) {
  EXPECT_EQ(inStr(kMixed, "b"), 14u);
  EXPECT_EQ(inStr(kMixed, "😀"), 12u);
  EXPECT_EQ(inStr("abab", "ab", 2), 3u);
  EXPECT_EQ(inStr("abab", "AB"), 0u);
  EXPECT_EQ(inStr("abab", "ab", 9), 0u);
  EXPECT_EQ(inStr("abc", "", 3), 3u);
  EXPECT_EQ(inStr("abc", "", 4), 0u);
  EXPECT_EQ(inStr("", ""), 0u);
  EXPECT_THROW(inStr("a", "a", 0), RuntimeError);
}

}  // namespace
}  // namespace tarlo::variant
