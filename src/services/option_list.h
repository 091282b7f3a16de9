#pragma once
// The options of a combo box as one text: "label<<<<<<value", joined by ">>>>>>". Nothing is
// escaped, so a label or value with a marker in it breaks the list, as it does in every page that
// builds one by hand.

#include <string>
#include <string_view>

namespace tarlo::services {

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
