// A grid of somebody else's library in the place of ours.

#include "host/context/registered_classes.h"

#include <gtest/gtest.h>
#include <spdlog/sinks/ostream_sink.h>

#include <fstream>
#include <sstream>

#include "bridge/registry.h"
#include "control/operations.h"
#include "siblings/siblings.h"
#include "support/platform_database.h"
#include "support/text.h"

namespace tarlo::host {
namespace {

using tarlo::testing::holds;

const std::string kOwnGrid = TARLO_BUILD_FOLDER "/examples/own_grid.so";
constexpr const char* kOwnClass = "{6B1B7A52-41C3-4C0D-9A35-0F3E5D8C7A11}";
constexpr const char* kOwnDialog = "{6B1B7A52-41C3-4C0D-9A35-0F3E5D8C7A12}";

class RegisteredClassesTest : public ::testing::Test {
 protected:
  RegisteredClassesTest()
      : log_("test", std::make_shared<spdlog::sinks::ostream_sink_mt>(logged_)) {
    for (const auto& progId : siblings::progIds())
      factories_[std::string(progId.name)] = progId.make;
  }
  void add(const std::string& classId, const std::string& library,
           const std::string& progId = "tarlotable.TABLE") {
    bridge::addToRegistry(file(), {progId, classId, library});
    addRegisteredClasses(file(), factories_, log_);
  }
  std::string file() const { return (folder_.path() / "registry").string(); }

  testing::TemporaryFolder folder_;
  std::ostringstream logged_;
  spdlog::logger log_;
  ObjectFactories factories_;
};

struct Database : testing::PlatformDatabase {
  explicit Database(HttpServer& server) {
    for (const char* name : {"TarloTable.table", "Tarlo.menu", "TarloDialog.WebDialog"})
      local().registerObject(name, [&server, name] { return server.createObject(name); });
  }
};

TEST_F(RegisteredClassesTest, APageIsDrawnWithTheOtherGrid) {
  add(kOwnClass, kOwnGrid);
  HttpServer server(factories_, Charset::Utf8);
  Database data(server);
  const std::string page = data.writtenBy([&] { control::ctrlSearch_Usrfield(data.page()); });
  EXPECT_TRUE(
      holds(page, "<table id=\"own_grid\"><caption>关系名称|类型|查询方案</caption></table>"));
  EXPECT_FALSE(holds(page, "tarlo-grid"));
}

TEST_F(RegisteredClassesTest, AClassConnectsWithTheTwoArgumentsThatItTakes) {
  add(kOwnDialog, kOwnGrid, "tarlodialog.WEBDIALOG");
  HttpServer server(factories_, Charset::Utf8);
  Database data(server);
  const std::string page = data.writtenBy([&] { control::addSearchDlg_UsrField(data.page()); });
  EXPECT_TRUE(page.starts_with("<h1 id=\"own_dialog\">")) << page;
}

TEST_F(RegisteredClassesTest, ALibraryThatFailsIsLoggedAndTakesNoPlace) {
  add("{2}", "/no/such/library.so");
  EXPECT_TRUE(holds(logged_.str(), "tarlotable.TABLE"));
  HttpServer server(factories_, Charset::Utf8);
  EXPECT_NE(server.createObject("TarloTable.table"), nullptr);  // ours still
  add("{3}", kOwnGrid);
  EXPECT_EQ(testing::errorOf([&] { server.createObject("TarloTable.table"); }), 429);
  std::ofstream(file()) << "nonsense\n";
  EXPECT_THROW(addRegisteredClasses(file(), factories_, log_), bridge::RegistryError);
}

}  // namespace
}  // namespace tarlo::host
