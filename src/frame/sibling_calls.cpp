#include "frame/sibling_calls.h"

#include <vector>

#include "frame/context_object.h"
#include "frame/place.h"

namespace tarlo::frame {

Variant callMethod(Object& object, std::string_view name,
                   std::initializer_list<Variant> arguments) {
  std::vector<Variant> values(arguments);
  return object.call(name, values);
}

void connectToPage(Page& page, Object& object) {
  const auto part = [&](ContextPart which) {
    return Variant(std::shared_ptr<Object>(std::make_shared<ContextObject>(page, which)));
  };
  callMethod(object, "ASPConnect",
             {part(ContextPart::Response), part(ContextPart::Session), part(ContextPart::Server),
              part(ContextPart::Application), part(ContextPart::Request)});
}

std::string gridViewScript(std::string_view condition, std::string_view caption) {
  constexpr Place kStringInString[] = {Place::ScriptDouble, Place::ScriptDouble};
  return "SearchTable.gotoView(\\\"" + inPlace(kStringInString, condition) + "\\\",\\\"" +
         inPlace(kStringInString, caption) + "\\\")";
}

}  // namespace tarlo::frame
