#pragma once
// What the wizard's script asks for before it saves over a scheme.

#include "frame/page.h"

namespace tarlo::siblings {

// Request: prikeyid. Answers {"stamp":..,"change":..}: see scheme::SchemeState. Raises
// DatabaseError.
void sendSchemeState(Page& page);

}  // namespace tarlo::siblings
