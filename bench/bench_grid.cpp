// A page of a grid over 100 000 schemes: the first one as it is drawn, and what the browser asks
// for later. Every request is meant to stay below 50 ms.

#include <benchmark/benchmark.h>

#include <fmt/format.h>

#include <unistd.h>

#include <filesystem>

#include "database/script.h"
#include "embedded_schema.h"
#include "frame/data.h"
#include "frame/local_page.h"
#include "siblings/grid_rows.h"

namespace {

using namespace tarlo;

constexpr int kRows = 100'000;
constexpr const char* kSql =
    "select a.Query_ID as queryid,a.Query_Name as queryname,b.TD_Name as dicname,"
    "ss =  CASE a.Query_System WHEN 0 THEN '用户' WHEN 1 THEN '系统' END,a.Query_Desc as querydesc,"
    "a.Zembra_WriteDate as writedate from Zembra_Query_Main as a , Zembra_Dict_TableDir as b "
    "where a.Zembra_Flag <> 0 and a.Query_Dic=b.Zembra_ID and Query_IsDataAlert = 0 "
    "and ('orvane'='orvane')";

void fill(database::Connection& connection) {
  connection.allowDdl(true);
  for (const char* name : {"tables/10_schemes.sql", "tables/20_dictionary.sql"}) {
    database::runScript(connection, embedded::schema::find(name));
  }
  database::Connection::Transaction transaction(connection);
  for (int i = 1; i <= 20; ++i) {
    connection.execute(fmt::format(
        "insert into Zembra_Dict_TableDir (TD_Name,Zembra_Flag) values ('目录{}',1)", i));
  }
  for (int i = 1; i <= kRows; ++i) {
    connection.execute(
        fmt::format("insert into Zembra_Query_Main "
                    "(Query_Name,Query_Desc,Query_System,Query_Dic,Zembra_WriteDate) "
                    "values ('方案{}','说明 {} 的方案',{},{},DATEADD(minute,{},'2024-01-01'))",
                    i * 7919 % kRows, i, i % 2, i % 20 + 1, i));
  }
  transaction.commit();
}

struct Fixture {
  Fixture()
      : file(std::filesystem::temp_directory_path() / fmt::format("bench_grid_{}.db", getpid())),
        page(databases, "sqlite:" + file.string()) {
    database::OpenOptions options;
    options.create = true;
    const auto database = database::openDatabase("sqlite:" + file.string(), options);
    fill(*database->borrow());
  }
  ~Fixture() { std::filesystem::remove(file); }

  std::filesystem::path file;
  database::Registry databases;
  frame::LocalPage page;
};

Page& page() {
  static Fixture fixture;
  return fixture.page.page();
}

siblings::GridState& grid() {
  static const std::unique_ptr<siblings::GridState> state = [] {
    siblings::GridDefinition definition;
    definition.sql = kSql;
    definition.orderBy = " a.Zembra_WriteDate DESC";
    definition.captions = {"查询方案", "目录", "类别", "方案说明", "创建时间"};
    auto connection = frame::borrowConnection(page());
    return std::make_unique<siblings::GridState>(
        page(), definition,
        std::make_shared<siblings::PreparedGrid>(definition, connection->catalogue()));
  }();
  return *state;
}

// `counted`: the rows of the view are known from an earlier page.
void run(benchmark::State& state, const siblings::GridRequest& request, bool counted) {
  siblings::GridState& list = grid();
  for (auto _ : state) {
    if (!counted) list.forgetCounts();
    benchmark::DoNotOptimize(siblings::readRows(page(), list, request));
  }
}

siblings::GridRequest at(std::int64_t number) {
  siblings::GridRequest request;
  request.page = number;
  return request;
}

siblings::GridRequest searching(std::string text) {
  siblings::GridRequest request;
  request.filter.search = std::move(text);
  return request;
}

siblings::GridRequest sorted(std::size_t column) {
  siblings::GridRequest request;
  request.sort = {column, false};
  return request;
}

BENCHMARK_CAPTURE(run, first_page, at(1), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, next_page, at(2), true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, page_5000, at(5000), true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, search, searching("方案777"), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, search_for_nothing, searching("没有"), false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, sort_by_name, sorted(2), true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(run, sort_by_date, sorted(6), true)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
