#pragma once
// What a step raises.

#include "variant/runtime_error.h"

namespace tarlo::testing {

// The number of the run-time error that the step raises, 0 when it raises none.
template <class Step>
int errorOf(Step&& step) {
  try {
    step();
    return 0;
  } catch (const RuntimeError& error) {
    return error.number();
  }
}

}  // namespace tarlo::testing
