#pragma once
// The one question whether somebody may call something: host, JSON interface, demo form, the
// components beside this one and the command line all ask it.

#include "frame/access.h"
#include "frame/page.h"

namespace tarlo::org {

// The user is Session("usrID"); without one, only what asks for nobody (Caller::Program) is
// allowed. Menu entries and sub-actions are those of Zembra_Menu and Zembra_Permission as they are
// now; a row that forbids grants nothing. Managers are known by the addresses of their entries.
// With Application("designersOnly") off, whatever is for designers is for everybody who has signed
// in. Administrators are the sign-in names in Application("administrators"), joined by commas.
// Raises DatabaseError.
bool mayCall(Page& page, const frame::Access& access);

// The name under which Zembra_Permission lists it; "" for None and AddOrModify.
std::string_view nameOf(frame::SubAction subAction);
// The operation in the address of the manager's menu entry; "" for None.
std::string_view addressOf(frame::Manager manager);

}  // namespace tarlo::org
