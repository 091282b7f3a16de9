#pragma once
// The user's colour scheme. The browser keeps the choice in a cookie, the pages read it from
// Session("usrStyle") as "1" to "4"; the desktop's own addresses carry it from the one to the
// other.

#include <string_view>

#include "frame/page.h"

namespace tarlo::host {

inline constexpr std::string_view kStyleCookie = "tarloStyle";

// Takes a valid choice of the cookie over into the session. Gives the scheme's word: sea, olive,
// orange or sun; sea when nothing was chosen.
std::string_view takeStyle(Page& page);

}  // namespace tarlo::host
