#pragma once
// Computed fields as the wizard posts them, into the form that is stored and compiled.

#include <string>
#include <string_view>

namespace tarlo::scheme {

// [<display text>|<field id>] becomes [<field id>], full-width single quotes become ', and one ";"
// at the end is cut. Every "|" is taken for the mark of a reference and a "[" without one behind it
// is dropped, so `a|b` gives `[b` and `[abc]` gives `abc]`: deliberate, the database judges what
// comes out.
std::string reducedComputed(std::string_view posted);

}  // namespace tarlo::scheme
