#include "frame/local_page.h"

#include <gtest/gtest.h>

#include "variant/error_state.h"

namespace tarlo::frame {
namespace {

TEST(LocalPage, ValuesAreFoundWithoutRegardToCase) {
  database::Registry databases;
  LocalPage local(databases, "sqlite:x");
  Page& page = local.page();
  local.request()["Action"] = "a";
  local.serverVariables()["ACTION"] = "b";
  local.serverVariables()["HTTP_REFERER"] = "r";
  EXPECT_EQ(page.request.value("aCTION").text(), "a");
  EXPECT_EQ(page.request.value("http_referer").text(), "r");
  EXPECT_TRUE(page.request.value("id").isEmpty());
  page.session.put("query_SQL", 1);
  page.session.put("query_sql", 2);
  EXPECT_EQ(*page.session.get("QUERY_SQL").getIf<std::int32_t>(), 2);
  EXPECT_EQ(page.application.get("STRCONN").text(), "sqlite:x");
}

TEST(LocalPage, EndLeavesThePageEvenUnderResumeNext) {
  database::Registry databases;
  LocalPage local(databases, "");
  ErrorState err;
  EXPECT_THROW(err.run([&] { local.page().response.end(); }), PageEnd);
}

TEST(LocalPage, ClearKeepsWhatWasFlushed) {
  database::Registry databases;
  LocalPage local(databases, "");
  Response& response = local.page().response;
  response.write("a");
  response.flush();
  response.write("b");
  response.clear();
  response.binaryWrite(std::string_view("c\0", 2));
  EXPECT_EQ(local.written(), std::string_view("ac\0", 3));
}

TEST(LocalPage, CreatesRegisteredObjectsOnly) {
  database::Registry databases;
  LocalPage local(databases, "");
  local.registerObject("TarloTable.table", [] { return std::make_shared<Object>(); });
  EXPECT_NE(local.page().server.createObject("tarlotable.TABLE"), nullptr);
  ErrorState err;
  err.run([&] { local.page().server.createObject("Tarlo.menu"); });
  EXPECT_EQ(err.number(), 429);
}

}  // namespace
}  // namespace tarlo::frame
