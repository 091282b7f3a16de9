#include "scheme/diagnosis.h"

#include <chrono>
#include <functional>
#include <vector>

#include "compile/grammar.h"
#include "database/statement_check.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "scheme/diagnosis_words.h"
#include "scheme/step_fields.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using compile::Definition;
using database::Fault;
using database::StatementCheck;
using variant::spliced;

constexpr int kMostTrials = 40;
constexpr auto kMostTime = std::chrono::seconds(3);
constexpr auto kMostTrialTime = std::chrono::seconds(1);

// A definition with one part only, and what the designer calls that part.
struct Trial {
  Definition definition;
  std::string where;
};

// A condition without its word of logic, which would ask for a further one.
std::string alone(std::string_view condition) {
  const auto parts = text::split(condition, ",");
  if (parts.size() != 4) return std::string(condition);
  return std::string(parts[0]) + "," + std::string(parts[1]) + "," + std::string(parts[2]) + ",-1";
}

std::vector<Trial> trialsOf(const Definition& whole) {
  Definition bare;
  bare.mainTable = whole.mainTable;
  bare.relations = whole.relations;
  std::vector<Trial> trials = {{bare, "主表与关联"}};
  const auto add = [&](std::string where, const std::function<void(Definition&)>& change) {
    Trial trial{bare, std::move(where)};
    change(trial.definition);
    trials.push_back(std::move(trial));
  };
  for (const std::string_view item : text::split(whole.computed, ";")) {
    add("计算字段“" + std::string(item.substr(0, item.find(':'))) + "”",
        [&](Definition& part) { part.computed = item; });
  }
  int number = 0;
  for (const std::string_view condition : text::split(whole.filter, text::kPartMark)) {
    add("第 " + std::to_string(++number) + " 个过滤条件", [&](Definition& part) {
      part.computed = whole.computed;
      part.filter = alone(condition);
    });
  }
  number = 0;
  for (const std::string_view statistic : text::split(whole.statistics, text::kPartMark)) {
    add("第 " + std::to_string(++number) + " 个统计项", [&](Definition& part) {
      part.computed = whole.computed;
      part.statistics = statistic;
      // A field without a function stands only beside its grouping.
      if (statistic.ends_with(",6")) part.grouping = statistic.substr(0, statistic.find(','));
    });
  }
  if (!whole.grouping.empty()) {
    add("分组", [&](Definition& part) {
      part.computed = whole.computed;
      part.statistics = whole.statistics;
      part.grouping = whole.grouping;
    });
  }
  return trials;
}

// What is wrong with one part; nothing compiled is a fault of its syntax.
StatementCheck check(Page& page, const Definition& part, bool isRun) {
  ErrorState err;
  std::string statement;
  err.run([&] { statement = compile::compileDefinition(page, part); });
  if (err.failed()) return {Fault::Syntax, 0};
  const frame::StatementScope scope(page, frame::kDesignersRights);
  database::Lease connection = frame::borrowConnection(page);
  connection->setCommandTimeout(kMostTrialTime);
  return isRun ? database::checkRun(*connection, statement)
               : database::checkText(*connection, statement);
}

}  // namespace

Diagnosis diagnose(Page& page, const Definition& definition, const std::string& statement) {
  const StatementCheck whole = [&] {
    database::Lease connection = frame::borrowConnection(page);
    return database::checkText(*connection, statement);
  }();
  // The front end found nothing: it was the engine that refused it.
  const bool isRun = whole.fault == Fault::None;
  const auto end = std::chrono::steady_clock::now() + kMostTime;
  int tried = 0;
  for (const Trial& trial : trialsOf(definition)) {
    if (++tried > kMostTrials || std::chrono::steady_clock::now() > end) break;
    const StatementCheck part = check(page, trial.definition, isRun);
    if (part.fault == Fault::None) continue;
    ErrorState err;
    std::string text;
    err.run([&] { text = compile::compileDefinition(page, trial.definition); });
    return {trial.where, wordsFor(page, part, text, definition)};
  }
  const StatementCheck shown = isRun ? StatementCheck{Fault::Running, 0} : whole;
  return {"", wordsFor(page, shown, statement, definition)};
}

}  // namespace tarlo::scheme
