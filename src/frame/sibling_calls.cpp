#include "frame/sibling_calls.h"

#include <vector>

#include "frame/place.h"

namespace tarlo::frame {

Variant callMethod(Object& object, std::string_view name,
                   std::initializer_list<Variant> arguments) {
  std::vector<Variant> values(arguments);
  return object.call(name, values);
}

void connectToPage(Page& page, Object& object, std::span<const ContextPart> parts) {
  std::vector<Variant> arguments;
  for (const ContextPart part : parts) {
    arguments.emplace_back(std::shared_ptr<Object>(std::make_shared<ContextObject>(page, part)));
  }
  object.call("ASPConnect", arguments);
}

std::string gridViewScript(std::string_view condition, std::string_view caption) {
  constexpr Place kStringInString[] = {Place::ScriptDouble, Place::ScriptDouble};
  return "SearchTable.gotoView(\\\"" + inPlace(kStringInString, condition) + "\\\",\\\"" +
         inPlace(kStringInString, caption) + "\\\")";
}

}  // namespace tarlo::frame
