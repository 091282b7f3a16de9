#pragma once
// The wizard's shell: one dialog page that carries the hidden form, the seven steps' frames and the
// script that drives them. What the steps show comes from pages of their own.

#include "frame/page.h"

namespace tarlo::scheme {

// Request: `type` 1 changes the scheme `prikeyid`, anything else makes a new one. Never raises:
// what a failed statement should have given stays empty, and the page is written all the same.
void addSearchDlg(Page& page);
// The same page, from the same request.
void modisearchdlg(Page& page);

}  // namespace tarlo::scheme
