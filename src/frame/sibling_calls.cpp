#include "frame/sibling_calls.h"

#include <vector>

#include "frame/context_object.h"

namespace tarlo::frame {

Variant callMethod(Object& object, std::string_view name,
                   std::initializer_list<Variant> arguments) {
  std::vector<Variant> values(arguments);
  return object.call(name, values);
}

void connectToPage(Page& page, Object& object) {
  const std::shared_ptr<Object> context = std::make_shared<ContextObject>(page);
  // One object stands for all five, since they belong to one page.
  callMethod(object, "ASPConnect", {context, context, context, context, context});
}

std::string gridViewScript(std::string_view condition, std::string_view caption) {
  std::string script = "SearchTable.gotoView(\\\"";
  script.append(condition).append("\\\",\\\"").append(caption);
  return script.append("\\\")");
}

}  // namespace tarlo::frame
