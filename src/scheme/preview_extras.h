#pragma once
// What the preview says beyond its specified text: the statement and its first rows, or why the
// database refuses it, in a designer's words. Nothing here raises, and no text of the engine
// reaches the page.

#include <string>

#include "compile/definition.h"
#include "frame/page.h"

namespace tarlo::scheme {

// Markup: the statement on lines of its own with a button that copies it, and the first ten rows.
std::string firstRows(Page& page, const std::string& statement);

// Markup: a fold-out with the reason, and which computed field, condition, statistic or group it
// comes from where that can be told.
std::string refusalReason(Page& page, const compile::Definition& definition,
                          const std::string& statement);

}  // namespace tarlo::scheme
