#pragma once
// A scheme's definition as the wizard posts it, read alike by the preview and the save.

#include <string>
#include <string_view>

#include "compile/definition.h"
#include "frame/page.h"

namespace tarlo::scheme {

// Blanks around the computed fields go at the preview only.
enum class Blanks { Kept, Trimmed };

// The posted values, the computed fields reduced to their stored form.
compile::Definition postedDefinition(Page& page, Blanks aroundComputed);

// Computed fields as the wizard posts them, into the form that is stored and compiled:
// [<display text>|<field id>] becomes [<field id>], full-width single quotes become ', and one ";"
// at the end is cut. Every "|" is taken for the mark of a reference and a "[" without one behind it
// is dropped, so `a|b` gives `[b` and `[abc]` gives `abc]`: deliberate, the database judges what
// comes out.
std::string reducedComputed(std::string_view posted);

}  // namespace tarlo::scheme
