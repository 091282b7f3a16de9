#include "siblings/page_operations.h"

#include <gtest/gtest.h>

#include "frame/statement_scope.h"
#include "services/cascade_levels.h"
#include "support/dictionary.h"

namespace tarlo::siblings {
namespace {

constexpr database::StatementRights kDictionary = {.reads = {database::TableGroup::Dictionary},
                                                   .writes = {}};
constexpr int kDenied = static_cast<int>(ErrorNumber::PermissionDenied);

class Cascade : public ::testing::Test {
 protected:
  using Changes = std::initializer_list<std::pair<const char*, const char*>>;

  // Asks for a level of customers, with some of its values changed.
  void askFor(Changes changes) {
    const std::pair<const char*, const char*> usual[] = {
        {"table", "Customer"},         {"link", "[Customer].[RegionID]"}, {"value", "ID"},
        {"text", "[Customer].[City]"}, {"condition", "Zembra_Flag <> 0"}, {"parent", "1"}};
    for (const auto& [key, value] : usual) data_.ask(key, value);
    for (const auto& [key, value] : changes) data_.ask(key, value);
  }
  // A page of this session has shown the level that is asked for.
  void offer(const database::StatementRights& rights) {
    const auto asked = [&](const char* key) {
      return variant::toText(data_.page().request.value(key));
    };
    const auto level = services::cascadeLevel(asked("table"), asked("link"), asked("value"),
                                              asked("text"), asked("condition"));
    if (level) services::OfferedCascades::of(data_.page())->add(*level, rights);
  }
  std::string answer() {
    return data_.writtenBy([&] { sendCascadeOptions(data_.page()); });
  }
  std::string offeredAnswer(Changes changes,
                            const database::StatementRights& rights = frame::kDesignersRights) {
    askFor(changes);
    offer(rights);
    return answer();
  }
  int refusal(Changes changes) {
    askFor(changes);
    return testing::errorOf([&] { answer(); });
  }
  testing::DictionaryDatabase data_;
};

TEST_F(Cascade, GivesTheOptionsOfTheParent) {
  data_.addField(112, 11, "RegionID", "Region");
  EXPECT_EQ(offeredAnswer({}), "[[\"1\",\"Paris\"]]");
  EXPECT_EQ(offeredAnswer({{"parent", "2"}, {"condition", ""}}), "[[\"2\",\"Lyon\"]]");
  EXPECT_EQ(offeredAnswer({{"parent", "9"}}), "[]");
  askFor({{"parent", "1' or '1'='1"}});  // no number
  EXPECT_NE(testing::errorOf([&] { answer(); }), 0);
}

TEST_F(Cascade, GivesOnlyWhatAPageOffered) {
  data_.addField(112, 11, "RegionID", "Region");
  EXPECT_EQ(refusal({}), kDenied);
  EXPECT_EQ(offeredAnswer({}), "[[\"1\",\"Paris\"]]");
  for (const auto& change : std::initializer_list<std::pair<const char*, const char*>>{
           {"link", "ID"},
           {"value", "City"},
           {"text", "ID"},
           {"condition", ""},
           {"condition", "Zembra_Flag <> 0 or 1=1"}})
    EXPECT_EQ(refusal({change}), kDenied) << change.first;
}

TEST_F(Cascade, RefusesWhatTheDictionaryDoesNotHold) {
  data_.addField(112, 11, "RegionID", "Region");
  const std::pair<const char*, const char*> refused[] = {
      {"table", "Zembra_User"},
      {"table", "Customer] where 1=1 --"},
      {"table", "Orders"},  // its columns are named as another table's
      {"link", "Nope"},
      {"link", "[Orders].[CustID]"},
      {"text", "City from Customer; drop table Customer --"},
      {"condition", "1=1"},
      {"condition", "Zembra_Flag <> 0 or 1=1"},
  };
  for (const auto& change : refused) EXPECT_EQ(offeredAnswer({change}), "[]") << change.second;
  data_.remove("Field", 112);
  EXPECT_EQ(offeredAnswer({}), "[]");
}

TEST_F(Cascade, KnowsThePlatformsOwnTables) {
  data_.execute("update Zembra_DataDict_Table set DDT_DirID=3 where Zembra_ID<>12");
  const Changes tables = {{"table", "Zembra_DataDict_Table"},
                          {"link", "DDT_DirID"},
                          {"value", "Zembra_ID"},
                          {"text", "DDT_CName"},
                          {"parent", "3"}};
  EXPECT_EQ(offeredAnswer(tables, kDictionary), "[[\"11\",\"Client\"],[\"10\",\"Order\"]]");
  EXPECT_EQ(offeredAnswer({{"table", "Zembra_DataDict_Table"},
                           {"link", "DDT_DirID"},
                           {"value", "DDT_Name"},
                           {"text", "DDT_CName"}},
                          kDictionary),
            "[]");
  // A designer's own cascade over them reads nothing.
  EXPECT_NE(testing::errorOf([&] { offeredAnswer(tables); }), 0);
}

TEST_F(Cascade, OfAStoredControlIsForUsersOfForms) {
  data_.runScript(
      "create table Zembra_Query_Field (QF_ID int, QF_FieldType int, QF_Relation nvarchar(max), "
      "Zembra_Flag int default 1)\nGO\n"
      "create table Zembra_Menu (Menu_ID int, Menu_Href nvarchar(99))\nGO\n"
      "create table Zembra_Permission (Permission_UserID int, Permission_MenuID int, "
      "Permission_SubAction nvarchar(99), permission_forbid int default 0)\nGO\n");
  data_.addField(112, 11, "RegionID", "Region");
  data_.execute(
      "insert into Zembra_Query_Field (QF_ID,QF_FieldType,QF_Relation) values (1,2,'select "
      "ID,Name from Region|||Customer,[Customer].[RegionID],ID,[Customer].[City],Zembra_Flag <> "
      "0')");
  data_.execute("insert into Zembra_Menu (Menu_ID) values (7)");
  data_.execute("insert into Zembra_Permission (Permission_UserID,Permission_MenuID) values (2,7)");
  const auto refusalFor = [&](int user, Changes changes) {
    data_.page().session.put("usrID", user);
    return refusal(changes);
  };
  EXPECT_EQ(refusalFor(2, {}), 0);
  EXPECT_EQ(refusalFor(2, {{"text", "ID"}}), kDenied);
  EXPECT_EQ(refusalFor(3, {}), kDenied);  // no entry of the menu is theirs
  data_.execute("update Zembra_Query_Field set Zembra_Flag=0");
  EXPECT_EQ(refusalFor(2, {}), kDenied);
}

}  // namespace
}  // namespace tarlo::siblings
