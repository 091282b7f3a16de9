#include "component/tarlo_query.h"

#include <gtest/gtest.h>

#include <vector>

#include "component/operations.h"
#include "frame/local_page.h"
#include "variant/error_state.h"

namespace tarlo::component {
namespace {

class Component : public ::testing::Test {
 protected:
  int errorOf(std::string_view name, std::vector<Variant> arguments = {}) {
    ErrorState err;
    err.run([&] { tarlo_.call(name, arguments); });
    return err.number();
  }

  database::Registry databases_;
  frame::LocalPage local_{databases_, ""};
  TarloQuery tarlo_;
};

TEST_F(Component, CallsByNameAndWritesBack) {
  tarlo_.onStartPage(local_.page());
  EXPECT_EQ(local_.written(), "");
  std::vector<Variant> arguments = {"O'Neil", false};
  EXPECT_EQ(tarlo_.call("PRESQLFORMAT", arguments).text(), "'O''Neil'");
  EXPECT_EQ(arguments[0].text(), "'O''Neil'");
  EXPECT_TRUE(tarlo_.call("getdatetime", {}).isEmpty());
  EXPECT_NE(local_.written(), "");
}

TEST_F(Component, RefusesUnknownNamesAndWrongCounts) {
  EXPECT_EQ(errorOf("noSuchOperation"), 438);
  EXPECT_EQ(errorOf("validINT"), 450);
  EXPECT_EQ(errorOf("validINT", {1}), 91);
  tarlo_.onStartPage(local_.page());
  EXPECT_EQ(errorOf("noSuchOperation"), 438);
  EXPECT_EQ(errorOf("validINT", {1, 2}), 450);
  EXPECT_EQ(errorOf("getDateTime", {1}), 450);
  EXPECT_EQ(errorOf("preSQLFormat", {variant::Null{}, true}), 94);
  EXPECT_EQ(errorOf("validINT", {1}), 0);
}

TEST_F(Component, LifecycleByName) {
  const Variant context{std::make_shared<ContextObject>(local_.page())};
  EXPECT_EQ(errorOf("OnStartPage"), 450);
  EXPECT_EQ(errorOf("OnStartPage", {1}), 13);
  EXPECT_EQ(errorOf("OnStartPage", {Variant(std::make_shared<Object>())}), 13);
  EXPECT_EQ(errorOf("ASPConnect", {1, 2, 3, 4}), 450);
  EXPECT_EQ(errorOf("ASPConnect", {1, 2, 3, 4, context}), 0);
  EXPECT_EQ(errorOf("isNothing", {1}), 91);
  EXPECT_EQ(errorOf("onstartpage", {context}), 0);
  EXPECT_EQ(errorOf("ASPDisconnect"), 0);
  EXPECT_EQ(errorOf("isNothing", {1}), 0);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(errorOf("OnEndPage"), 0);
  EXPECT_EQ(errorOf("isNothing", {1}), 91);
}

TEST_F(Component, ResumingOperationsKeepTheirErrorsAndRaisingOnesDoNot) {
  tarlo_.onStartPage(local_.page());  // its connection string names no database
  EXPECT_EQ(errorOf("getTableName_Query", {1}), 0);
  EXPECT_NE(errorOf("getRelTableID", {"Zembra_User"}), 0);
}

// A component beside, which sees the page while an operation runs.
struct Onlooker : Object {
  explicit Onlooker(Page& page) : page_(page) {}
  Variant call(std::string_view, std::span<Variant>) override {
    seen = page_.access;
    return "";
  }
  void put(std::string_view, const Variant&) override {}
  frame::Access seen;

 private:
  Page& page_;
};

TEST_F(Component, ThePageTellsWhoMayCallWhatRuns) {
  const auto onlooker = std::make_shared<Onlooker>(local_.page());
  local_.registerObject("TarloTable.table", [&] { return onlooker; });
  local_.page().session.put("query_sql", "select 1 as a");
  tarlo_.onStartPage(local_.page());
  const frame::Access before = local_.page().access;
  errorOf("showSearchpreview_UsrField");
  EXPECT_EQ(onlooker->seen, findOperation("showSearchpreview_UsrField")->access);
  EXPECT_NE(onlooker->seen, before);
  EXPECT_EQ(local_.page().access, before);
}

// An application whose values cannot be read.
class BrokenApplication : public frame::Application {
 public:
  Variant get(std::string_view) const override { throw RuntimeError(1, "lost"); }
};

TEST_F(Component, APageThatCannotStartIsNotBound) {
  Page& page = local_.page();
  BrokenApplication broken;
  Page lost{page.request, page.response, page.server, page.session, broken, page.databases};
  EXPECT_THROW(tarlo_.onStartPage(lost), RuntimeError);
  EXPECT_EQ(errorOf("isNothing", {1}), 91);
}

}  // namespace
}  // namespace tarlo::component
