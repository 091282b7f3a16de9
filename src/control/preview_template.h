#pragma once
// Previews of the template wizard, as in preview_control.h. All are operations.

#include "frame/page.h"

namespace tarlo::control {

// A dialog around the preview by fieldtype: 1 or 2. The wizard asks for those directly.
void previewSearchdlg_sysField(Page& page);
void previewSearchdlg_sysField1(Page& page);  // drop-down: never raises
void previewSearchdlg_sysField2(Page& page);  // cascade: never raises

// A dialog with the cascade of a statement (`sql`) and levels (`rel`) of the caller's. Kept for
// callers outside; when Application("statementsByUrl") is False it shows no rows but for the
// statements that stored control schemes hold. Raises DatabaseError.
void showSearchpreview_SysField(Page& page);

}  // namespace tarlo::control
