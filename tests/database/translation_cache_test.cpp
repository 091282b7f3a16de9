// Which translation serves which statement, and the bounds of what is kept.

#include "database/translation_cache.h"

#include "database/sqlite/values.h"
#include "support.h"

namespace tarlo::database::test {
namespace {

tsql::Shape shape(std::string key, std::vector<std::string_view> literals = {}) {
  tsql::Shape made;
  made.key = std::move(key);
  for (const auto& text : literals)
    made.literals.push_back({tsql::ast::LiteralClass::Integer, text});
  return made;
}

TranslationPtr translation(std::vector<tsql::Translation::Fixed> fixed = {},
                           std::size_t textBytes = 10) {
  auto made = std::make_shared<CachedTranslation>();
  made->translation.steps.push_back({tsql::StepRole::Rows, std::string(textBytes, 's'), {}});
  made->translation.fixed = std::move(fixed);
  return made;
}

TEST(TranslationCache, FixedLiteralsMustHaveTheSameText) {
  TranslationCache cache;
  const auto five = translation({{1, "5"}});
  const auto six = translation({{1, "6"}});
  cache.insert(shape("k", {"1", "5"}), five);
  cache.insert(shape("k", {"1", "6"}), six);
  EXPECT_EQ(cache.find(shape("k", {"2", "5"})), five);
  EXPECT_EQ(cache.find(shape("k", {"2", "6"})), six);
  EXPECT_EQ(cache.find(shape("k", {"5", "7"})), nullptr);
  EXPECT_EQ(cache.find(shape("K", {"2", "5"})), nullptr);
  const auto newer = translation({{1, "5"}});
  cache.insert(shape("k", {"3", "5"}), newer);
  EXPECT_EQ(cache.find(shape("k", {"2", "5"})), newer);
}

TEST(TranslationCache, VariantsShapesAndBytesAreBounded) {
  TranslationCache cache(160, 1u << 24);
  for (std::size_t i = 0; i <= TranslationCache::kMaxVariants; ++i) {
    const std::string text = std::to_string(i);
    cache.insert(shape("v", {text}), translation({{0, text}}));
  }
  EXPECT_EQ(cache.find(shape("v", {"0"})), nullptr);
  EXPECT_NE(cache.find(shape("v", {"1"})), nullptr);
  for (int i = 0; i < 2000; ++i) cache.insert(shape("s" + std::to_string(i)), translation());
  EXPECT_LE(cache.shapeCount(), 160u);
  EXPECT_NE(cache.find(shape("s1999")), nullptr);
  cache.insert(shape("huge"), translation({}, 2u << 20));
  EXPECT_EQ(cache.find(shape("huge")), nullptr);
  TranslationCache bytes(100'000, 1u << 20);
  for (int i = 0; i < 1000; ++i) bytes.insert(shape(std::to_string(i)), translation({}, 20'000));
  EXPECT_LE(bytes.shapeCount(), 64u);
  // What is replaced weighs nothing any more.
  TranslationCache same(100'000, 1u << 20);
  for (int i = 0; i < 100; ++i) same.insert(shape(std::to_string(i)), translation());
  for (int i = 0; i < 1000; ++i) same.insert(shape("7"), translation({}, 20'000));
  EXPECT_EQ(same.shapeCount(), 100u);
}

TEST(TranslationCache, ValuesNeverLeakFromOneStatementIntoAnother) {
  auto database = openDatabase("sqlite::memory:");
  auto lease = database->borrow();
  lease->allowDdl(true);
  lease->execute("create table T (ID int identity primary key, Name nvarchar(20), N int)");
  for (int i = 1; i <= 300; ++i) {
    const std::string n = std::to_string(i);
    lease->execute("insert into T(Name,N) values('" + n + "''s'," + n + ")");
  }
  for (int i = 1; i <= 300; i += 7) {
    const std::string n = std::to_string(i);
    EXPECT_EQ(ask(*lease, "select N from T where Name='" + n + "''s'"), "i" + n);
    EXPECT_EQ(ask(*lease, "select top " + n + " Name from T where ID=1"), "t1's");
    EXPECT_EQ(ask(*lease, "select N+" + n + " as x from T where ID=1"),
              "i" + std::to_string(i + 1));
  }
  EXPECT_EQ(ask(*lease, "select '' as a, 'b' as b from T where Name='' or ID=2"), "t,tb");
  EXPECT_EQ(lease->open("select top 2 N from T")->getRows().array().upperBound(2), 1);
  EXPECT_EQ(lease->open("select top 3 N from T")->getRows().array().upperBound(2), 2);
}

TEST(Decimals, AreRoundedAsPeopleSeeThem) {
  const std::tuple<double, int, const char*> cases[] = {{12.5, 2, "12.5"},
                                                        {12, 2, "12"},
                                                        {0.1 + 0.2, 2, "0.3"},
                                                        {2.675, 2, "2.68"},
                                                        {-2.675, 2, "-2.68"},
                                                        {99.995, 2, "100"},
                                                        {-0.004, 2, "0"},
                                                        {0.5, 0, "1"},
                                                        {100, 0, "100"},
                                                        {9.5, 0, "10"},
                                                        {1e22, 2, "10000000000000000000000"}};
  for (const auto& [number, scale, text] : cases) {
    EXPECT_EQ(roundedDecimal(number, scale).digits, text) << number;
  }
}

}  // namespace
}  // namespace tarlo::database::test
