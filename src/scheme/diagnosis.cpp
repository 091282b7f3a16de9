#include "scheme/diagnosis.h"

#include <chrono>
#include <vector>

#include "compile/grammar.h"
#include "database/statement_check.h"
#include "frame/data.h"
#include "frame/statement_scope.h"
#include "metadata/dictionary.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using compile::Definition;
using database::Fault;
using database::StatementCheck;

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
  return text::joined({parts[0], ",", parts[1], ",", parts[2], ",-1"});
}

std::vector<Trial> trialsOf(const Definition& whole) {
  std::vector<Trial> trials;
  const auto add = [&](std::string where, Definition part) {
    part.mainTable = whole.mainTable;
    part.relations = whole.relations;
    trials.push_back({std::move(part), std::move(where)});
  };
  add("主表与关联", {});
  for (const std::string_view item : text::split(whole.computed, ";")) {
    add(text::joined({"计算字段“", item.substr(0, item.find(':')), "”"}),
        {.computed = std::string(item)});
  }
  int number = 0;
  for (const std::string_view condition : compile::filterItems(whole.filter)) {
    add("第 " + std::to_string(++number) + " 个过滤条件",
        {.computed = whole.computed, .filter = alone(condition)});
  }
  number = 0;
  for (const std::string_view statistic : compile::statisticsItems(whole.statistics)) {
    // A field without a function stands only beside its grouping.
    const bool isGrouped = statistic.ends_with(",6");
    add("第 " + std::to_string(++number) + " 个统计项",
        {.computed = whole.computed,
         .statistics = std::string(statistic),
         .grouping = std::string(isGrouped ? statistic.substr(0, statistic.find(',')) : "")});
  }
  if (!whole.grouping.empty()) {
    add("分组",
        {.computed = whole.computed, .statistics = whole.statistics, .grouping = whole.grouping});
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

std::string_view sentenceFor(Fault fault) {
  switch (fault) {
    case Fault::None:
      return "";
    case Fault::Syntax:
      return "写法有误，请检查括号、引号和运算符是否完整。";
    case Fault::Limit:
      return "内容过长或嵌套过深，请减少项目。";
    case Fault::Name:
      return "用到了不存在或含义不明的字段或函数。";
    case Fault::Kind:
      return "数据类型不符（文字、数字和日期不能这样混用），或者除数为零。";
    case Fault::Rule:
      return "有统计时，没有用统计函数的项目都应列入分组。";
    case Fault::Unsupported:
      return "用到了系统不支持的写法。";
    case Fault::Forbidden:
      return "用到了不允许查询的数据表。";
    case Fault::Running:
      return "运行时被数据库拒绝，常见原因是文字不能换算成数字或日期，或者除数为零。";
    case Fault::Time:
      return "运行时间过长，请增加过滤条件缩小范围。";
  }
  return "";
}

bool isNameByte(char c) {
  return text::isLetterOrDigit(c) || c == '_' || (c & 0x80) != 0;
}

// The name that begins at the offset, dots and brackets included; "" for none.
std::string_view nameAt(std::string_view statement, std::size_t offset) {
  if (offset >= statement.size()) return {};
  std::size_t end = offset;
  while (end < statement.size()) {
    if (statement[end] == '[') {
      const std::size_t close = statement.find(']', end);
      if (close == std::string_view::npos) return {};
      end = close + 1;
    } else if (isNameByte(statement[end]) || statement[end] == '.') {
      ++end;
    } else {
      break;
    }
  }
  return statement.substr(offset, end - offset);
}

std::string shownName(Page& page, std::string_view name, const Definition& definition) {
  if (name.empty()) return "";
  const std::string written = definition.computed + "\n" + definition.filter;
  if (written.find(name) != std::string::npos) return std::string(name);
  return metadata::fieldCaption(page, name).value_or("");
}

// A fault of a statement as a sentence. An unknown name is told by its display name, or as the
// designer wrote it; names that are neither are left out.
std::string wordsFor(Page& page, const StatementCheck& check, std::string_view statement,
                     const Definition& definition) {
  const std::string sentence(sentenceFor(check.fault));
  if (check.fault != Fault::Name) return sentence;
  const std::string name = shownName(page, nameAt(statement, check.offset), definition);
  return name.empty() ? sentence : "“" + name + "”不存在或含义不明，请检查字段和函数的名称。";
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
