// Who may call what: sub-actions of the managers' menu entries, and what stands in for them.

#include "org/may_call.h"

#include <gtest/gtest.h>

#include "support/platform_database.h"

namespace tarlo::org {
namespace {

using enum frame::Caller;
using frame::Access;
using frame::Manager;
using frame::SubAction;

class MayCall : public ::testing::Test {
 protected:
  MayCall() {
    data_.execute(
        "insert into Zembra_Menu (Menu_Name,Menu_Href) values "
        "('s','/TarloQuery.Zembra?action=ctrlSearch&x=1'),"
        "('u','/TarloQuery.Zembra?action=ctrlSearch_Usrfield'),('form','/form')");
    data_.setApplication("designersOnly", true);
    data_.setApplication("administrators", "root, boss");
  }

  // The user has these sub-actions of the entry with that name.
  void grant(int user, const std::string& entry, const std::string& subActions, int forbid = 0) {
    data_.execute(
        "insert into Zembra_Permission (Permission_UserID,Permission_MenuID,Permission_SubAction,"
        "permission_forbid) select " +
        std::to_string(user) + ",Menu_ID,'" + subActions + "'," + std::to_string(forbid) +
        " from Zembra_Menu where Menu_Name='" + entry + "'");
  }
  bool may(int user, const Access& access) {
    data_.page().session.put("usrID", user);
    return mayCall(data_.page(), access);
  }

  testing::PlatformDatabase data_;
};

TEST_F(MayCall, NobodyMayOnlyWhatAsksForNobody) {
  for (const Variant& user : {Variant(), Variant(""), Variant("x"), Variant(0), Variant(-1)}) {
    data_.page().session.put("usrID", user);
    EXPECT_TRUE(mayCall(data_.page(), {Program}));
    for (const frame::Caller caller : {SignedIn, FormUser, Designer, Administrator}) {
      EXPECT_FALSE(mayCall(data_.page(), {caller}));
    }
  }
}

TEST_F(MayCall, ADesignerHasTheSubActionsOfTheEntry) {
  grant(2, "s", "browse, Preview");
  grant(2, "u", "add,delete");
  grant(3, "s", "browse,preview,add,modify,delete", 1);
  const auto schemes = [](SubAction action) { return Access{Designer, Manager::Schemes, action}; };
  const auto controls = [](SubAction action) {
    return Access{Designer, Manager::UserControls, action};
  };
  EXPECT_TRUE(may(2, schemes(SubAction::Browse)));
  EXPECT_TRUE(may(2, schemes(SubAction::Preview)));
  EXPECT_FALSE(may(2, schemes(SubAction::Delete)));
  EXPECT_TRUE(may(2, controls(SubAction::Delete)));
  EXPECT_FALSE(may(2, controls(SubAction::Browse)));
  EXPECT_FALSE(may(2, {Designer, Manager::TemplateControls, SubAction::Browse}));
  EXPECT_TRUE(may(2, {Designer}));
  EXPECT_FALSE(may(3, schemes(SubAction::Browse)));
  EXPECT_FALSE(may(3, {Designer}));
  EXPECT_FALSE(may(3, {FormUser}));
  grant(4, "form", "");
  EXPECT_TRUE(may(4, {FormUser}));
  EXPECT_FALSE(may(4, {Designer}));
  // Taken away while the session lives.
  data_.execute("update Zembra_Permission set permission_forbid=1 where Permission_UserID=2");
  EXPECT_FALSE(may(2, schemes(SubAction::Browse)));
  // Where the managers are for everybody, they are so for whoever has signed in.
  data_.setApplication("designersOnly", false);
  EXPECT_TRUE(may(3, schemes(SubAction::Delete)));
  EXPECT_FALSE(may(0, schemes(SubAction::Delete)));
}

TEST_F(MayCall, TheRequestSaysWhetherItAddsOrModifies) {
  grant(2, "s", "add");
  grant(3, "s", "modify");
  const Access save = {Designer, Manager::Schemes, SubAction::AddOrModify};
  EXPECT_TRUE(may(2, save));
  EXPECT_FALSE(may(3, save));
  data_.ask("type", "1");
  EXPECT_FALSE(may(2, save));
  EXPECT_TRUE(may(3, save));
}

TEST_F(MayCall, AdministratorsAreNamed) {
  data_.page().session.put("usrLogin", "BOSS");
  EXPECT_TRUE(may(2, {Administrator}));
  for (const char* login : {"", "bos", "root,boss", "admin"}) {
    data_.page().session.put("usrLogin", login);
    EXPECT_FALSE(may(2, {Administrator})) << login;
  }
  data_.page().session.put("usrLogin", "root");
  EXPECT_FALSE(may(0, {Administrator}));
}

}  // namespace
}  // namespace tarlo::org
