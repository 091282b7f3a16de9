#include "host/upkeep/housekeeping.h"

#include <fmt/format.h>

#include <condition_variable>
#include <mutex>

#include "frame/data.h"
#include "host/site/log_text.h"
#include "text/date_text.h"
#include "text/sql_text.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::host {

namespace {

using std::chrono::milliseconds;
using text::sqlText;
using enum database::TableGroup;

// The only rights in this program that delete.
constexpr database::StatementRights kRights = {.reads = {DrawnGrids, OperationLog},
                                               .writes = {Server},
                                               .executes = false,
                                               .readsListedOnly = true,
                                               .deletes = {DrawnGrids, OperationLog, Server}};

database::StatementContext housekeepersContext() {
  database::StatementContext context;
  context.rights = kRights;
  return context;
}

void rest(const std::stop_token& stop) {
  std::mutex mutex;
  std::condition_variable_any ended;
  std::unique_lock lock(mutex);
  ended.wait_for(lock, stop, Housekeeping::kRest, [] { return false; });
}

}  // namespace

struct Housekeeping::Kind {
  std::string_view table;
  std::string_view key;
  bool isNumbered;           // the key is a number that grows with each row
  std::string_view inWords;  // in the log
};

Housekeeping::Housekeeping(const Config& config, database::Registry& databases,
                           std::shared_ptr<spdlog::logger> log,
                           std::function<Clock::time_point()> now)
    : config_(config),
      databases_(databases),
      log_(std::move(log)),
      now_(std::move(now)),
      context_(housekeepersContext()) {}

void Housekeeping::run(const std::stop_token& stop) {
  removed_.clear();
  ErrorState err;
  err.run([&] { runAll(stop); });
  if (!removed_.empty()) {
    std::string list;
    for (const auto& [inWords, count] : removed_) {
      list += fmt::format("{}{} {}", list.empty() ? "" : ", ", count, inWords);
    }
    log_->info("housekeeping removed {}", list);
  }
  if (err.failed()) log_->warn("housekeeping ended early: {}", logText(err.description()));
}

void Housekeeping::runAll(const std::stop_token& stop) {
  constexpr Kind kGrids{"Zembra_Temp_TarloTable", "TarloTable_ID", true, "rows of drawn lists"};
  constexpr Kind kLog{"Zembra_OperateLog", "OperateLog_ID", true, "rows of the operation log"};
  constexpr Kind kLinks{"Tarlo_SignInLink", "TokenHash", false, "sign-in links"};
  constexpr Kind kTokens{"Tarlo_ApiToken", "TokenHash", false, "API tokens"};
  const std::string ended = "ExpiresAt<" + sqlText(timeText(config_.endedLife));
  removeWhere(kLinks, ended, stop);
  removeWhere(kTokens, ended, stop);
  removeAged(kGrids, config_.drawnGridLife, stop);
  removeAged(kLog, config_.operationLogLife, stop);
}

// The rows hold no date, so their age is that of a mark that was set behind them.
void Housekeeping::removeAged(const Kind& kind, milliseconds life, const std::stop_token& stop) {
  if (life.count() == 0) return;
  noteAge(kind, life);
  const std::string passed =
      fmt::format("TableName={} and NotedAt<={}", sqlText(kind.table), sqlText(timeText(life)));
  const Variant last = valueOf("select max(LastID) from Tarlo_AgeMark where " + passed);
  if (last.isNull()) return;
  removeWhere(kind, fmt::format("{}<={}", kind.key, variant::spliced(last)), stop);
  // A round that was stopped needs them again.
  if (!stop.stop_requested()) execute("delete from Tarlo_AgeMark where " + passed);
}

// A mark says how many rows there are by now. A few dozen in a life are exact enough.
void Housekeeping::noteAge(const Kind& kind, milliseconds life) {
  constexpr int kMarksInALife = 24;
  const std::string table = sqlText(kind.table);
  const Variant last = valueOf(fmt::format("select max({}) from {}", kind.key, kind.table));
  if (last.isNull()) return;
  const Variant newer = valueOf(
      fmt::format("select count(*) from Tarlo_AgeMark where TableName={} and (LastID>={} or "
                  "NotedAt>{})",
                  table, variant::spliced(last), sqlText(timeText(life / kMarksInALife))));
  if (variant::toInt32(newer) > 0) return;
  execute(fmt::format("insert into Tarlo_AgeMark (TableName,LastID,NotedAt) values ({},{},{})",
                      table, variant::spliced(last), sqlText(timeText(milliseconds(0)))));
}

void Housekeeping::removeWhere(const Kind& kind, const std::string& condition,
                               const std::stop_token& stop) {
  while (!stop.stop_requested()) {
    const std::size_t step = removeStep(kind, condition);
    if (step > 0) removed_[kind.inWords] += step;
    if (step < kStep) return;
    rest(stop);
  }
}

// The rows are chosen first and then removed by their keys, which every engine understands.
std::size_t Housekeeping::removeStep(const Kind& kind, const std::string& condition) {
  database::Lease connection = databases_.find(config_.database).borrow();
  connection->setContext(&context_);
  const frame::Rows rows(
      connection
          ->open(fmt::format("select top {} {} from {} where {}{}", kStep, kind.key, kind.table,
                             condition,
                             kind.isNumbered ? fmt::format(" order by {}", kind.key) : ""))
          ->getRows());
  if (rows.empty()) return 0;
  std::string keys;
  for (const frame::Row row : rows) {
    keys += keys.empty() ? "" : ",";
    keys += kind.isNumbered ? row.text(0) : sqlText(row.text(0));
  }
  connection->execute(
      fmt::format("delete from {} where {} in ({}) and {}", kind.table, kind.key, keys, condition));
  return rows.size();
}

Variant Housekeeping::valueOf(const std::string& sql) {
  database::Lease connection = databases_.find(config_.database).borrow();
  connection->setContext(&context_);
  return connection->open(sql)->value(0);
}

void Housekeeping::execute(const std::string& sql) {
  database::Lease connection = databases_.find(config_.database).borrow();
  connection->setContext(&context_);
  connection->execute(sql);
}

// UTC, as the sign-in writes its times.
std::string Housekeeping::timeText(milliseconds before) const {
  return text::dateTimeText(text::calendarAt(std::chrono::floor<milliseconds>(now_() - before)));
}

}  // namespace tarlo::host
