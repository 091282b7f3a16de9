// Translation of a compiled statement of 300 columns: cold, and found by its shape, beside what
// SQLite itself takes to prepare the result.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <stdexcept>

#include "compile/operations.h"
#include "dictionary.h"
#include "tsql/lex/shape.h"
#include "tsql/translation.h"

namespace tarlo::bench {
namespace {

struct Fixture {
  Dictionary dictionary{false};
  std::string statement =
      compile::getQuery_None(dictionary.page(), Variant("1"), Variant(kRelations)).text();
  database::Lease connection = dictionary.databases().find(dictionary.connectionString()).borrow();
};

Fixture& fixture() {
  static Fixture instance;
  return instance;
}

void translateCold(benchmark::State& state) {
  auto& catalogue = fixture().connection->catalogue();
  for (auto _ : state) benchmark::DoNotOptimize(tsql::translate(fixture().statement, catalogue));
}
BENCHMARK(translateCold);

void findShape(benchmark::State& state) {
  tsql::Shape shape;
  for (auto _ : state) {
    if (!tsql::shapeOf(fixture().statement, shape))
      throw std::runtime_error("the statement does not lex");
    benchmark::DoNotOptimize(std::hash<std::string_view>{}(shape.key));
  }
}
BENCHMARK(findShape);

void openCached(benchmark::State& state) {
  for (auto _ : state)
    benchmark::DoNotOptimize(fixture().connection->open(fixture().statement)->fieldCount());
}
BENCHMARK(openCached);

void sqlitePrepare(benchmark::State& state) {
  const auto translation = tsql::translate(fixture().statement, fixture().connection->catalogue());
  sqlite3* handle = openRaw(fixture().dictionary.file());
  sqlite3_create_collation(handle, "TSQL", SQLITE_UTF8, nullptr,
                           [](void*, int, const void*, int, const void*) { return 0; });
  for (auto _ : state) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, translation.steps[0].text.c_str(), -1, &statement, nullptr) !=
        SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(handle));
    }
    sqlite3_finalize(statement);
  }
  sqlite3_close(handle);
}
BENCHMARK(sqlitePrepare);

}  // namespace
}  // namespace tarlo::bench

BENCHMARK_MAIN();
