#pragma once
// The current user as the group limits and the task panels read it.

#include "frame/page.h"

namespace tarlo::org {

// Always Empty: the platform declares a variable for it and nothing sets it. Deliberate: what reads
// it either finds no row or gives a statement that the database refuses, and callers rely on both.
// The signed-in user is Session("usrID").
inline Variant currentUserId() {
  return {};
}

}  // namespace tarlo::org
