#pragma once
// The statements of the demo schemes, compiled as they would be when a designer saves them.

#include <ostream>
#include <string>
#include <vector>

namespace tarlo::app {

struct DemoStatement {
  int schemeId = 0;
  std::string statement;
};

// Builds the demo business in memory and compiles every scheme of it. Compiling reads through
// connections of its own, which could not see the rows of a transaction that is still open. Throws
// CommandError (kFailed) for a script or a scheme that fails.
std::vector<DemoStatement> compileDemo(std::ostream& err);

}  // namespace tarlo::app
