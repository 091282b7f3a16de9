#include "metadata/select_list.h"

#include "metadata/statement_text.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"
#include "variant/text.h"

namespace tarlo::metadata {
namespace {

using Pieces = std::vector<std::string_view>;

constexpr std::ptrdiff_t kBehindSelect = 8;  // "select " is seven characters

std::string_view withoutComma(std::string_view text) {
  if (text.starts_with(',')) text.remove_prefix(1);
  return text;
}

// Without the first and the last character. A single character raises error 5.
std::string_view inner(std::string_view name) {
  return variant::mid(name, 2, static_cast<std::ptrdiff_t>(variant::len(name)) - 2);
}

Array pairsFor(const Pieces& items) {
  return Array({2, static_cast<std::ptrdiff_t>(items.size())});
}

std::string aliasOf(const Variant& title) {
  return joined({" as [", variant::spliced(title), "]"});
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

void storePair(Array& pairs, std::ptrdiff_t row, std::string_view qualified) {
  const Pieces names = text::split(qualified, ".");
  const std::string_view table = pieceOf(names, 0);
  const std::string_view column = pieceOf(names, 1);
  const bool isBracketed = table.starts_with('[');
  pairs.at(1, row) = isBracketed ? inner(table) : table;
  pairs.at(2, row) = isBracketed ? inner(column) : column;
}

std::string_view selectListOf(std::string_view statement) {
  const auto from = static_cast<std::ptrdiff_t>(variant::inStr(statement, " from "));
  return variant::mid(variant::left(statement, from), kBehindSelect);
}

Variant expressionsOf(std::string list, const Variant& titles) {
  const std::ptrdiff_t count = titles.isArray() ? titles.array().upperBound() : 0;
  for (std::ptrdiff_t k = 1; k <= count; ++k) {
    const std::string alias = aliasOf(titles.array().at(k));
    const Pieces parts = text::split(list, alias);
    list = joined({pieceOf(parts, 0), kListMark, pieceOf(parts, 1)});
  }
  const Pieces items = text::split(list, kListMark);
  Array expressions({static_cast<std::ptrdiff_t>(items.size())});
  for (std::size_t i = 0; i < items.size(); ++i) {
    expressions.elements()[i + 1] = withoutComma(items[i]);
  }
  return expressions;
}

Variant columnsOf(std::string list, const Variant& titles) {
  const std::ptrdiff_t count = titles.isArray() ? titles.array().upperBound() : 0;
  for (std::ptrdiff_t k = 1; k <= count; ++k) {
    const std::string alias = aliasOf(titles.array().at(k));
    const Pieces parts = text::split(list, alias);
    const std::string_view before = withoutComma(pieceOf(parts, 0));
    // Without the alias the list stays as it was, its first comma included.
    if (parts.size() > 1) list = joined({before, kListMark, withoutComma(parts[1])});
  }
  std::string_view rest = text::trim(list);
  if (rest.ends_with(kListMark)) rest.remove_suffix(kListMark.size());
  const Pieces items = text::split(rest, kListMark);
  Array pairs = pairsFor(items);
  for (std::size_t i = 0; i < items.size(); ++i) {
    storePair(pairs, static_cast<std::ptrdiff_t>(i) + 1, items[i]);
  }
  return pairs;
}

Variant firstOperandsOf(std::string_view statement) {
  const Pieces items = text::split(pieceOf(text::split(statement, " "), 1), ",");
  Array pairs = pairsFor(items);
  for (std::size_t i = 0; i < items.size(); ++i) {
    storePair(pairs, static_cast<std::ptrdiff_t>(i) + 1, firstOperand(items[i]));
  }
  return pairs;
}

}  // namespace tarlo::metadata
