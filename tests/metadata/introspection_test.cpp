#include "metadata/operations.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::metadata {
namespace {

using testing::errorOf;
using testing::textOf;

// The used part of a pair array: table.column, joined by " | ".
std::string pairsOf(const Variant& value) {
  const Array& pairs = value.array();
  std::string text;
  for (std::ptrdiff_t row = 1; row <= pairs.upperBound(2); ++row) {
    text += (row > 1 ? " | " : "") + pairs.at(1, row).text() + "." + pairs.at(2, row).text();
  }
  EXPECT_TRUE(pairs.at(0, 0).isEmpty() && pairs.at(1, 0).isEmpty());
  return text;
}

std::string itemsOf(const Variant& value) {
  const Array& items = value.array();
  EXPECT_TRUE(items.at(0).isEmpty());
  std::string text;
  for (std::ptrdiff_t i = 1; i <= items.upperBound(); ++i) text += "<" + items.at(i).text() + ">";
  return text;
}

void store(testing::DictionaryDatabase& data, int id, const std::string& statement) {
  data.execute("insert into Zembra_Query_Main (Query_ID,Query_Fields) values (" +
               std::to_string(id) + ",'" + statement + "')");
}

TEST(Introspection, TakesAStoredStatementApart) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  store(data, 1,
        "select [Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum] from [Orders]");
  EXPECT_TRUE(textOf(getQuerySQL(page, 1, false)).starts_with("select [Orders]"));
  EXPECT_EQ(itemsOf(getQueryAllTitle(page, "1", Variant())), "<Order.Key><Order.Sum>");
  EXPECT_EQ(itemsOf(getQueryAllCal(page, 1, false)), "<[Orders].[ID]><[Orders].[Amount]>< >");
  EXPECT_EQ(pairsOf(getQueryAllField(page, 1, false)), "Orders.ID | Orders.Amount");

  // Line breaks go from expressions and stay in columns, which then keep their brackets.
  store(data, 2, "select [Orders].[ID] as [K],\r\n([Orders].[Amount]) as [S] from [Orders]");
  EXPECT_EQ(itemsOf(getQueryAllCal(page, 2, false)), "<[Orders].[ID]><([Orders].[Amount])>< >");
  EXPECT_EQ(pairsOf(getQueryAllField(page, 2, false)), "Orders.ID | \r\n([Orders].[Amount])");

  store(data, 3, "select [Orders].[Amount]*2 as [Net],1 as [One] from [Orders]");
  EXPECT_EQ(itemsOf(getQueryAllCal(page, 3, false)), "<[Orders].[Amount]*2><1>< >");
  EXPECT_EQ(errorOf([&] { getQueryAllField(page, 3, false); }), 9);
}

TEST(Introspection, UnknownAndRefusedStatements) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  store(data, 1, "select [Nope].[ID] as [K] from [Nope]");
  EXPECT_NE(errorOf([&] { getQueryAllTitle(page, 1, false); }), 0);
  EXPECT_NE(errorOf([&] { getQueryAllCal(page, 1, false); }), 0);
  for (const Variant& id : {Variant(99), Variant("x"), Variant()}) {
    EXPECT_TRUE(getQuerySQL(page, id, false).isNull());
    EXPECT_EQ(textOf(KeyField2TableID(page, id, false)), "-1");
    EXPECT_EQ(textOf(getTableListTitle(page, id, false)), "-1");
  }
  for (auto* operation : {getQueryAllTitle, getQueryAllCal, getQueryAllField}) {
    EXPECT_TRUE(operation(page, 99, false).isNull());
    EXPECT_NE(errorOf([&] { operation(page, "x", false); }), 0);
  }
}

TEST(Introspection, FirstOperandsOfAListWithoutBlanks) {
  testing::DictionaryDatabase data;
  for (const auto& [statement, pairs] : {
           std::pair{"select a.b+1,c.d from t", "a.b | c.d"},
           std::pair{"select [T].[F]*2,[T].[G] from t", "T.F | T.G"},
           std::pair{"select SUM(ABS(a.b)/2),a.c-a.d from t", "a.b | a.c"},
       }) {
    EXPECT_EQ(pairsOf(SQL2Fields(data.page(), statement)), pairs);
  }
  for (const char* statement : {"select -a.b from t", "select a,b.c from t", "select", ""}) {
    EXPECT_EQ(errorOf([&] { SQL2Fields(data.page(), statement); }), 9) << statement;
  }
}

}  // namespace
}  // namespace tarlo::metadata
