#pragma once
// A dialog component in a procedure that goes on after an error: what the dialog refuses is passed
// over, and so is all that is asked of one that could not be made.

#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>

#include "frame/sibling_calls.h"
#include "variant/error_state.h"

namespace tarlo::scheme {

class Dialog {
 public:
  Dialog(Page& page, std::string_view progId, std::span<const frame::ContextPart> parts) {
    errors_.run([&] { object_ = page.server.createObject(progId); });
    errors_.run([&] { frame::connectToPage(page, object(), parts); });
  }
  void put(std::string_view property, const Variant& value) {
    errors_.run([&] { object().put(property, value); });
  }
  // A value whose making may fail too; it is made whether or not there is a dialog.
  template <class Make>
  void putMade(std::string_view property, Make&& make) {
    errors_.run([&] {
      const Variant value = make();
      object().put(property, value);
    });
  }
  void call(std::string_view method, std::initializer_list<Variant> arguments = {}) {
    errors_.run([&] { frame::callMethod(object(), method, arguments); });
  }

 private:
  Object& object() {
    if (!object_) throw RuntimeError(ErrorNumber::ObjectNotSet);
    return *object_;
  }

  std::shared_ptr<Object> object_;
  ErrorState errors_;
};

}  // namespace tarlo::scheme
