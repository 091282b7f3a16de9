// The site behind the wire: a client that leaves takes its statement with it.

#include "site_support.h"
#include "wire_support.h"

namespace tarlo::host::testing {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

TEST(SiteWire, AStatementEndsWithItsClient) {
  Config config;
  config.statementsByUrl = true;
  config.readableTables = {"Zembra_Menu"};
  TestSite site(config);
  site.signInAs("admin");
  Lines access;
  WireServer::Options options;
  options.onAccess = [&](const WireServer::Options::Access& line) { access.add(line.target); };
  WireServer server(options, [&](const WireRequest& request, WireResponse& response) {
    site.site().handle(request, response);
  });
  server.start();
  // Runs for hours.
  std::string sql = "select+count(*)+from+Zembra_Menu+t0";
  for (int i = 1; i < 12; ++i) sql += ",Zembra_Menu+t" + std::to_string(i);
  const std::string target =
      "/TarloQuery.Zembra?action=showSearchpreview_SysField&rel=x&sql=" + sql;
  {
    WireClient client(server.port());
    client.send("GET " + target + " HTTP/1.1\r\nHost: site.example\r\nReferer: " +
                "http://site.example/\r\nCookie: " + site.cookie() + "\r\n\r\n");
    EXPECT_FALSE(access.await("showSearchpreview", milliseconds(1000))) << site.log();
  }
  const auto closed = Clock::now();
  EXPECT_TRUE(access.await("showSearchpreview"));
  EXPECT_LT(Clock::now() - closed, milliseconds(1000));
}

}  // namespace
}  // namespace tarlo::host::testing
