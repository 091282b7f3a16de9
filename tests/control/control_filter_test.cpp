#include <gtest/gtest.h>

#include "control/control_statement.h"

namespace tarlo::control {
namespace {

TEST(ControlFilter, RowsBecomeConditions) {
  const std::pair<std::string, std::string> rows[] = {
      {"", ""},
      {"[A].[B],7,x,-1", "[A].[B] = 'x' "},
      {"[A].[B],6,x,and|||[A].[C],8,y,-1", "[A].[B] Like '%x%' and [A].[C] Not Like '%y%' "},
      {"[A].[B],1,5,or|||[A].[B],2,6,and|||[A].[B],3,7,or|||[A].[B],4,8,and|||[A].[B],5,9,-1",
       "[A].[B] > '5' or [A].[B] < '6' and [A].[B] <> '7' or [A].[B] >= '8' and "
       "[A].[B] <= '9' "},
      {"[A].[B],9,x,-1", "[A].[B]  'x' "},  // no operator: the database refuses it
      {"[A].[B],6,x,and|||[A].[B],0,y,-1",  // the operator before stays, its % with it
       "[A].[B] Like '%x%' and [A].[B] Like '%y%' "},
      {"[A].[B],7,x,y,-1", "[A].[B] = 'x' y "},  // a comma moves the value's rest into the logic
      {"[A].[B],7,it's,-1", "[A].[B] = 'it's' "},
      {"[A].[B],7", ""},
  };
  for (const auto& [filter, conditions] : rows)
    EXPECT_EQ(compileControlFilter(filter, FilterUse::PreviewTemplateControl), conditions);
}

TEST(ControlFilter, EveryUseEndsInItsOwnWay) {
  const std::tuple<std::string, std::string, std::string, std::string, std::string> rows[] = {
      {"a,7,x,-1", "(a = 'x' )", "a = 'x' ", "a = 'x' ", "a = 'x' "},
      {"a,7,x,and", "(a = 'x' and )", "a = 'x' ", "a = 'x' ", "a = 'x' "},
      {"a,7,x,or", "(a = 'x' or )", "a = 'x'", "a = 'x'", "a = 'x'"},
      {" a,7,x\r\ny,-1", "( a = 'xy' )", " a = 'xy' ", "a = 'xy' ", " a = 'x\r\ny' "},
      {"", "", "", "", ""},
  };
  for (const auto& [filter, saveUser, previewUser, saveTemplate, previewTemplate] : rows) {
    EXPECT_EQ(compileControlFilter(filter, FilterUse::SaveUserControl), saveUser);
    EXPECT_EQ(compileControlFilter(filter, FilterUse::PreviewUserControl), previewUser);
    EXPECT_EQ(compileControlFilter(filter, FilterUse::SaveTemplateControl), saveTemplate);
    EXPECT_EQ(compileControlFilter(filter, FilterUse::PreviewTemplateControl), previewTemplate);
  }
}

}  // namespace
}  // namespace tarlo::control
