#pragma once
// The wizard that makes a user's drop-down or list from a user's scheme: one stepped dialog, whose
// later steps come from posts of its form to the hidden frame. The answers put a step's content
// into the dialog and define the functions that the content needs. All are operations.

#include "frame/page.h"

namespace tarlo::control {

// The dialog. Raises what the dialog raises.
void addSearchDlg_UsrField(Page& page);

// The second step for the chosen scheme `queryid`, by `fieldtype`: 1, 2 or 3; any other writes
// nothing.
void addSearchDlg_UsrField2(Page& page);
// Drop-down: value, text and filter, from the main table or, when a relating field is chosen, from
// all related tables. Never raises. Gives Empty.
Variant addSearchDlg_UsrField2_1(Page& page, const Variant& id);
// List: which columns. Raises what getQueryAllTitle raises, and error 13 for an unknown scheme.
Variant addSearchDlg_UsrField2_3(Page& page, const Variant& id);

// The third step of a list: titles of the chosen columns. Never raises.
void addSearchDlg_UsrField3(Page& page);

}  // namespace tarlo::control
