#include "metadata/reader.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"
#include "text/pieces.h"

namespace tarlo::metadata {
namespace {

using text::joined;

std::string shown(const std::optional<FieldNames>& names) {
  if (!names) return "none";
  return joined({names->table, ",", names->tableDisplay, ",", names->column, ",", names->display,
                 ",", names->tableId, names->isSpecial ? " special" : "",
                 names->isKey ? " key" : "", names->isOrdinary ? " ordinary" : ""});
}

std::string shown(const std::optional<TableNames>& names) {
  return names ? names->name + "," + names->display : "none";
}

std::string shown(const std::vector<Path>& paths) {
  std::string text;
  for (const Path& path : paths) {
    text += joined({path.table, ",", path.field, ",", path.mainField, ",", path.intermediate, ",",
                    path.farField, ",", path.nearField, ";"});
  }
  return text;
}

// Fields in every state, and relations whose ends are missing.
void spoil(testing::DictionaryDatabase& data) {
  data.addTable(13, "Invoice", "Bill");
  data.addTable(14, "Gone", "Gone");
  for (const int id : {130, 131, 132, 133}) data.addField(id, 13, "F" + std::to_string(id), "f");
  data.addField(140, 14, "ID", "Key");
  data.addRelation(8, 13, 130, 10, 100);
  data.addRelation(9, 14, 140, 13, 131);
  data.addRelation(10, 99, 990, 10, 101);
  data.execute("update Zembra_DataDict_Field set DDF_Type=null where Zembra_ID=131");
  data.execute("update Zembra_DataDict_Field set Zembra_Flag=2 where Zembra_ID=132");
  data.execute("update Zembra_DataDict_Field set Zembra_Flag=null where Zembra_ID=133");
  data.remove("Field", 111);
  data.remove("Table", 14);
}

TEST(DictionaryReader, AnswersWhatTheLookUpsAnswer) {
  testing::DictionaryDatabase data;
  spoil(data);
  Page& page = data.page();
  for (const bool wholeTables : {true, false}) {
    for (const char* relations : {"5", "5,6,7,8,9,10", "", "x", "5,,6", " 5 , 8", "8,1.5"}) {
      DictionaryReader reader(page);
      reader.load({"10", relations, {"131", "999", "x", "120"}, wholeTables});
      EXPECT_EQ(shown(reader.paths("10", relations)), shown(paths(page, "10", relations)));
      EXPECT_EQ(shown(reader.paths("13", "8,9")), shown(paths(page, "13", "8,9")));
      for (const char* id : {"10", "11", "12", "13", "14", "99", " 10 ", "10 or 1=1", ""}) {
        EXPECT_EQ(shown(reader.tableNames(id)), shown(tableNames(page, id))) << id;
        EXPECT_EQ(reader.fieldIds(id), fieldIds(page, id)) << id;
        std::string columns, wanted;
        for (const auto& [name, display] : reader.columns(id)) {
          columns += joined({name, ",", display, ";"});
        }
        for (const std::string& field : fieldIds(page, id)) {
          const auto names = fieldNames(page, field);
          if (names) wanted += joined({names->column, ",", names->display, ";"});
        }
        EXPECT_EQ(columns, wanted) << id;
      }
      for (const char* id : {"100", "101", "110", "111", "120", "130", "131", "132", "133", "140",
                             "999", "990", "x", "-1", "1.5", " 100", ""}) {
        EXPECT_EQ(shown(reader.fieldNames(id)), shown(fieldNames(page, id))) << id << relations;
      }
    }
  }
}

TEST(DictionaryReader, FieldsThatAreDeletedStillHaveAState) {
  testing::DictionaryDatabase data;
  spoil(data);
  DictionaryReader reader(data.page());
  EXPECT_FALSE(reader.fieldState("100").has_value());  // nothing is loaded
  reader.load({"10", "5,8", {"132", "133", "999"}});
  const std::tuple<const char*, bool, bool> rows[] = {
      {"100", true, true}, {"111", false, false}, {"132", true, false}, {"133", false, false}};
  for (const auto& [id, isKept, isLive] : rows) {
    const auto state = reader.fieldState(id);
    ASSERT_TRUE(state && *state) << id;
    EXPECT_EQ((*state)->isKept, isKept) << id;
    EXPECT_EQ((*state)->isLive, isLive) << id;
  }
  const auto missing = reader.fieldState("999");
  EXPECT_TRUE(missing && !*missing);
  EXPECT_FALSE(reader.fieldState("140").has_value());  // neither reached nor named
}

// A list goes into the statement as it stands, so whatever SQL reads as ids is one.
TEST(DictionaryReader, RelationListsMeanWhatTheyMeanInAStatement) {
  testing::DictionaryDatabase data;
  Page& page = data.page();
  const std::string wanted = shown(paths(page, "10", "5,6"));
  ASSERT_NE(wanted, "");
  for (const char* list : {"5.0,6", "+5,6", "0x5,6", "'5',6", "5\n,6", "5\t,\r\n6", "5/*x*/,6",
                           "5,null,6", "(5),6", "4+1,6", "6,- 1,5", "5\u3000,6"}) {
    EXPECT_EQ(shown(paths(page, "10", list)), wanted) << list;
    DictionaryReader reader(page);
    reader.load({"10", list});
    EXPECT_EQ(shown(reader.paths("10", list)), wanted) << list;
  }
  EXPECT_EQ(shown(paths(page, "5*2", "5,6")), wanted);
  for (const char* list : {"5,,6", "5,6,", "x", "5;6", "'"}) {
    EXPECT_EQ(shown(paths(page, "10", list)), "") << list;
  }
}

// Tables may be renamed between two operations, never between two look-ups of one.
TEST(DictionaryReader, IsOneStateOfTheDictionary) {
  testing::DictionaryDatabase data;
  DictionaryReader reader(data.page());
  reader.load({"10", "5"});
  data.execute("update Zembra_DataDict_Table set DDT_Name='Other' where Zembra_ID=10");
  EXPECT_EQ(reader.tableNames("10")->name, "Orders");
  EXPECT_EQ(reader.fieldNames("100")->table, "Orders");
  DictionaryReader next(data.page());
  next.load({"10", "5"});
  EXPECT_EQ(next.tableNames("10")->name, "Other");
}

}  // namespace
}  // namespace tarlo::metadata
