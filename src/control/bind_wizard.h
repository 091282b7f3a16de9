#pragma once
// The wizard that binds a template to a user's scheme: the template's row is copied, with the field
// added by which the main tables of both schemes are related. Nothing is written before its last
// step. All are operations.

#include "frame/page.h"

namespace tarlo::control {

// The dialog, and the two lists in its frames: users' schemes, then the templates whose scheme's
// main table is related to that of the scheme `id`. A template's row id is "QF_ID|field id", the
// number padded with blanks. Without a relation the second list is empty. Raise DatabaseError.
void addsearchdlg_UsrModel(Page& page);
void addSearchDlg_UsrModel1_1(Page& page);
void addSearchDlg_UsrModel2(Page& page);
// Around the first list; no page links to it any more.
void addSearchDlg_UsrModel1(Page& page);

// The save: `queryid` is a template's row id, `modelid` the user's scheme. Answers with a script
// that says what is wrong and leaves the wizard where it is, or takes it on. Raises DatabaseError
// where the ids are none; a row that cannot be written is answered.
void addSearchDlg_UsrModel3(Page& page);

}  // namespace tarlo::control
