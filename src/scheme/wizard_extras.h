#pragma once
// What the wizard offers beside its specified pages. Application("designerExtras") False switches
// all of it off.

#include <string>

#include "frame/page.h"

namespace tarlo::scheme {

bool hasExtras(Page& page);

// Script for the shell page: before a scheme is saved over, it asks the server whether somebody has
// changed the scheme since the page was made, and says so. "" for a new scheme (`prikeyid` ""), for
// one that is not there, and with the extras off. Never raises.
std::string wizardExtras(Page& page, const Variant& prikeyid);

}  // namespace tarlo::scheme
