#pragma once
// A database with the platform's own tables, some schemes in it, and grids on it as pages set them
// up.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "frame/context_object.h"
#include "frame/sibling_calls.h"
#include "siblings/siblings.h"
#include "support/database_page.h"
#include "support/schema_files.h"
#include "support/text.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::testing {

class GridPage : public ::testing::Test, public DatabasePage {
 protected:
  using Json = nlohmann::json;

  GridPage() {
    for (const std::string& script : platformTables()) runScript(script);
    execute("insert into Zembra_Dict_TableDir (TD_Name,Zembra_Flag) values ('销售',1),('采购',1)");
    for (int i = 1; i <= 40; ++i) addScheme("方案" + std::to_string(i), i % 2, i);
  }

  // The number is also the day of the writing date.
  void addScheme(const std::string& name, int system, int number) {
    execute(
        "insert into Zembra_Query_Main (Query_Name,Query_System,Query_Dic,Zembra_WriteDate) "
        "values ('" +
        text::replace(name, "'", "''") + "'," + std::to_string(system) + ",1,DATEADD(day," +
        std::to_string(number) + ",'2024-01-01'))");
  }

  std::shared_ptr<Object> make(std::string_view progId) {
    for (const auto& each : siblings::progIds()) {
      if (text::equalsNoCase(each.name, progId)) return each.make();
    }
    throw std::logic_error("no such component");
  }

  static constexpr const char* kSql =
      "select a.Query_ID as queryid,a.Query_Name as queryname,b.TD_Name as dicname,"
      "ss =  CASE a.Query_System WHEN 0 THEN '用户' WHEN 1 THEN '系统' END,a.Zembra_WriteDate as d "
      "from Zembra_Query_Main as a , Zembra_Dict_TableDir as b where a.Zembra_Flag <> 0 and "
      "a.Query_Dic=b.Zembra_ID and ('orvane'='orvane')";

  std::shared_ptr<Object> grid(const std::string& sql = kSql,
                               const std::string& title = "名称|目录|类别|时间") {
    auto table = make("tarlotable.TABLE");
    frame::connectToPage(page(), *table, frame::kGridContext);
    table->put("id", "SearchTable");
    table->put("SelectionStyle", 2);
    table->put("title", title);
    table->put("sql", sql);
    table->put("Pagesize", 15);
    table->put("ORDERBY", " a.Zembra_WriteDate DESC");
    return table;
  }

  static std::string draw(Object& table) {
    return variant::spliced(frame::callMethod(table, "getTableHtml"));
  }

  // What the grid's script is given.
  static Json settings(const std::string& html) {
    const std::string start = "attach(\"SearchTable\",";
    const auto from = html.find(start);
    const auto to = html.find(");</script>", from);
    if (from == std::string::npos || to == std::string::npos) return Json();
    return Json::parse(html.substr(from + start.size(), to - from - start.size()));
  }

  // The answer to a request with the values given, as text.
  std::string ask(std::string_view action, const std::map<std::string, std::string>& values) {
    local().request().clear();
    for (const auto& [name, value] : values) local().request()[name] = value;
    return writtenBy([&] {
      for (const auto& operation : siblings::pageOperations()) {
        if (operation.component == "TarloTable" && operation.name == action) operation.run(page());
      }
    });
  }
  Json rows(const std::string& key, std::map<std::string, std::string> values = {}) {
    values["grid"] = key;
    return Json::parse(ask("rows", values));
  }
  // The first cells of the answer's rows, joined; its error when there is one.
  static std::string names(const Json& answer) {
    if (!answer.at("ok").get<bool>()) return answer.at("error");
    std::string all;
    for (const Json& row : answer.at("rows"))
      all += (all.empty() ? "" : ",") + row.at("cells").at(0).get<std::string>();
    return all;
  }
};

}  // namespace tarlo::testing
