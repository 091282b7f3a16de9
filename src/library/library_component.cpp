#include "library/library_component.h"

#include "component/operations.h"
#include "text/fold.h"

namespace tarlo::library {

Variant LibraryComponent::call(std::string_view name, std::span<Variant> arguments) {
  const bool starts = text::equalsNoCase(name, "OnStartPage");
  if (starts && arguments.size() == 1 && arguments[0].isObject()) {
    const auto context = std::dynamic_pointer_cast<bridge::ForeignObject>(arguments[0].object());
    if (context) {
      page_ = std::make_unique<LatePage>(*context, databases_);
      component_.onStartPage(page_->page());
      return {};
    }
  }
  Variant result = component_.call(name, arguments);
  if (text::equalsNoCase(name, "OnEndPage")) page_.reset();
  return result;
}

std::span<const std::string_view> memberNames() {
  static const std::vector<std::string_view> names = [] {
    std::vector<std::string_view> all;
    for (const auto& operation : component::operations()) all.push_back(operation.name);
    all.insert(all.end(), component::kLifecycle.begin(), component::kLifecycle.end());
    return all;
  }();
  return names;
}

}  // namespace tarlo::library
