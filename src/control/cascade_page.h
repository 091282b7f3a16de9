#pragma once
// The page on which a user's cascade was made before templates took its place: a dialog of its own.
// Its script holds blanks inside operators and does not run in any browser; it is kept as it is.

#include "frame/page.h"

namespace tarlo::control {

// An operation: writes the page for the scheme `id` and gives Empty. Raises what getQueryAllField
// raises, and error 13 for an unknown scheme.
Variant addSearchDlg_UsrField2_2(Page& page, const Variant& id);

}  // namespace tarlo::control
