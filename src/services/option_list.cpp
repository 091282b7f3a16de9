#include "services/option_list.h"

namespace tarlo::services {
namespace {

constexpr std::string_view kValueMark = "<<<<<<";
constexpr std::string_view kOptionMark = ">>>>>>";

}  // namespace

void OptionList::add(std::string_view label, std::string_view value) {
  text_.append(label).append(kValueMark).append(value).append(kOptionMark);
}

std::string_view OptionList::joined() const {
  return std::string_view(text_).substr(0, text_.empty() ? 0 : text_.size() - kOptionMark.size());
}

}  // namespace tarlo::services
