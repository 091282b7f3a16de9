#pragma once
// Options as the texts that the browser's combo boxes take.

#include <string>
#include <string_view>

#include "frame/page.h"
#include "services/operations.h"

namespace tarlo::services {

// The rows of a statement, value and caption, as XML for a combo box, encoded for an attribute in
// double quotes; a row without a caption is left out. "" with no rows and for a refused statement;
// never raises.
std::string comboBoxOptions(Page& page, std::string_view statement);
// The same for a statement that was stored, or that a designer has put together.
std::string storedOptions(Page& page, std::string_view statement);

// Options as one text: "label<<<<<<value", joined by ">>>>>>". Nothing is escaped, so a label or
// value with a marker in it breaks the list, as it does in every page that builds one by hand.
class OptionList {
 public:
  void add(std::string_view label, std::string_view value);
  bool empty() const { return text_.empty(); }
  // With ">>>>>>" behind every option, the last as well.
  const std::string& text() const { return text_; }
  // Without the last one.
  std::string_view joined() const;

 private:
  std::string text_;
};

}  // namespace tarlo::services
