#pragma once
// The wizard that makes a template: a drop-down of a system scheme's main table, or a cascade built
// level by level along the dictionary's relations. One stepped dialog, whose later steps come from
// requests of its hidden frames, as in field_wizard.h. All are operations.

#include "frame/page.h"

namespace tarlo::control {

// The dialog. Raises what the dialog raises.
void addSearchDlg_sysfield(Page& page);

// The step for the chosen scheme `id`, by `fieldtype`: 1 or 2; any other writes nothing.
void addSearchDlg_sysField2(Page& page);
// Drop-down: value, text and filter. Raises DatabaseError.
void addSearchDlg_sysField2_1(Page& page);
// Cascade: the levels chosen so far (`fields`, `rel`) as text, and boxes for the next one. A main
// table that no relation leaves gives a notice instead. Raises DatabaseError, and error 13 for a
// field or table that is not there.
void addSearchDlg_sysField2_2(Page& page);

// The text of the last step: name and remark.
Variant getSaveName(Page& page);

}  // namespace tarlo::control
