#include "siblings/cascade_operations.h"

#include <gtest/gtest.h>

#include "support/dictionary.h"

namespace tarlo::siblings {
namespace {

class Cascade : public ::testing::Test {
 protected:
  // What the address answers for a level of customers, with some of its values changed.
  std::string answer(std::initializer_list<std::pair<const char*, const char*>> changes) {
    const std::pair<const char*, const char*> usual[] = {
        {"table", "Customer"},         {"link", "[Customer].[RegionID]"}, {"value", "ID"},
        {"text", "[Customer].[City]"}, {"condition", "Zembra_Flag <> 0"}, {"parent", "1"}};
    for (const auto& [key, value] : usual) data_.ask(key, value);
    for (const auto& [key, value] : changes) data_.ask(key, value);
    return data_.writtenBy([&] { sendCascadeOptions(data_.page()); });
  }
  testing::DictionaryDatabase data_;
};

TEST_F(Cascade, GivesTheOptionsOfTheParent) {
  data_.addField(112, 11, "RegionID", "Region");
  EXPECT_EQ(answer({}), "[[\"1\",\"Paris\"]]");
  EXPECT_EQ(answer({{"parent", "2"}, {"condition", ""}}), "[[\"2\",\"Lyon\"]]");
  EXPECT_EQ(answer({{"parent", "9"}}), "[]");
  EXPECT_NE(testing::errorOf([&] { answer({{"parent", "1' or '1'='1"}}); }), 0);  // no number
}

TEST_F(Cascade, RefusesWhatTheDictionaryDoesNotHold) {
  data_.addField(112, 11, "RegionID", "Region");
  const std::pair<const char*, const char*> refused[] = {
      {"table", "Zembra_User"}, {"table", "Customer] where 1=1 --"},
      {"table", "Orders"},  // its columns are named as another table's
      {"link", "Nope"},         {"link", "[Orders].[CustID]"},
      {"value", "ID,City"},     {"text", "City from Customer; drop table Customer --"},
      {"condition", "1=1"},     {"condition", "Zembra_Flag <> 0 or 1=1"},
  };
  for (const auto& change : refused) EXPECT_EQ(answer({change}), "[]") << change.second;
  data_.remove("Field", 112);
  EXPECT_EQ(answer({}), "[]");
}

TEST_F(Cascade, KnowsThePlatformsOwnTables) {
  data_.execute("update Zembra_DataDict_Table set DDT_DirID=3 where Zembra_ID<>12");
  EXPECT_EQ(answer({{"table", "Zembra_DataDict_Table"},
                    {"link", "DDT_DirID"},
                    {"value", "Zembra_ID"},
                    {"text", "DDT_CName"},
                    {"parent", "3"}}),
            "[[\"11\",\"Client\"],[\"10\",\"Order\"]]");
  EXPECT_EQ(answer({{"table", "Zembra_DataDict_Table"},
                    {"link", "DDT_DirID"},
                    {"value", "DDT_Name"},
                    {"text", "DDT_CName"}}),
            "[]");
}

}  // namespace
}  // namespace tarlo::siblings
