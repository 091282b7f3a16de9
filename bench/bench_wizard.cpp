// The preview and the save of a scheme over ten tables, request to response, beside the compile
// that is in both. Without the extras of the preview, and with them.

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <stdexcept>

#include "compile/operations.h"
#include "database/script.h"
#include "dictionary.h"
#include "embedded_schema.h"
#include "frame/data.h"
#include "scheme/operations.h"

namespace tarlo::bench {
namespace {

constexpr const char* kTables[] = {"tables/10_schemes.sql", "tables/50_services.sql"};

// A dictionary whose tables exist, with the tables that schemes are kept in beside them.
Dictionary& dictionary() {
  static Dictionary instance(true);
  static const bool isReady = [] {
    auto connection = frame::borrowConnection(instance.page());
    connection->setContext(nullptr);
    connection->allowDdl(true);
    for (const char* name : kTables) {
      database::runScript(*connection, embedded::schema::find(name));
    }
    return true;
  }();
  static_cast<void>(isReady);
  return instance;
}

class Request : public frame::LocalPage {
 public:
  Request(const std::string& name, bool hasExtras)
      : LocalPage(dictionary().databases(), dictionary().connectionString()) {
    application()["designerExtras"] = hasExtras;
    session()["usrid"] = 1;
    request() = {{"TableName", "1"},   {"step0Multi", kRelations}, {"Mulrelation", "0"},
                 {"step4Name", name},  {"step4Sys", "0"},          {"step4Dic", "1"},
                 {"step4Memo", "memo"}};
  }
};

void compileAlone(benchmark::State& state) {
  Page& page = dictionary().page();
  for (auto _ : state) {
    benchmark::DoNotOptimize(compile::getQuery_None(page, Variant("1"), Variant(kRelations)));
  }
}
BENCHMARK(compileAlone)->Unit(benchmark::kMillisecond);

void preview(benchmark::State& state) {
  for (auto _ : state) {
    Request local("", state.range(0) != 0);
    scheme::previewSearchdlg(local.page());
    if (local.written().find("查询方案字段结构如下") == std::string::npos) {
      throw std::runtime_error("refused: " + local.written());
    }
  }
}
BENCHMARK(preview)->ArgName("extras")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void save(benchmark::State& state) {
  static int number = 0;
  for (auto _ : state) {
    Request local(fmt::format("scheme {}", ++number), true);
    scheme::addSearch(local.page());
    if (local.written().find("switchStep") == std::string::npos) {
      throw std::runtime_error("refused: " + local.written());
    }
  }
}
BENCHMARK(save)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarlo::bench

BENCHMARK_MAIN();
