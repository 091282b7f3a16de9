#pragma once
// What the wizard offers beside its specified pages. Application("designerExtras") False switches
// all of it off.

#include <string>

#include "frame/page.h"

namespace tarlo::scheme {

bool hasExtras(Page& page);

// What a scheme's row says of its last change.
struct SchemeState {
  std::string stamp;  // differs after every change; "" for a scheme that is not there, and with the
                      // extras off
  std::string change;  // who and when, as a sentence without its full stop
};
// Raises DatabaseError.
SchemeState schemeState(Page& page, const Variant& prikeyid);

// Script for the shell page: before a scheme is saved over, it asks the server whether the scheme
// has been changed since the page was made, and says so. "" for a new scheme (`prikeyid` ""), for
// one that is not there, and with the extras off. Never raises.
std::string wizardExtras(Page& page, const Variant& prikeyid);

}  // namespace tarlo::scheme
