#pragma once
// Resume-next: runs one step at a time, keeps the last error, and lets the procedure go on. A
// variable that a failing step would have set keeps its last value, so model it outside the step
// and assign inside:
//
//   ErrorState err;
//   frame::Rows rows;                               // stays as it was when the step fails
//   err.run([&] { rows = frame::rows(page, sql); });
//   if (err.failed()) ...

#include <optional>
#include <type_traits>
#include <utility>

#include "variant/runtime_error.h"
#include "variant/variant.h"

namespace tarlo::variant {

class ErrorState {
 public:
  // Runs the step. A RuntimeError is kept (replacing an older one) and false is returned; any other
  // exception passes through, since only run-time errors are errors of the pages' language. A step
  // that succeeds clears nothing.
  template <class Step>
  bool run(Step&& step) {
    try {
      std::forward<Step>(step)();
      return true;
    } catch (const RuntimeError& error) {
      error_ = error;
      return false;
    }
  }

  // Runs the step and gives its value; when it fails, the empty value of that kind: Empty, "", no
  // rows.
  template <class Step>
  auto value(Step&& step) {
    std::invoke_result_t<Step> result{};
    run([&] { result = std::forward<Step>(step)(); });
    return result;
  }

  bool failed() const { return error_.has_value(); }
  // 0 and "" when no error is pending.
  int number() const { return error_ ? error_->number() : 0; }
  std::string_view description() const {
    return error_ ? std::string_view(error_->description()) : "";
  }
  void clear() { error_.reset(); }

 private:
  std::optional<RuntimeError> error_;
};

}  // namespace tarlo::variant

namespace tarlo {
using variant::ErrorState;
}
