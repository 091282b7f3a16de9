#pragma once
// Columns of a scheme as the lists choose them: by their 1-based number in the scheme's result.

#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::control {

// Numbers that a list of columns posts, without the word "undefined" that its widget may add.
std::vector<std::string> chosenColumns(std::string_view posted);

// Titles and select expressions of a scheme.
class SchemeColumns {
 public:
  SchemeColumns() = default;  // has no column
  // Raises what getQueryAllTitle and getQueryAllCal raise.
  SchemeColumns(Page& page, const std::string& scheme);

  // `,expression as [title]` for every number. A number that is no column's raises error 9, text
  // that is no number error 13.
  std::string selectItem(std::string_view number) const;

 private:
  Variant titles_;
  Variant expressions_;
};

// Element `number` of an array of texts. Error 9 beyond its bounds, 13 for text that is no number.
std::string textAt(const Variant& array, std::string_view number);

// The statement from its first " from " on; the whole of one without. Error 94 for Null.
std::string fromPart(const Variant& statement);

}  // namespace tarlo::control
