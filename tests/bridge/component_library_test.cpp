// The component as a library, loaded and called through the binary interface.

#include "bridge/component_library.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "bridge/registry.h"
#include "component/tarlo_query.h"
#include "frame/context_object.h"
#include "support/platform_database.h"

namespace tarlo::bridge {
namespace {

using testing::errorOf;
using testing::PlatformDatabase;
using testing::textOf;

const std::string kLibrary = TARLO_BUILD_FOLDER "/libtarloquery.so";
const std::string kClassId(component::kClassId);

// Server.CreateObject gives it to the library, which calls it: once out and once back in.
struct Echo : Object {
  Variant call(std::string_view name, std::span<Variant> arguments) override {
    if (name == "ASPConnect") ++connected;
    for (Variant& argument : arguments) {
      if (argument.isText()) written += argument.text() + "|";
    }
    return "markup";
  }
  void put(std::string_view name, const Variant& value) override {
    written += std::string(name) + "=" + variant::spliced(value) + "|";
  }
  int connected = 0;
  std::string written;
};

class LibraryTest : public ::testing::Test {
 protected:
  LibraryTest() : library_(kLibrary), query_(library_.create(kClassId)) {}

  Variant call(std::string_view name, std::vector<Variant> arguments = {}) {
    Variant result = query_->call(name, arguments);
    arguments_ = std::move(arguments);
    return result;
  }
  void start() {
    call("OnStartPage",
         {Variant(std::shared_ptr<Object>(std::make_shared<frame::ContextObject>(data_.page())))});
  }

  PlatformDatabase data_;
  ComponentLibrary library_;
  std::shared_ptr<Object> query_;
  std::vector<Variant> arguments_;  // as the last call left them
};

TEST_F(LibraryTest, AnUnknownClassIsRefused) {
  EXPECT_THROW(library_.create("{00000000-0000-0000-0000-000000000000}"), LibraryError);
  EXPECT_THROW(ComponentLibrary("/no/such/library.so"), LibraryError);
}

TEST_F(LibraryTest, OperationsRunOnTheHostsPage) {
  EXPECT_EQ(errorOf([&] { call("getTableDesc", {"Orders"}); }), 91);
  start();
  EXPECT_EQ(textOf(call("GETTABLEDESC", {"Orders"})), "Order");
  // Rows come through as arrays, written arguments come back.
  EXPECT_EQ(textOf(call("getTableName_Query", {10})), "Orders,Order");
  EXPECT_EQ(textOf(call("preSQLFormat", {"it's", false})), "'it''s'");
  EXPECT_EQ(textOf(arguments_[0]), "'it''s'");
  EXPECT_NE(data_.writtenBy([&] { call("getQueryTable"); }).find("&nbsp;"), std::string::npos);
  data_.ask("id", "77");
  EXPECT_EQ(data_.writtenBy([&] { call("delSearch_UsrField"); }).substr(0, 8), "<script>");
  call("OnEndPage");
  call("OnEndPage");
  EXPECT_EQ(errorOf([&] { call("getTableDesc", {"Orders"}); }), 91);
}

TEST_F(LibraryTest, ErrorsCrossWithTheirNumbers) {
  start();
  EXPECT_EQ(errorOf([&] { call("noSuchOperation"); }), 438);
  EXPECT_EQ(errorOf([&] { call("getTableDesc"); }), 450);
  EXPECT_NE(errorOf([&] { call("getRelTableID", {"it's"}); }), 0);
}

TEST_F(LibraryTest, TheSessionIsWrittenAndSiblingsAreTheHosts) {
  start();
  const auto grid = std::make_shared<Echo>();
  data_.local().registerObject("TarloTable.table", [grid] { return grid; });
  data_.page().session.put("query_sql", "select 1 as a");
  call("showSearchpreview_UsrField");
  EXPECT_EQ(textOf(data_.page().session.get("query_sql")), "");
  EXPECT_EQ(grid->connected, 1);
  EXPECT_NE(grid->written.find("sql=select 1 as a|"), std::string::npos) << grid->written;
  EXPECT_NE(data_.written().find("markup"), std::string::npos);
}

TEST_F(LibraryTest, ItEntersItselfAndGoesAgain) {
  testing::TemporaryFolder folder;
  const std::string registry = (folder.path() / "registry").string();
  setenv("TARLO_REGISTRY", registry.c_str(), 1);
  addToRegistry(registry, {"Other.class", "{1}", "/o.so"});
  EXPECT_TRUE(library_.registerServer());
  EXPECT_TRUE(library_.registerServer());
  ASSERT_EQ(readRegistry(registry).size(), 2u);
  EXPECT_EQ(readRegistry(registry)[1].progId, "Orvane.TarloQuery");
  EXPECT_EQ(readRegistry(registry)[1].library, kLibrary);
  EXPECT_TRUE(library_.unregisterServer());
  EXPECT_EQ(readRegistry(registry).size(), 1u);
  setenv("TARLO_REGISTRY", "/no/such/folder/registry", 1);
  EXPECT_FALSE(library_.registerServer());
}

}  // namespace
}  // namespace tarlo::bridge
