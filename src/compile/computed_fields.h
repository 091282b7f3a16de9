#pragma once
// Select items from computed fields.

#include "frame/page.h"

namespace tarlo::compile {

// "<expression> as [<name>]" for each item of `computed`, comma-joined; "" for an empty list. Never
// raises: a reference that is not found is dropped with the literal text in front of it, and a step
// that fails leaves its variable as it was, so an item without ":" bears the name of the item
// before it.
Variant Query_getVirtual(Page& page, const Variant& computed);

}  // namespace tarlo::compile
