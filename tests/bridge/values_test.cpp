#include "bridge/values.h"

#include <gtest/gtest.h>

#include "bridge/exported_object.h"
#include "variant/array.h"
#include "variant/compare.h"

namespace tarlo::bridge {
namespace {

Variant through(const Variant& value) {
  tarlo_variant copy = toC(value);
  Variant back = fromC(copy);
  tarlo_clear(&copy);
  EXPECT_EQ(copy.kind, TARLO_EMPTY);
  return back;
}

TEST(Values, EveryKindComesBackAsItWas) {
  const std::string text("a\0中", 5);
  for (const Variant& value :
       {Variant(), Variant(variant::Null{}), Variant(text), Variant(""), Variant(std::int16_t{-7}),
        Variant(7), Variant(std::int64_t{1} << 40), Variant(0.5),
        Variant(variant::Decimal{"-12.50"}), Variant(true), Variant(variant::Date{45000.25})}) {
    const Variant back = through(value);
    EXPECT_EQ(back.state(), value.state());
    EXPECT_TRUE(value.isNull() || variant::equals(back, value));
  }
}

TEST(Values, ArraysKeepTheirShape) {
  Array rows({1, 2});
  rows.at(1, 2) = "x";
  rows.at(0, 0) = Variant(Array::of({1, "nested"}));
  const Variant back = through(Variant(rows));
  EXPECT_EQ(back.array().upperBound(1), 1);
  EXPECT_EQ(back.array().upperBound(2), 2);
  EXPECT_EQ(back.array().at(1, 2).text(), "x");
  EXPECT_EQ(back.array().at(0, 0).array().at(1).text(), "nested");
  EXPECT_EQ(through(Variant(Array())).array().rank(), 0u);
}

TEST(Values, AnObjectOfOursComesBackAsItself) {
  const auto object = std::make_shared<Object>();
  const std::size_t before = exportedCount();
  EXPECT_EQ(through(Variant(object)).object(), object);
  EXPECT_EQ(exportedCount(), before);
  EXPECT_EQ(through(Variant(std::shared_ptr<Object>())).object(), nullptr);
}

TEST(Values, AnArrayThatLiesAboutItsSizeIsRefused) {
  int64_t bounds[] = {5};
  tarlo_array array = {1, bounds, 0, nullptr};
  tarlo_variant value = {TARLO_ARRAY, 0, {}};
  value.as.array = &array;
  EXPECT_THROW(fromC(value), RuntimeError);
  value.kind = 99;
  EXPECT_TRUE(fromC(value).isEmpty());
}

}  // namespace
}  // namespace tarlo::bridge
