// Statements as deep and as long as the limits allow, through every walk over the tree. Under
// AddressSanitizer, whose stack frames are large, these are the proof that the limits fit the
// stack.
#include <gtest/gtest.h>

#include <functional>

#include "fixture_catalogue.h"
#include "tsql/error.h"
#include "tsql/limits.h"
#include "tsql/parse/parser.h"
#include "tsql/print/tsql_printer.h"
#include "tsql/translation.h"

namespace tarlo::tsql {
namespace {

using Make = std::function<std::string(std::size_t)>;

std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

// Something that opens and closes n times round `inside`.
Make nested(std::string head, std::string open, std::string inside, std::string close,
            std::string tail = "") {
  return
      [=](std::size_t n) { return head + repeated(open, n) + inside + repeated(close, n) + tail; };
}

Make chained(std::string head, std::string link, std::string tail = "") {
  return [=](std::size_t n) { return head + repeated(link, n) + tail; };
}

TEST(Limits, AreReachedAndNotPassed) {
  const std::pair<Make, std::size_t> rows[] = {{nested("select ", "(", "1", ")"), 100},
                                               {nested("select ", "- ", "1", ""), 100},
                                               {chained("select 1", "+1"), 900},
                                               {chained("select 1,", "1,", "1"), 4094},
                                               {chained("select 1 ", "union select 1 "), 499}};
  for (const auto& [make, limit] : rows) {
    EXPECT_EQ(parse(printTsql(parse(make(limit)))), parse(make(limit)));
    try {
      parse(make(limit + 1));
      ADD_FAILURE() << "taken above " << limit;
    } catch (const StatementError& error) {
      EXPECT_EQ(error.refusal(), Refusal::Limit);
    }
  }
}

TEST(Limits, HoldForChainsInsideChains) {
  std::string sql = "1";
  for (int i = 0; i < 50; ++i) sql = "(" + sql + repeated("+1", 800) + ")";
  EXPECT_THROW(parse("select " + sql), StatementError);
}

TEST(Limits, FitTheStack) {
  const std::string from = " from UserTb_Contract";
  const std::string longSum = "Qty" + repeated("+Qty", kMaxChain);
  const std::pair<Make, std::size_t> rows[] = {
      {nested("select ", "-(", "Qty", ")", from), kMaxNesting / 2},
      {nested("select ", "~(", longSum, ")", from), kMaxNesting / 2},
      {nested("select ", "case when Qty=1 then ", longSum, " end", from), kMaxNesting},
      {nested("select ", "case Qty when 1 then 2 else ", "Qty", " end", from), kMaxNesting},
      {nested("select ", "abs(", longSum, ")", from), kMaxNesting},
      {nested("select ", "cast(", "Qty", " as int)", from), kMaxNesting},
      {nested("select ", "(select 1+", "1", ")", from), kMaxNesting},
      {nested("select a from ", "(select a from ", "(select 1 a) t", ") t"), kMaxNesting - 1},
      {nested("select 1 where ", "not (", "1=1", ")"), kMaxNesting / 2},
      {nested("select 1 where ", "exists (select 1 where ", "1=1", ")"), kMaxNesting},
      {nested("select 1 where ", "1 in (select 1 where ", "1=1", ")"), kMaxNesting},
      {chained("select Title", "+Title", from), kMaxChain},
      {chained("select Amount", "/Amount", from), kMaxChain},
      {chained("select SignDate", "+1", from), kMaxChain},
      {chained("select 1 where 1=1", " and 1=1"), kMaxChain},
      {chained("select 1 where 1=1", " and 1=1 or 2=2"), kMaxChain / 2},
      {chained("select Qty", "+Qty", from + " group by " + longSum), kMaxChain}};
  testing::FixtureCatalogue catalogue;
  for (const auto& [make, depth] : rows) {
    const std::string sql = make(depth);
    try {
      EXPECT_EQ(translate(sql, catalogue).steps.size(), 1u) << sql.substr(0, 200);
    } catch (const StatementError& error) {
      ADD_FAILURE() << sql.substr(0, 200) << ": " << error.what();
    }
  }
}

}  // namespace
}  // namespace tarlo::tsql
