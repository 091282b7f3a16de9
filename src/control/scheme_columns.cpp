#include "control/scheme_columns.h"

#include "metadata/operations.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::control {

std::vector<std::string> chosenColumns(std::string_view posted) {
  std::string list = text::replace(posted, ",undefined,", ",");
  for (const std::string_view word : {",undefined", "undefined,", "undefined"}) {
    list = text::replace(list, word, "");
  }
  std::vector<std::string> numbers;
  for (const std::string_view number : text::split(list, ",")) numbers.emplace_back(number);
  return numbers;
}

SchemeColumns::SchemeColumns(Page& page, const std::string& scheme)
    : titles_(metadata::getQueryAllTitle(page, Variant(scheme), false)),
      expressions_(metadata::getQueryAllCal(page, Variant(scheme), false)) {}

std::string SchemeColumns::selectItem(std::string_view number) const {
  return "," + textAt(expressions_, number) + " as [" + textAt(titles_, number) + "]";
}

std::string textAt(const Variant& array, std::string_view number) {
  if (!array.isArray()) throw RuntimeError(ErrorNumber::TypeMismatch, "the scheme's columns");
  return variant::spliced(array.array().at(variant::toInt32(Variant(number))));
}

std::string fromPart(const Variant& statement) {
  const std::string text = variant::toText(statement);
  const auto from = text.find(" from ");
  return from == std::string::npos ? text : text.substr(from);
}

}  // namespace tarlo::control
