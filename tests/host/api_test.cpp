// The JSON interface: who may read, what it gives, what it refuses.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "database/script.h"
#include "site_support.h"

namespace tarlo::host::testing {
namespace {

using Json = nlohmann::json;

class ApiTest : public ::testing::Test {
 protected:
  ApiTest() {
    run("CREATE TABLE Shop (ID int IDENTITY PRIMARY KEY, City nvarchar(20), Opened datetime, "
        "Sales decimal(18,2), Zembra_Flag int DEFAULT 1)\nGO\n"
        "CREATE TABLE Desk (ID int, ShopID int, Name nvarchar(20), Zembra_Flag int DEFAULT 1)\nGO\n"
        "insert into Shop (City,Opened,Sales) values ('Paris','2024-05-06',12.50),"
        "('Lyon',null,7),('it''s','2024-01-02 03:04:05',0)\nGO\n"
        "insert into Desk (ID,ShopID,Name) values (1,1,'a'),(2,1,'b'),(3,2,'c')\nGO\n"
        "insert into Zembra_DataDict_Table (DDT_Name) values ('Shop'),('Desk')\nGO\n"
        "insert into Zembra_Query_Main (Query_Name,Query_Desc,Query_Fields) values "
        "('shops','all','select [Shop].[ID] as [Shop.Key],[Shop].[City] as [Shop.Town] from "
        "[Shop]')"
        "\nGO\n"
        "insert into Zembra_Query_Field (QF_Name,QF_Desc,QF_NameID,QF_FieldType,QF_Relation) "
        "values "
        "('pick','',1,1,'select [Shop].[ID],[Shop].[City] from [Shop]|||-1'),"
        "('desks','',1,2,'select ID,City from Shop|||[Desk],[Desk].[ShopID],[Desk].[ID],"
        "[Desk].[Name],Zembra_Flag <> 0'),"
        "('table','',1,3,'select [Shop].[ID],[Shop].[City] as [Shop.Town],[Shop].[Opened] as "
        "[Shop.Day],[Shop].[Sales] as [Shop.Sum] from [Shop]|||Town|Day|Sum'),"
        "('sums','',1,3,'select 1 as k,ShopID,count(*) as n from Desk group by "
        "ShopID|||Shop|Desks'),"
        "('stale','',1,3,'select [Gone] from [Shop]|||x')\nGO\n");
    site_.signInAs("admin");
  }
  void run(const std::string& script) {
    auto connection = site_.database().borrow();
    connection->allowDdl(true);
    database::runScript(*connection, script);
  }
  Json ok(const std::string& path) {
    const auto answer = site_.get("/api/" + path);
    EXPECT_EQ(answer->status, 200U) << path << answer->body;
    EXPECT_EQ(answer->header("Content-Type"), "application/json; charset=utf-8");
    return Json::parse(answer->body);
  }
  std::string rows(const std::string& query) { return ok("controls/" + query)["rows"].dump(); }
  std::string refusal(unsigned status, const std::string& path, std::vector<Header> headers = {}) {
    const auto answer = site_.get("/api/" + path, std::move(headers));
    EXPECT_EQ(answer->status, status) << path << answer->body;
    return Json::parse(answer->body)["error"]["code"];
  }
  TestSite site_;
};

TEST_F(ApiTest, ControlsAndSchemesAreDescribed) {
  EXPECT_EQ(ok("controls/1").dump(),
            R"({"field":null,"id":1,"kind":"drop-down","name":"pick","remark":"","scheme":1,)"
            R"("usable":true})");
  EXPECT_EQ(ok("controls/2")["levels"], 2);
  EXPECT_EQ(ok("controls/3")["titles"].dump(), R"(["Town","Day","Sum"])");
  EXPECT_EQ(ok("controls/5")["usable"], false);
  EXPECT_EQ(ok("schemes/1")["columns"].dump(), R"(["Shop.Key","Shop.Town"])");
}

TEST_F(ApiTest, RowsArePagedSortedSearchedAndFiltered) {
  EXPECT_EQ(rows("3/rows?size=1&page=2"), R"([[2,"Lyon",null,7]])");
  EXPECT_EQ(ok("controls/3/rows?size=3")["more"], false);
  EXPECT_EQ(ok("controls/3/rows?size=2")["more"], true);
  EXPECT_EQ(ok("controls/3/rows")["columns"].dump(), R"(["ID","Town","Day","Sum"])");
  EXPECT_EQ(rows("3/rows?sort=2&desc=1&size=1"), R"([[1,"Paris","2024-05-06 00:00:00",12.5]])");
  EXPECT_EQ(rows("3/rows?search=ri"), R"([[1,"Paris","2024-05-06 00:00:00",12.5]])");
  EXPECT_EQ(rows("1/rows?c2=it%27s"), R"([[3,"it's"]])");
  EXPECT_EQ(rows("1/rows?c1=2"), R"([[2,"Lyon"]])");
  EXPECT_EQ(rows("3/rows?c4=12.50&c2=Paris"), R"([[1,"Paris","2024-05-06 00:00:00",12.5]])");
  EXPECT_EQ(rows("3/rows?c3=2024-05-06"), R"([[1,"Paris","2024-05-06 00:00:00",12.5]])");
  EXPECT_EQ(rows("4/rows?c3=2"), R"([[1,1,2]])");  // a group by what it counts
  for (const char* hostile : {"1/rows?c2=x%27+or+1%3D1--", "1/rows?c1=1+or+1%3D1", "1/rows?c1="})
    EXPECT_EQ(rows(hostile), "[]") << hostile;
}

TEST_F(ApiTest, ACascadesFurtherLevels) {
  EXPECT_EQ(rows("2/rows?size=2"), R"([[1,"Paris"],[2,"Lyon"]])");
  EXPECT_EQ(rows("2/rows?level=1&parent=1"), R"([[1,"a"],[2,"b"]])");
  EXPECT_EQ(rows("2/rows?level=1&parent=1%27+or+%271%27%3D%271"), "[]");
  EXPECT_EQ(refusal(404, "controls/2/rows?level=2&parent=1"), "not_found");
}

TEST_F(ApiTest, WhatIsNotThereOrWrongIsRefused) {
  run("update Zembra_Query_Field set Zembra_Flag=0 where QF_ID=1\nGO\n");
  for (const char* path : {"controls/1", "controls/99", "controls/x", "controls/1/rows/2",
                           "controls/12345678901234567890", "schemes/9", "", "controls", "x/1"})
    EXPECT_EQ(refusal(404, path), "not_found") << path;
  for (const char* query : {"size=0", "size=1001", "size=-1", "page=x", "sort=5", "page=1e3"})
    EXPECT_EQ(refusal(400, "controls/3/rows?" + std::string(query)), "bad_request") << query;
  EXPECT_EQ(refusal(409, "controls/5/rows"), "not_usable");
  EXPECT_EQ(site_.post("/api/controls/3", "")->status, 405U);
  // A statement that the database refuses on the way: the log has the engine's words, nobody else.
  run("update Zembra_Query_Field set QF_Relation='select Gone from Shop|||x' where QF_ID=2\nGO\n");
  EXPECT_EQ(refusal(409, "controls/2/rows"), "not_usable");
  EXPECT_TRUE(holds(site_.log(), "Gone"));
  EXPECT_FALSE(holds(site_.get("/api/controls/2/rows")->body, "Gone"));
  // One that writes is none, whoever stored it.
  run("update Zembra_Query_Field set QF_FieldType=1,QF_Relation='update Shop set City=1|||' where "
      "QF_ID=4\nGO\n");
  EXPECT_EQ(refusal(409, "controls/4/rows"), "not_usable");
  EXPECT_TRUE(holds(site_.log(), "update Shop set City=1"));
  EXPECT_EQ(ok("controls/4")["usable"], false);
}

TEST_F(ApiTest, TokensStandForTheirUserUntilTheyEnd) {
  site_.forgetCookie();
  EXPECT_EQ(refusal(401, "controls/3"), "unauthorized");
  EXPECT_EQ(refusal(401, "controls/3", {{"Authorization", "Bearer nonsense"}}), "unauthorized");
  const int admin = site_.userId("admin");
  const auto as = [&](std::chrono::hours life) {
    return Header{"Authorization", "bearer " + makeApiToken(site_.database(), admin, life)};
  };
  EXPECT_EQ(refusal(401, "controls/3", {as(std::chrono::hours(-1))}), "unauthorized");
  const Header token = as(std::chrono::hours(1));
  const auto answer = site_.get("/api/controls/3", {token});
  EXPECT_EQ(answer->status, 200U);
  EXPECT_EQ(answer->header("Set-Cookie"), "");  // a token opens no session
  revokeApiTokens(site_.database(), admin);
  EXPECT_EQ(refusal(401, "controls/3", {token}), "unauthorized");
  EXPECT_EQ(site_.get("/api/openapi.json")->status, 200U);
}

TEST_F(ApiTest, PermissionsAreThoseOfTheMenu) {
  run("update Zembra_Permission set permission_forbid=1 where Permission_MenuID in (select Menu_ID "
      "from Zembra_Menu where Menu_Href like '%action=ctrlSearch')\nGO\n");
  EXPECT_EQ(refusal(403, "schemes/1"), "forbidden");
  ok("controls/3");
  run("update Zembra_Permission set permission_forbid=1\nGO\n");
  EXPECT_EQ(refusal(403, "controls/3"), "forbidden");
  EXPECT_EQ(refusal(403, "controls/3/rows"), "forbidden");
}

// The answers are what the description of the interface says.
bool matches(const Json& schema, const Json& value, const Json& all) {
  if (schema.contains("$ref")) {
    const std::string ref = schema["$ref"];
    return matches(all[Json::json_pointer(ref.substr(1))], value, all);
  }
  if (value.is_null()) return schema.value("nullable", false) || !schema.contains("type");
  const std::string type = schema.value("type", "");
  if (type == "object") {
    for (const auto& name : schema.value("required", Json::array())) {
      if (!value.contains(name)) return false;
    }
    for (const auto& [name, member] : value.items()) {
      if (!schema["properties"].contains(name)) return false;
      if (!matches(schema["properties"][name], member, all)) return false;
    }
    return true;
  }
  if (type == "array") {
    return value.is_array() && std::ranges::all_of(value, [&](const Json& item) {
             return matches(schema["items"], item, all);
           });
  }
  return type.empty() || (type == "integer" && value.is_number_integer()) ||
         (type == "string" && value.is_string()) || (type == "boolean" && value.is_boolean());
}

TEST_F(ApiTest, AnswersAreAsTheDescriptionSays) {
  const Json all = Json::parse(site_.get("/api/openapi.json")->body);
  const std::pair<const char*, const char*> rows[] = {
      {"controls/1", "Control"},   {"controls/2", "Control"},
      {"controls/3", "Control"},   {"controls/3/rows", "Rows"},
      {"controls/9", "Error"},     {"schemes/1", "Scheme"},
      {"controls/1/rows", "Rows"}, {"controls/3/rows?page=0", "Error"}};
  for (const auto& [path, schema] : rows) {
    const Json answer = Json::parse(site_.get("/api/" + std::string(path))->body);
    EXPECT_TRUE(matches(all["components"]["schemas"][schema], answer, all)) << path << answer;
  }
  EXPECT_FALSE(matches(all["components"]["schemas"]["Rows"], Json{{"rows", 1}}, all));
}

}  // namespace
}  // namespace tarlo::host::testing
