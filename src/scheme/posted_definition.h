#pragma once
// A scheme's definition as the wizard posts it, read alike by the preview and the save.

#include <string>

#include "compile/definition.h"
#include "frame/page.h"

namespace tarlo::scheme {

// Blanks around the computed fields go at the preview only.
enum class Blanks { Kept, Trimmed };

// The posted values, the computed fields reduced to their stored form.
compile::Definition postedDefinition(Page& page, Blanks aroundComputed);

}  // namespace tarlo::scheme
