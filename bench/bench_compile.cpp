// One dictionary look-up and a whole compile, each beside its floors in the same run.

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <stdexcept>

#include "compile/operations.h"
#include "dictionary.h"
#include "floor.h"
#include "metadata/operations.h"

namespace tarlo::bench {
namespace {

Dictionary& dictionary(bool businessTables) {
  static Dictionary small(false);
  static Dictionary large(true);
  return businessTables ? large : small;
}

void lookUpFloor(benchmark::State& state) {
  sqlite3* handle = openRaw(dictionary(false).file());
  {
    FloorStatement statement(handle, fieldNameSql());
    int i = 0;
    for (auto _ : state) {
      const auto rows = statement.rows(100 + i++ % kFieldsPerTable);
      if (rows.size() != 1) throw std::runtime_error("the floor found no row");
    }
  }
  sqlite3_close(handle);
}
BENCHMARK(lookUpFloor);

void lookUp(benchmark::State& state) {
  Page& page = dictionary(false).page();
  int i = 0;
  for (auto _ : state) {
    const Variant rows =
        metadata::getFieldName_Query(page, Variant(std::int32_t{100 + i++ % kFieldsPerTable}));
    if (!rows.isArray()) throw std::runtime_error("the look-up found no row");
  }
}
BENCHMARK(lookUp);

void compileFloor(benchmark::State& state) {
  sqlite3* handle = openRaw(dictionary(state.range(0) != 0).file());
  int lookUps = 0;
  {
    CompileFloor floor(handle);
    for (auto _ : state) lookUps = floor.run();
  }
  sqlite3_close(handle);
  state.counters["lookUps"] = lookUps;
}
BENCHMARK(compileFloor)->ArgName("businessTables")->Arg(0)->Arg(1);

void joinedFloor(benchmark::State& state) {
  sqlite3* handle = openRaw(dictionary(state.range(0) != 0).file());
  {
    FloorStatement statement(handle, joinedSql());
    for (auto _ : state) {
      if (statement.rows(1).size() != 300) throw std::runtime_error("the joined read is not whole");
    }
  }
  sqlite3_close(handle);
}
BENCHMARK(joinedFloor)->ArgName("businessTables")->Arg(0)->Arg(1);

void compile(benchmark::State& state) {
  Page& page = dictionary(state.range(0) != 0).page();
  std::size_t length = 0;
  for (auto _ : state) {
    length = compile::getQuery_None(page, Variant("1"), Variant(kRelations)).text().size();
  }
  if (length < 10'000) throw std::runtime_error("the compile is not the whole statement");
  state.counters["bytes"] = static_cast<double>(length);
}
BENCHMARK(compile)->ArgName("businessTables")->Arg(0)->Arg(1);

}  // namespace
}  // namespace tarlo::bench

BENCHMARK_MAIN();
