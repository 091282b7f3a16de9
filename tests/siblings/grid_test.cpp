// Grids as pages draw them and as the browser asks for their rows.

#include "grid_support.h"
#include "scheme/operations.h"

namespace tarlo::siblings {
namespace {

using tarlo::testing::holds;

using frame::callMethod;

class Grid : public testing::GridPage {
 protected:
  std::shared_ptr<Object> withViews() {
    auto table = grid();
    callMethod(*table, "AddSubMenuTitle", {"视图", "view1"});
    const auto add = [&](const char* condition) {
      const std::string script =
          std::string("SearchTable.gotoView(\\\" ") + condition + " \\\",\\\"视图\\\")";
      callMethod(*table, "AddSubMenu", {"看", script, "view1"});
    };
    add("1 = 1");
    add("a.Query_System = 1");
    callMethod(*table, "AddSubMenu", {"", "", "view1"});
    return table;
  }
  std::string keyOf(Object& table) { return settings(draw(table)).at("key"); }
};

TEST_F(Grid, DrawsItsFirstPageAtOnce) {
  auto table = withViews();
  callMethod(*table, "addActions", {"新增", "新增...", "addRecord()", "btnX"});
  table->put("onRowDoubleClick", "ShowDetail()");
  callMethod(*table, "WriteTable");
  const std::string html = local().written();
  EXPECT_TRUE(holds(html,
                    "<tr id=\"SearchTable_row1\" dataID=\"40\"><td>方案40</td><td>销售</td>"
                    "<td>用户</td><td>2024-02-10</td></tr>"))
      << html;
  EXPECT_FALSE(holds(html, "SearchTable_row16"));
  const Json set = settings(html);
  EXPECT_EQ(set.at("total"), 40);
  EXPECT_EQ(set.at("buttons").at(0).at("cssClass"), "btnX");
  EXPECT_EQ(set.at("menus").at(0).at("views").at(1).at("script"),
            "SearchTable.gotoView(\" a.Query_System = 1 \",\"视图\")");
  EXPECT_FALSE(holds(html, "Zembra_Query_Main")) << "the statement left the server";
}

TEST_F(Grid, TakesFlagsAsBooleansAndAsTexts) {
  const std::pair<Variant, bool> rows[] = {{true, true},     {false, false},     {"true", true},
                                           {"false", false}, {" False ", false}, {"", false},
                                           {-1, true},       {Variant(), false}};
  for (const auto& [value, expected] : rows) {
    auto table = withViews();
    for (const char* name : {"showMenu", "MultiPage", "Search"}) table->put(name, value);
    const Json set = settings(draw(*table));
    EXPECT_EQ(set.at("menus").size(), expected ? 1u : 0u);
    EXPECT_EQ(set.at("multiPage"), expected);
    EXPECT_EQ(set.at("search"), expected);
  }
}

TEST_F(Grid, RefusesWhatItsPageGotWrong) {
  const auto numberOf = [](auto step) {
    try {
      step();
      return 0;
    } catch (const RuntimeError& error) {
      return error.number();
    }
  };
  auto table = grid();
  EXPECT_EQ(numberOf([&] { table->put("Colour", 1); }), 438);
  EXPECT_EQ(numberOf([&] { table->put("Search", "maybe"); }), 13);
  EXPECT_EQ(numberOf([&] { callMethod(*table, "Paint"); }), 438);
  EXPECT_EQ(numberOf([&] { callMethod(*table, "AddSubMenu", {"a"}); }), 450);
  EXPECT_EQ(numberOf([&] { callMethod(*make("TarloTable.table"), "WriteTable"); }), 91);
  EXPECT_EQ(numberOf([&] { callMethod(*table, "ASPConnect", {"x"}); }), 91);
  table->put("id", "a;alert(1)");
  EXPECT_EQ(numberOf([&] { draw(*table); }), 5);
}

TEST_F(Grid, PagesSortsAndSearches) {
  const std::string key = keyOf(*withViews());
  const std::tuple<std::map<std::string, std::string>, const char*, int, int> cases[] = {
      {{{"page", "3"}}, "方案10,方案9,方案8,方案7,方案6,方案5,方案4,方案3,方案2,方案1", 40, 3},
      {{{"page", "99"}, {"search", "方案3"}},
       "方案39,方案38,方案37,方案36,方案35,方案34,方案33,"
       "方案32,方案31,方案30,方案3",
       11,
       1},
      {{{"page", "99999999999999999999"}, {"search", "方案40"}}, "方案40", 1, 1},
      {{{"sort", "4"}, {"search", "方案1"}, {"view", " a.Query_System = 1 "}},
       "方案1,方案11,方案13,方案15,方案17,方案19",
       6,
       1},
      {{{"sort", "77"}, {"search", "2024-01-31"}}, "方案30", 1, 1},
      {{{"search", "用户"}, {"page", "2"}}, "方案10,方案8,方案6,方案4,方案2", 20, 2},
      {{{"view", " 1 = 1 "}, {"right", " AND a.Query_System = 1"}, {"page", "2"}},
       "方案9,方案7,方案5,方案3,方案1",
       20,
       2},
      {{{"search", "没有"}}, "", 0, 1},
      {{{"search", "2024-02-1x"}}, "", 0, 1},
  };
  for (const auto& [values, listed, total, page] : cases) {
    const Json answer = rows(key, values);
    EXPECT_EQ(names(answer), listed);
    EXPECT_EQ(answer.value("total", -1), total) << answer;
    EXPECT_EQ(answer.value("page", -1), page);
  }
  EXPECT_EQ(local().headers().at("Content-Type"), "application/json; charset=utf-8");
}

TEST_F(Grid, TakesSearchTextAsText) {
  addScheme("100% [a] it's_x", 0, 0);
  const std::string key = keyOf(*grid());
  const std::pair<const char*, int> cases[] = {
      {"%", 1},           {"_", 1},    {"[a]", 1}, {"[a", 1},   {"'", 1},
      {"' or 1=1 --", 0}, {"it's", 1}, {"]", 1},   {"[^x]", 0}, {"100% [A] IT'S_X", 1}};
  for (const auto& [search, total] : cases)
    EXPECT_EQ(rows(key, {{"search", search}}).value("total", -1), total) << search;
}

TEST_F(Grid, RunsNoConditionButItsOwn) {
  auto table = withViews();
  // A name that looks like a script of its own opens nothing.
  callMethod(*table, "AddSubMenu",
             {"x", "SearchTable.gotoView(\\\"a.Query_ID = 1\\\",\\\"\\\");X.gotoView(\\\"2=2\\\")",
              "view1"});
  const std::string key = keyOf(*table);
  for (const char* condition : {"2=2", "a.Query_System = 0", "1 = 1 or 1 = 1", "and", "1=1",
                                "a.Query_System = 1 --", "and and 1 = 1"}) {
    for (const char* name : {"view", "right"}) {
      const Json answer = rows(key, {{name, condition}});
      EXPECT_EQ(answer.value("status", 0), 400) << condition;
    }
    EXPECT_EQ(Json::parse(ask("csv", {{"grid", key}, {"view", condition}})).value("status", 0),
              400);
  }
  EXPECT_EQ(rows(key, {{"view", " and a.Query_ID = 1"}}).value("total", -1), 1);
  EXPECT_EQ(rows("no such grid").value("status", 0), 410);
}

TEST_F(Grid, ListsWhateverStatementPagesGiveIt) {
  addScheme("=1+1", 0, -9);
  const std::tuple<const char*, const char*, const char*, int> cases[] = {
      {"select str(a.Query_ID)+'|7' as id,a.Query_Name as [x] from Zembra_Query_Main a where "
       "a.Query_ID=1 union select str(a.Query_ID)+'|8',a.Query_Name from Zembra_Query_Main a where "
       "a.Query_ID=2 ",
       "名称", "方案1,方案2", 2},
      {"select a.Query_System,count(*) as n from Zembra_Query_Main a group by a.Query_System "
       "having 1 = 0",
       "数", "", 0},
      {"select 1 as tempidcolumn_V1,a.Query_System as [s],count(*) as [n],max(a.Query_ID) as [n] "
       "from "
       "Zembra_Query_Main a group by a.Query_System",
       "系统|数|大", "0,1", 2},
      {"select distinct Query_System,Query_System as s from Zembra_Query_Main", "", "0,1", 2},
      {"select top 2 Query_ID,Query_Name from Zembra_Query_Main order by Query_ID desc", "名称",
       "方案40,=1+1", 2},
      {"select * from Zembra_Dict_TableDir", "名称", "销售,采购", 2},
  };
  for (const auto& [sql, title, listed, total] : cases) {
    const std::string html = draw(*grid(sql, title));
    const Json set = settings(html);
    EXPECT_EQ(set.at("error"), "") << sql;
    EXPECT_EQ(set.at("total"), total) << sql;
    EXPECT_EQ(names(rows(set.at("key"), {{"reload", "1"}})), listed) << sql;
    EXPECT_TRUE(rows(set.at("key"), {{"search", "x"}, {"sort", "1"}}).at("ok")) << sql;
  }
}

TEST_F(Grid, CountsOneQueryAPageOnlyWhereItMust) {
  const std::string sql =
      "select Query_System,Query_System as s from Zembra_Query_Main group by Query_System";
  auto table = grid(sql, "系统");
  table->put("Pagesize", 1);
  const std::string key = keyOf(*table);
  EXPECT_EQ(rows(key, {{"page", "2"}}).value("total", -1), 2);
  addScheme("third", 5, 1);
  EXPECT_EQ(rows(key).value("total", -1), 2) << "counted again without need";
  EXPECT_EQ(rows(key, {{"reload", "1"}}).value("total", -1), 3);
}

TEST_F(Grid, SaysInPlainWordsThatItHasNoRows) {
  for (const char* sql :
       {"select Foo from Nowhere", "select", "update Zembra_Query_Main set Query_Name=''",
        "select a.Query_ID,a.Query_Name/0 from Zembra_Query_Main a"}) {
    const std::string html = draw(*grid(sql));
    EXPECT_EQ(settings(html).at("error"), "列表的查询语句无法执行，请与系统管理员联系。") << sql;
    EXPECT_FALSE(holds(html, "Nowhere"));
  }
  EXPECT_EQ(names(rows(keyOf(*grid()))).substr(0, 8), "方案40");
  // Without a statement there is nothing to list, and nothing broken.
  EXPECT_EQ(settings(draw(*grid(" "))).at("error"), "");
}

TEST_F(Grid, WritesNoMarkupThatDataBringsAlong) {
  addScheme("<script>x</script>&lt;b&gt; & &#128512;\"", 0, 99);
  const std::string html = draw(*grid());
  EXPECT_TRUE(
      holds(html, "<td>&lt;script&gt;x&lt;/script&gt;&lt;b&gt; &amp; &#128512;&quot;</td>"));
  auto table = grid();
  callMethod(*table, "addActions", {"</script><img>", "c", "f()", "btnX"});
  EXPECT_FALSE(holds(draw(*table), "</script><img>"));
  table->put("Width", "1%;background:url(x)");
  EXPECT_FALSE(holds(draw(*table), "url("));
}

TEST_F(Grid, ExportsTheViewForSpreadsheets) {
  addScheme(" =cmd|' /C calc'!A0", 1, 0);
  addScheme("-5", 1, -1);
  addScheme("a,\"b\"\r\nc", 1, -2);
  addScheme("\tx", 1, -3);  // some spreadsheets take a leading tab off before they look
  const std::string key = keyOf(*withViews());
  const std::string csv =
      ask("csv", {{"grid", key}, {"view", "a.Query_System = 1"}, {"sort", "4"}});
  const std::string start =
      "\xEF\xBB\xBF名称,目录,类别,时间\r\n"
      "'\tx,销售,系统,2023-12-29\r\n"
      "\"a,\"\"b\"\"\r\nc\",销售,系统,2023-12-30\r\n"
      "-5,销售,系统,2023-12-31\r\n"
      "' =cmd|' /C calc'!A0,销售,系统,2024-01-01\r\n"
      "方案1,销售,系统,2024-01-02\r\n";
  EXPECT_EQ(csv.substr(0, start.size()), start);
  EXPECT_EQ(std::count(csv.begin(), csv.end(), '\n'), 26);
  EXPECT_EQ(local().headers().at("Content-Type"), "text/csv; charset=utf-8");
}

TEST_F(Grid, KeepsAtMostSoManyGridsOfASession) {
  auto table = grid();
  const std::string first = keyOf(*table);
  std::string last = keyOf(*table);
  EXPECT_NE(first, last);
  for (int i = 0; i < 39; ++i) last = keyOf(*table);
  EXPECT_EQ(rows(first).value("status", 0), 410);
  EXPECT_TRUE(rows(last).at("ok"));
}

// The page as a designer gets it, with its menu and its grid.
TEST_F(Grid, ServesTheManagerOfSchemes) {
  local().session()["usrICID"] = 31;
  local().session()["usrID"] = 1;
  for (const auto& each : progIds()) local().registerObject(std::string(each.name), each.make);
  scheme::ctrlSearch(page());
  const std::string html = local().written();
  EXPECT_TRUE(holds(html, "role=\"menubar\""));
  const Json set = settings(html);
  EXPECT_EQ(set.at("error"), "");
  EXPECT_EQ(set.at("total"), 40);
  ASSERT_EQ(set.at("menus").size(), 2u);
  EXPECT_EQ(set.at("menus").at(1).at("views").size(), 4u);
  // What the page's own two functions set, and a directory's view.
  const std::string key = set.at("key");
  for (const char* condition : {" and a.Query_System = 1", " and a.Query_System = 0"})
    EXPECT_EQ(rows(key, {{"right", condition}}).value("total", -1), 20);
  EXPECT_EQ(rows(key, {{"view", " b.Zembra_ID =2 "}}).value("total", -1), 0);
}

// Task panels take the session's newest row and its second statement where there is one.
TEST_F(Grid, NotesWhatASessionHasListed) {
  const std::string newest =
      "select top 1 TarloTable_SQLString,TarloTable_SQLString2 from Zembra_Temp_TarloTable where "
      "TarloTable_SessionID = '" +
      page().session.id() + "' order by TarloTable_ID desc";
  draw(*grid());
  const auto kept = [&](std::size_t column) {
    return frame::rows(page(), newest).front().text(column);
  };
  EXPECT_EQ(kept(0), kSql);
  const std::string ordered = kept(1);
  EXPECT_TRUE(holds(ordered, "ORDER BY [a].[Zembra_WriteDate] DESC")) << ordered;
  EXPECT_FALSE(frame::rows(page(), ordered).empty());
  for (int i = 0; i < 25; ++i) draw(*grid());  // the same list keeps its row
  const auto written = [&] {
    return frame::firstText(page(), "select count(*) from Zembra_Temp_TarloTable");
  };
  EXPECT_EQ(written(), "1");
  for (int i = 0; i < 25; ++i)
    draw(*grid(std::string(kSql) + " and a.Query_ID <> " + std::to_string(i)));
  const std::string other = "select Query_ID,Query_Name from Zembra_Query_Main";
  auto table = grid(other);
  table->put("orderBy", "");
  draw(*table);
  EXPECT_EQ(kept(0), other);
  EXPECT_EQ(kept(1), "");
  EXPECT_EQ(written(), "20");
}

}  // namespace
}  // namespace tarlo::siblings
