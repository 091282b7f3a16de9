#include "variant/array.h"

#include <gtest/gtest.h>

#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/object.h"

namespace tarlo::variant {
namespace {

TEST(Array, IndexesTheFirstDimensionFastest) {
  Array rows({1, 2});
  rows.at(1, 0) = "b";
  rows.at(0, 2) = "c";
  EXPECT_EQ(rows.upperBound(1), 1);
  EXPECT_EQ(rows.upperBound(2), 2);
  EXPECT_EQ(rows.elements()[1].text(), "b");
  EXPECT_EQ(rows.elements()[4].text(), "c");
  EXPECT_TRUE(rows.at(1, 2).isEmpty());
}

TEST(Array, RaisesForBoundsRankAndSize) {
  ErrorState err;
  const auto numberOf = [&](auto&& step) {
    err.clear();
    err.run(step);
    return err.number();
  };
  Array rows({1, 2});
  EXPECT_EQ(numberOf([&] { rows.at(2, 0); }), 9);
  EXPECT_EQ(numberOf([&] { rows.at(0, 3); }), 9);
  EXPECT_EQ(numberOf([&] { rows.at(-1, 0); }), 9);
  EXPECT_EQ(numberOf([&] { rows.at(0); }), 9);
  EXPECT_EQ(numberOf([&] { rows.upperBound(3); }), 9);
  EXPECT_EQ(numberOf([&] { rows.upperBound(0); }), 9);
  EXPECT_EQ(numberOf([] { Array().at(0); }), 9);
  EXPECT_EQ(numberOf([] { Array().upperBound(); }), 9);
  EXPECT_EQ(numberOf([] { Array({-2}); }), 9);
  EXPECT_EQ(numberOf([] { Array({1 << 20, 1 << 20}); }), 7);
  EXPECT_EQ(numberOf([] { Array({PTRDIFF_MAX, PTRDIFF_MAX}); }), 7);
  EXPECT_EQ(Array({-1}).upperBound(), -1);
  EXPECT_EQ(Array::of({}).upperBound(), -1);
}

TEST(Variant, ArraysAreSharedUntilWritten) {
  Variant first = Array::of({"a"});
  Variant second = first;
  second.mutableArray().at(0) = "b";
  EXPECT_EQ(first.array().at(0).text(), "a");
  EXPECT_EQ(second.array().at(0).text(), "b");
  EXPECT_THROW(first.text(), RuntimeError);
  EXPECT_THROW(Variant("a").mutableArray(), RuntimeError);
}

TEST(ErrorState, KeepsTheLastErrorAndLetsOthersThrough) {
  ErrorState err;
  Variant kept = "before";
  EXPECT_FALSE(err.run([&] { kept = toInt32("x"); }));
  EXPECT_EQ(kept.text(), "before");
  EXPECT_TRUE(err.run([&] { kept = 1; }));
  EXPECT_TRUE(err.failed());
  EXPECT_EQ(err.number(), 13);
  EXPECT_TRUE(err.value([]() -> Variant { throw RuntimeError(3265, "no such field"); }).isEmpty());
  EXPECT_EQ(err.number(), 3265);
  EXPECT_EQ(err.description(), "no such field");
  err.clear();
  EXPECT_FALSE(err.failed());
  EXPECT_THROW(err.run([] { throw std::bad_alloc(); }), std::bad_alloc);
}

TEST(Object, RefusesWhatItDoesNotHave) {
  Object object;
  EXPECT_THROW(object.get("Count"), RuntimeError);
  EXPECT_THROW(object.put("Count", 1), RuntimeError);
  try {
    object.call("Open", {});
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 438);
    EXPECT_NE(error.description().find("Open"), std::string::npos);
  }
}

}  // namespace
}  // namespace tarlo::variant
