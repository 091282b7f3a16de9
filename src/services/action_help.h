#pragma once
// Context help of a module's actions, kept in Zembra_SubHelp.

#include "frame/page.h"

namespace tarlo::services {

// The help of the action `sAction` of the session's module as HTML list items, or a fixed sentence
// when there is none. Raises DatabaseError.
Variant getActionHelp(Page& page, const Variant& sAction);
// Its title, or a fixed sentence. Raises DatabaseError.
Variant getActionHelpTitle(Page& page, const Variant& sAction);

}  // namespace tarlo::services
