// What forms ask of control schemes, versions of schemes, and what controls can be bound to.

#include <gtest/gtest.h>

#include "metadata/operations.h"
#include "support/platform_database.h"

namespace tarlo::metadata {
namespace {

using testing::errorOf;
using testing::PlatformDatabase;
using testing::textOf;

constexpr std::string_view kOrders = "select [Orders].[ID],[Orders].[Amount] from [Orders]";

// The used part of an array from (1, 1) on: cells joined by ",", each row ended by ";".
std::string cellsOf(const Variant& value) {
  if (!value.isArray()) return textOf(value);
  std::string text;
  const Array& cells = value.array();
  for (std::ptrdiff_t row = 1; row <= cells.upperBound(2); ++row) {
    for (std::ptrdiff_t column = 1; column <= cells.upperBound(1); ++column) {
      text += (column > 1 ? "," : "") + variant::spliced(cells.at(column, row));
    }
    text += ";";
  }
  return text;
}

// A control on scheme 1, as it is and as a version with the same key.
void addControl(PlatformDatabase& data, int kind, std::string_view definition) {
  for (const char* table : {"Zembra_Query_Field", "Zembra_Query_Field_Ver2"}) {
    data.execute("insert into " + std::string(table) +
                 " (QF_NameID,QF_Name,QF_FieldType,QF_Relation) values (1,'c'," +
                 std::to_string(kind) + ",'" + std::string(definition) + "')");
  }
}

TEST(ControlStatements, AreGivenByTheKindThatIsAskedFor) {
  const std::tuple<int, const char*, int, const char*> rows[] = {
      {1, "select 1|||101", 1, "select 1"},
      {1, "select 1", 1, "select 1"},
      {1, "select 1|||101", 2, "-2"},
      {2, "select 1|||levels", 2, "select 1|||levels"},
      {2, "select 1|||levels|||101", 2, "select 1|||levels"},
      {2, "select 1", 2, "Empty"},
      {2, "select 1", 1, "-2"},
      {3, "select 1 as [a]|||t", 3, "select 1 as [a]|||t"},
      {3, "select 1 as [a]", 3, "select 1 as [a]|||"},
      {3, "select 1|||t", 1, "-2"},
      {1, "select 1|||t", 3, "select 1|||t"},  // the kind is not looked at
      {3, "select [Gone].[A] from [Gone]|||t", 3, "Empty"},
  };
  PlatformDatabase data;
  int id = 0;
  for (const auto& [kind, definition, asked, answer] : rows) {
    addControl(data, kind, definition);
    ++id;
    for (const bool isInstance : {false, true}) {
      EXPECT_EQ(textOf(getControlSQL(data.page(), id, asked, isInstance)), answer)
          << definition << " " << asked;
    }
  }
  EXPECT_EQ(textOf(getControlSQL(data.page(), 99, 3, false)), "-1");
  EXPECT_EQ(textOf(getControlSQL(data.page(), "x", 1, false)), "-1");
  // Nothing of these goes further than "none", whatever is given.
  const Variant array(Array::of({Variant(1)}));
  for (const auto& [control, isInstance] :
       {std::pair(array, Variant(false)), std::pair(Variant(1), array)}) {
    EXPECT_EQ(textOf(getControlSQL(data.page(), control, 1, isInstance)), "-1");
    EXPECT_EQ(textOf(Control2Field(data.page(), control, isInstance)), "-1");
    EXPECT_EQ(textOf(Control2Fieldid(data.page(), control, isInstance)), "-1");
  }
  EXPECT_EQ(textOf(getCalFieldOrder(data.page(), array, false)), "-1");
}

TEST(ControlStatements, OnlyRunsThatWorkAreLogged) {
  PlatformDatabase data;
  addControl(data, 3, "select [Gone].[A] from [Gone]|||t");
  addControl(data, 3, "select 1|||t");
  getControlSQL(data.page(), 1, 3, false);
  EXPECT_EQ(data.rows("select count(*) from " + testing::logTable()), "0");
  getControlSQL(data.page(), 2, 3, false);
  EXPECT_EQ(data.rows("select count(*) from " + testing::logTable()), "1");
}

TEST(ControlStatements, FieldsThatControlsAreBoundTo) {
  const std::tuple<int, const char*, const char*, const char*> rows[] = {
      {1, "select 1|||101", "101", "[Orders].[Amount]"},
      {1, "select 1", "0", "-1"},
      {1, "select 1|||-1", "-1", "-1"},
      {2, "select 1|||levels|||111", "111", "[Customer].[City]"},
      {2, "select 1|||101", "0", "-1"},
      {3, "select 1|||101|||101", "0", "-1"}};
  PlatformDatabase data;
  int control = 0;
  for (const auto& [kind, definition, id, field] : rows) {
    addControl(data, kind, definition);
    ++control;
    EXPECT_EQ(textOf(Control2Fieldid(data.page(), control, true)), id) << definition;
    EXPECT_EQ(textOf(Control2Field(data.page(), control, false)), field) << definition;
    for (const bool isInstance : {false, true}) {
      EXPECT_EQ(textOf(getControlSQL1(data.page(), control, isInstance)),
                kind == 1 ? definition : "Null");
    }
  }
  EXPECT_EQ(textOf(Control2Fieldid(data.page(), 99, false)), "-1");
  EXPECT_TRUE(getControlSQL1(data.page(), 99, false).isNull());
  EXPECT_NE(errorOf([&] { getControlSQL1(data.page(), "x", false); }), 0);
}

TEST(ControlStatements, KeyAndRelationsOfASchemeAndOfItsVersion) {
  PlatformDatabase data;
  const std::string id = data.addScheme("s", "Query_MultiRelSel", "'5,6'");
  const Variant version = CopyQuery(data.page(), id);
  data.execute("update Zembra_Query_Main set Query_MultiRelSel='7',Query_Prikey='0'");
  EXPECT_EQ(textOf(GetQuerySelRel(data.page(), id, false)), "7");
  EXPECT_EQ(textOf(GetQuerySelRel(data.page(), version, true)), "5,6");
  EXPECT_EQ(textOf(GetQuerySelRel(data.page(), 99, false)), "-1");
  EXPECT_NE(errorOf([&] { GetQuerySelRel(data.page(), "x", false); }), 0);
  EXPECT_EQ(textOf(getQueryKeyField(data.page(), id, false)), "-1");
  EXPECT_EQ(textOf(getQueryKeyField(data.page(), version, true)), "[Orders].[ID]");
  EXPECT_EQ(textOf(getQueryKeyField(data.page(), "x", true)), "-1");
  EXPECT_EQ(textOf(KeyField2TableID(data.page(), version, true)), "10");
}

TEST(SchemeCopy, MakesAVersionOnlyOfWhatHasChanged) {
  PlatformDatabase data;
  const std::string id = data.addScheme("s", "Query_Fields,Zembra_ModiDate",
                                        "'select ''a'' as [x]','2024-01-02 03:04:05'");
  const std::string first = textOf(CopyQuery(data.page(), id));
  EXPECT_EQ(textOf(CopyQuery(data.page(), id)), first);
  EXPECT_EQ(data.rows("select count(*) from Zembra_Query_Ver2"), "1");
  EXPECT_EQ(textOf(getQuerySQL(data.page(), first, true)), "select 'a' as [x]");
  data.execute("update Zembra_Query_Main set Zembra_ModiDate='2024-01-02 03:04:06'");
  EXPECT_NE(textOf(CopyQuery(data.page(), id)), first);
  EXPECT_EQ(data.rows("select count(*) from Zembra_Query_Ver2"), "2");
  EXPECT_EQ(textOf(CopyQuery(data.page(), 99)), "-1");
  data.execute("update Zembra_Query_Main set Query_Name='it''s',Zembra_ModiDate='2025-01-01'");
  EXPECT_NE(errorOf([&] { CopyQuery(data.page(), id); }), 0);
}

TEST(SchemeCopy, DeletedSchemesCountForATable) {
  PlatformDatabase data;
  EXPECT_TRUE(getAllQueryid(data.page(), 10).isEmpty());
  EXPECT_EQ(textOf(DecTableinUse(data.page(), 10)), "False");
  const std::string id = data.addScheme("s", "Zembra_Flag", "0");
  EXPECT_EQ(textOf(getAllQueryid(data.page(), 10)), id);
  EXPECT_EQ(textOf(DecTableinUse(data.page(), 10)), "True");
  EXPECT_NE(errorOf([&] { getAllQueryid(data.page(), "x"); }), 0);
}

TEST(ControlFields, OfATableAndOfTheControlsOnAScheme) {
  PlatformDatabase data;
  data.addScheme("s", "Query_Fields",
                 "'select [Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum],"
                 "[Customer].[City] as [Client.Town] from [Orders],[Customer]'");
  const auto shown = [&](const Variant& table, const Variant& kind) {
    const Variant value = getQueryFields(data.page(), 1, table, kind, false);
    return cellsOf(value);
  };
  EXPECT_EQ(shown(" [Orders] ", ""), "100,Key,1,,;101,Sum,3,,;");
  EXPECT_EQ(shown("Customer", ""), "111,Town,4,,;");
  EXPECT_EQ(shown("Orders", 1), "-1");
  addControl(data, 1, "select 1|||101");
  addControl(data, 3, "select 1|||t");
  EXPECT_EQ(shown("Orders", 1), "101,Sum,3,1,c;");
  EXPECT_EQ(shown("Orders", "3"), ",,,2,c;");
  EXPECT_EQ(shown("Orders", 4), "Empty");
  data.execute("update Zembra_Query_Field set Zembra_Flag=0");
  for (const int kind : {1, 3}) EXPECT_EQ(shown("Orders", kind), "-1");
  EXPECT_NE(errorOf([&] { getQueryFields(data.page(), "x", "T", 1, false); }), 0);
}

TEST(ControlFields, CalculatedAndPlainColumns) {
  PlatformDatabase data;
  data.addScheme("s", "Query_Fields",
                 "'select [Orders].[ID] as [Key],[Orders].[Amount]*2 as [Net],"
                 "YEAR(GETDATE()) as [Y] from [Orders]'");
  EXPECT_EQ(cellsOf(getVirtualFields(data.page(), 1, false)), "1,Net;2,Y;");
  EXPECT_EQ(cellsOf(getVirtualFields(data.page(), 99, false)), "-1");
  EXPECT_EQ(cellsOf(getQueryField(data.page(), "select [A].[B] as [x],C.D from [A]")), "A,B;C,D;");
  EXPECT_EQ(errorOf([&] { getQueryField(data.page(), "select 1 from [A]"); }), 9);

  addControl(data, 3,
             "select 1 as [k],Orders.Amount as [a],[Orders].[CustID] as [b] from [Orders]|||t");
  EXPECT_EQ(cellsOf(getCalFieldOrder(data.page(), 1, false)), "1,[a];");
  EXPECT_EQ(cellsOf(getCalFieldOrder(data.page(), 9, false)), "-1");
}

TEST(ControlFields, TitlesOfLists) {
  PlatformDatabase data;
  data.execute(
      "insert into Zembra_Query_Field (QF_NameID,QF_FieldType,QF_CField) values (1,3,'a|||b'),"
      "(1,1,'a|||b'),(1,3,'')");
  EXPECT_EQ(textOf(getTableListTitle(data.page(), 1, false)), "b");
  EXPECT_EQ(textOf(getTableListTitle(data.page(), 2, false)), "-2");
  EXPECT_EQ(textOf(getTableListTitle(data.page(), 3, false)), "Empty");
  EXPECT_EQ(textOf(getTableListTitle(data.page(), 1, true)), "-1");
}

}  // namespace
}  // namespace tarlo::metadata
