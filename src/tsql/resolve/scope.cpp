#include "tsql/resolve/scope.h"

#include <fmt/format.h>

#include "text/fold.h"
#include "tsql/error.h"

namespace tarlo::tsql {
namespace {

std::string spelled(const ast::ColumnRef& ref) {
  return ref.table.empty() ? ref.name : fmt::format("{}.{}", ref.table, ref.name);
}

}  // namespace

Source::Source(std::string exposedName, const Table& table)
    : exposedName_(std::move(exposedName)), table_(&table) {}

Source::Source(std::string exposedName, std::vector<ResultColumn> columns)
    : exposedName_(std::move(exposedName)), columns_(std::move(columns)) {}

std::size_t Source::size() const {
  return table_ ? table_->columns.size() : columns_.size();
}

const std::string& Source::columnName(std::size_t index) const {
  return table_ ? table_->columns[index].name : columns_[index].title;
}

Type Source::columnType(std::size_t index) const {
  return table_ ? table_->columns[index].type : columns_[index].type;
}

int Source::find(std::string_view columnName) const {
  if (table_) return table_->find(columnName);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    if (text::equalsNoCase(columns_[i].title, columnName)) return static_cast<int>(i);
  }
  return -1;
}

void Scope::add(Source source, Position position) {
  for (const Source& other : sources_) {
    if (text::equalsNoCase(other.exposedName(), source.exposedName())) {
      throw StatementError(Refusal::Name, position,
                           fmt::format("table {} stands twice in FROM", source.exposedName()));
    }
  }
  sources_.push_back(std::move(source));
}

void Scope::show(std::size_t begin, std::size_t end) {
  visibleBegin_ = begin;
  visibleEnd_ = end;
}

Type Scope::resolve(ast::ColumnRef& ref, Position position) const {
  int level = 0;
  for (const Scope* scope = this; scope; scope = scope->outer_, ++level) {
    if (!scope->resolveHere(ref, position)) continue;
    ref.level = level;
    return scope->sources_[static_cast<std::size_t>(ref.source)].columnType(
        static_cast<std::size_t>(ref.column));
  }
  throw StatementError(Refusal::Name, position, fmt::format("unknown column {}", spelled(ref)));
}

bool Scope::resolveHere(ast::ColumnRef& ref, Position position) const {
  bool found = false;
  for (std::size_t i = visibleBegin_; i < visibleEnd_; ++i) {
    const Source& source = sources_[i];
    if (!ref.table.empty() && !text::equalsNoCase(source.exposedName(), ref.table)) continue;
    const int column = source.find(ref.name);
    if (column < 0) continue;
    if (found) {
      throw StatementError(Refusal::Name, position,
                           fmt::format("column {} is ambiguous", spelled(ref)));
    }
    found = true;
    ref.source = static_cast<int>(i);
    ref.column = column;
  }
  return found;
}

std::size_t Scope::findSource(std::string_view exposedName, Position position) const {
  for (std::size_t i = visibleBegin_; i < visibleEnd_; ++i) {
    if (text::equalsNoCase(sources_[i].exposedName(), exposedName)) return i;
  }
  throw StatementError(Refusal::Name, position,
                       fmt::format("table {} does not stand in FROM", exposedName));
}

}  // namespace tarlo::tsql
