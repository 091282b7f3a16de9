#pragma once
// The operations of control schemes, as pages call them: manager pages, the three wizards with
// their saves and previews, and stored controls as they look. What they write goes to the page;
// answers to the wizards' hidden frames are scripts, which either say what is wrong and leave the
// wizard where it is, or take it on. An `id` and a `queryid` go into statements as they came.

#include "frame/page.h"

namespace tarlo::control {

// --- The pages on which designers see all controls: one for users' controls, one for the templates
// that users' controls are bound from. Grid, views by kind, buttons, and the script behind them.

// Raise what the page frame and the grid raise.
void ctrlSearch_Usrfield(Page& page);
void ctrlSearch_Sysfield(Page& page);
// Flag the controls `ID` of the request (a list) as deleted. Never raise. The first says that it
// worked whether or not it did: deliberate, only the second looks at the error.
void delSearch_UsrField(Page& page);
void delSearch_sysField(Page& page);

// --- The wizard that makes a user's drop-down or list from a user's scheme: one stepped dialog,
// whose later steps come from posts of its form to the hidden frame. The answers put a step's
// content into the dialog and define the functions that the content needs.

// The dialog. Raises what the dialog raises.
void addSearchDlg_UsrField(Page& page);
// The first step's list of users' schemes: without those with statistics unless `field1` is "3".
// Raises what the grid raises.
void addSearchDlg_UsrField1_1(Page& page);
// The same as a drop-down, by `contrltype`, put into the opener's division by script. Raises
// DatabaseError.
void addSearchDlg_UsrField1_2(Page& page);
// Around the list; no page links to it any more.
void addSearchDlg_UsrField1(Page& page);
// The second step for the chosen scheme `queryid`, by `fieldtype`: 1, 2 or 3; any other writes
// nothing. The members give Empty.
void addSearchDlg_UsrField2(Page& page);
// Drop-down: value, text and filter, from the main table or, when a relating field is chosen, from
// all related tables. Never raises.
Variant addSearchDlg_UsrField2_1(Page& page, const Variant& id);
// The page on which a user's cascade was made before templates took its place: a dialog of its own.
// Its script holds blanks inside operators and does not run in any browser; it is kept as it is.
// Raises what the scheme's columns raise, and error 13 for an unknown scheme.
Variant addSearchDlg_UsrField2_2(Page& page, const Variant& id);
// List: which columns. Raises what the scheme's titles raise, and error 13 for an unknown scheme.
Variant addSearchDlg_UsrField2_3(Page& page, const Variant& id);
// The third step of a list: titles of the chosen columns. Never raises.
void addSearchDlg_UsrField3(Page& page);

// --- Its saves. The control's statement is run once before the row is written: one that the
// database refuses is not stored. Never raise, but for the first.

void savesearch_UsrField(Page& page);   // by fieldtype: 1, 2 or 3; any other writes nothing
void savesearch_UsrField1(Page& page);  // drop-down
void savesearch_UsrField2(Page& page);  // cascade
void savesearch_UsrField3(Page& page);  // list

// --- Its previews: the control as it will look, drawn from what the wizard has posted before
// anything is stored. The statement is run through the operation log first.

void previewSearchdlg_UsrField(Page& page);   // by fieldtype: 1, 2 or 3; any other writes nothing
void previewSearchdlg_UsrField1(Page& page);  // drop-down: never raises
// Cascade, in a dialog of its own; never raises. Its condition names no table, so the database
// always refuses the statement: kept as it is.
void previewSearchdlg_UsrField2(Page& page);
// List: keeps statement and titles in the session, for the page of the preview's frame. Raises what
// the scheme's columns raise.
void previewSearchdlg_UsrField3(Page& page);
// That page: the list's columns and no row. It takes the session's values away, so it shows the
// list once. Never raises.
void showSearchpreview_UsrField(Page& page);

// --- A stored control of the posted `id` as it looks, for the manager page's preview. Never raise.
// A control that is not there is drawn without rows.

void showSearchDlg_UsrField(Page& page);      // the dialog; empty for a control of another kind
Variant showSearchDlg_UsrField1(Page& page);  // the body of that dialog: drop-down
Variant showSearchDlg_UsrField2(Page& page);  // cascade
Variant showSearchDlg_UsrField3(Page& page);  // list
void showSearchDlg_sysField(Page& page);      // the same for a template, which is no list
Variant showSearchDlg_sysField1(Page& page);
Variant showSearchDlg_sysField2(Page& page);

// --- The wizard that binds a template to a user's scheme: the template's row is copied, with the
// field added by which the main tables of both schemes are related. Nothing is written before its
// last step.

// The dialog, and the two lists in its frames: users' schemes, then the templates whose scheme's
// main table is related to that of the scheme `id`. A template's row id is "QF_ID|field id", the
// number padded with blanks. Without a relation the second list is empty. Raise DatabaseError.
void addsearchdlg_UsrModel(Page& page);
void addSearchDlg_UsrModel1_1(Page& page);
void addSearchDlg_UsrModel2(Page& page);
// Around the first list; no page links to it any more.
void addSearchDlg_UsrModel1(Page& page);
// The save: `queryid` is a template's row id, `modelid` the user's scheme. Raises DatabaseError
// where the ids are none; a row that cannot be written is answered.
void addSearchDlg_UsrModel3(Page& page);

// --- The wizard that makes a template: a drop-down of a system scheme's main table, or a cascade
// built level by level along the dictionary's relations. Its later steps come from requests of its
// hidden frames, as in the user's wizard.

void addSearchDlg_sysfield(Page& page);  // raises what the dialog raises
void getQueryTable(Page& page);          // the empty page that the wizards' frames start with
// System schemes, and the kind of the template. Raises what the grid raises.
void addSearchDlg_sysfield1_1(Page& page);
// Around them; no page links to it any more.
void addSearchDlg_sysfield1(Page& page);
// The step for the chosen scheme `id`, by `fieldtype`: 1 or 2; any other writes nothing.
void addSearchDlg_sysField2(Page& page);
// Drop-down: value, text and filter. Raises DatabaseError.
void addSearchDlg_sysField2_1(Page& page);
// Cascade: the levels chosen so far (`fields`, `rel`) as text, and boxes for the next one. A main
// table that no relation leaves gives a notice instead. Raises DatabaseError, and error 13 for a
// field or table that is not there.
void addSearchDlg_sysField2_2(Page& page);
Variant getSaveName(Page& page);  // the text of the last step: name and remark

// Its saves, with two rules that templates have always lived by: a drop-down's name is not asked
// for, and a cascade's statement is not run before it is stored. Never raise, but for the first.
void savesearch_sysField(Page& page);   // by fieldtype: 1 or 2; any other writes nothing
void savesearch_sysField1(Page& page);  // drop-down
void savesearch_sysField2(Page& page);  // cascade

// Its previews. The first is a dialog around the other two by fieldtype; the wizard asks for those
// directly.
void previewSearchdlg_sysField(Page& page);
void previewSearchdlg_sysField1(Page& page);  // drop-down: never raises
void previewSearchdlg_sysField2(Page& page);  // cascade: never raises
// A dialog with the cascade of a statement (`sql`) and levels (`rel`) of the caller's. Kept for
// callers outside; when Application("statementsByUrl") is False it shows no rows but for the
// statements that stored controls hold. Raises DatabaseError.
void showSearchpreview_SysField(Page& page);

}  // namespace tarlo::control
