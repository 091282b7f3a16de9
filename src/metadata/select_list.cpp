#include "metadata/select_list.h"

#include "text/pieces.h"
#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::metadata {
namespace {

using text::joined;
using text::kPartMark;

constexpr std::ptrdiff_t kBehindSelect = 8;  // "select " is seven characters

std::string_view withoutComma(std::string_view text) {
  if (text.starts_with(',')) text.remove_prefix(1);
  return text;
}

// Without the first and the last character. A single character raises error 5.
std::string_view inner(std::string_view name) {
  return variant::mid(name, 2, static_cast<std::ptrdiff_t>(variant::len(name)) - 2);
}

std::string aliasOf(std::string_view title) {
  return joined({" as [", title, "]"});
}

// The first operand of an expression without blanks, free of the functions around it.
std::string_view firstOperand(std::string_view item) {
  // The order of the cuts makes no difference to where the first of these stands, and is kept.
  for (const char end : {'+', '-', '*', '/', ')'}) item = item.substr(0, item.find(end));
  const Pieces pieces = text::split(item, "(");
  return pieceOf(pieces, pieces.size() - 1);
}

}  // namespace

std::string_view pieceOf(const Pieces& pieces, std::size_t index) {
  if (index >= pieces.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return pieces[index];
}

std::string_view withoutBrackets(std::string_view name) {
  return name.starts_with('[') ? inner(name) : name;
}

QualifiedName qualifiedName(std::string_view text) {
  const Pieces names = text::split(text, ".");
  const std::string_view table = pieceOf(names, 0);
  const std::string_view column = pieceOf(names, 1);
  if (!table.starts_with('[')) return {std::string(table), std::string(column)};
  return {std::string(inner(table)), std::string(inner(column))};
}

std::string_view selectListOf(std::string_view statement) {
  const auto from = static_cast<std::ptrdiff_t>(variant::inStr(statement, " from "));
  return variant::mid(variant::left(statement, from), kBehindSelect);
}

std::vector<std::string> expressionsOf(std::string list, std::span<const std::string> titles) {
  for (const std::string& title : titles) {
    const Pieces parts = text::split(list, aliasOf(title));
    list = joined({pieceOf(parts, 0), kPartMark, pieceOf(parts, 1)});
  }
  std::vector<std::string> expressions;
  for (std::string_view item : text::split(list, kPartMark)) {
    expressions.emplace_back(withoutComma(item));
  }
  return expressions;
}

std::vector<QualifiedName> columnsOf(std::string list, std::span<const std::string> titles) {
  for (const std::string& title : titles) {
    const Pieces parts = text::split(list, aliasOf(title));
    const std::string_view before = withoutComma(pieceOf(parts, 0));
    // Without the alias the list stays as it was, its first comma included.
    if (parts.size() > 1) list = joined({before, kPartMark, withoutComma(parts[1])});
  }
  std::string_view rest = text::trim(list);
  if (rest.ends_with(kPartMark)) rest.remove_suffix(kPartMark.size());
  std::vector<QualifiedName> names;
  for (std::string_view item : text::split(rest, kPartMark)) names.push_back(qualifiedName(item));
  return names;
}

std::vector<QualifiedName> firstOperandsOf(std::string_view statement) {
  std::vector<QualifiedName> names;
  for (std::string_view item : text::split(pieceOf(text::split(statement, " "), 1), ",")) {
    names.push_back(qualifiedName(firstOperand(item)));
  }
  return names;
}

Variant pairArray(const std::vector<QualifiedName>& names) {
  Array pairs({2, static_cast<std::ptrdiff_t>(names.size())});
  std::ptrdiff_t row = 0;
  for (const QualifiedName& name : names) {
    pairs.at(1, ++row) = name.table;
    pairs.at(2, row) = name.column;
  }
  return pairs;
}

}  // namespace tarlo::metadata
