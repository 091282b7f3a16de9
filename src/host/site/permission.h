#pragma once
// What Zembra_Permission grants the signed-in user: entries of the platform's menu, by the page
// that an entry opens. All raise DatabaseError.

#include "frame/page.h"

namespace tarlo::host {

// Any entry at all: the user works with the platform's forms.
bool mayOpenAnyModule(Page& page);
// The manager of query schemes.
bool mayOpenSchemeManager(Page& page);
// One of the three managers: the user is a designer.
bool mayOpenAnyManager(Page& page);

}  // namespace tarlo::host
