#pragma once
// What the wizard offers beside its own pages: whether a scheme has been changed meanwhile, the
// first rows of a statement, why one is refused. Application("designerExtras") False switches all
// of it off. No text of the engine reaches a page.

#include <string>
#include <string_view>

#include "compile/definition.h"
#include "frame/page.h"

namespace tarlo::scheme {

bool hasExtras(Page& page);

// What a scheme's row says of its last change.
struct SchemeState {
  std::string stamp;  // differs after every change; "" for a scheme that is not there, and with the
                      // extras off
  std::string change;  // who and when, as a sentence without its full stop
};
// `scheme` is an id as a request gives it: text that is no number asks nothing, none at all makes
// the statement fail. Raises DatabaseError.
SchemeState schemeState(Page& page, const Variant& scheme);

// None of these raises.

// Script for the shell page: before a scheme is saved over, it asks the server whether the scheme
// has been changed since the page was made, and says so. "" for a new scheme (`scheme` ""), for one
// that is not there, and with the extras off.
std::string wizardExtras(Page& page, std::string_view scheme);

// Markup for the preview: the statement on lines of its own with a button that copies it, and the
// first ten rows.
std::string firstRows(Page& page, const std::string& statement);

// Markup for the preview: a fold-out with the reason, and which computed field, condition,
// statistic or group it comes from where that can be told.
std::string refusalReason(Page& page, const compile::Definition& definition,
                          const std::string& statement);

}  // namespace tarlo::scheme
