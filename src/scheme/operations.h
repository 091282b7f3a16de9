#pragma once
// The operations of the scheme wizard and of the list that it is opened from, as pages and other
// components call them. All but those of the last group write a page and give nothing.
//
// In requests `type` 1 says that the scheme `prikeyid` is changed; anything else makes a new one.

#include "frame/page.h"

namespace tarlo::scheme {

// --- The list of all query schemes, from which a designer starts.

// Head, the script of the list's buttons, the grid with its two pull-downs of views, foot. Schemes
// that are deleted, that raise alerts or whose directory is gone are not listed. Raises what the
// frame, the grid or the directory statement raises.
void ctrlSearch(Page& page);

// What its buttons ask for besides the wizard. None of these raises anything; what fails is passed
// over.

// The dialog with the titles of the scheme `id`. It goes on without the dialog, or with what the
// dialog takes of it.
void showSearchDlg(Page& page);
// Flags the schemes `ID` (a list, spliced as it came) and their control schemes as deleted, and
// says so whether or not it worked.
void delSearch(Page& page);
// Answers with the ids of the tables that the fields `field` (a list) belong to, joined by ",", and
// with nothing around it; nothing at all when there are none.
void querycheckselect(Page& page);

// --- The wizard's shell: one dialog page that carries the hidden form, the seven steps' frames and
// the script that drives them. What the steps show comes from pages of their own.

// Never raises: what a failed statement should have given stays empty, what the dialog refuses is
// left out, and the page is written all the same.
void addSearchDlg(Page& page);
// The same page, from the same request.
void modisearchdlg(Page& page);

// --- The pages of the steps. `sTable` is the main table, `multi` the selected relations, `virtual`
// the computed fields as they were posted. A scheme that is changed is restored.

// The relations that a scheme follows, and which of the optional steps come next. `mul` 1 offers
// the relations of the neighbours too. Its result is what the page's scripts leave in `MulRel` and
// `virtul`. Raises nothing of its own; what fails leaves its list empty.
void addSearchDlg1(Page& page);
// Computed fields: names, and expressions over the fields of the main table and of the selected
// relations. Nothing judges an expression here; the database does, at the preview. Its result is
// what the page's scripts leave in `divHTML`. Raises DatabaseError when the scheme cannot be read.
void addSearchDlg2(Page& page);
// Conditions: a growing list of rows of field, comparison, value and logic. Its result is what
// setfilter() leaves in the hidden field `filter`. Never raises.
void addSearchDlg3(Page& page);
// Statistics and the fields to group by. Its result is what setGroupStats() leaves in the variable
// `StatsRecord` and the hidden field `group`. Never raises.
void addSearchDlg4(Page& page);
// The opening of a page and no more: kept for callers of its address.
void addSearchDlg5(Page& page);
// Name, class, directory and description of the scheme. Never raises.
void addSearchDlg6(Page& page);

// --- The whole form, as the shell posts it. Neither raises anything.

// Compiles the definition, runs the statement once and writes a page: the titles of the result, or
// the refusal, which also disables the wizard's Next. What passes it can be saved.
void previewSearchdlg(Page& page);
// Writes the scheme into one row of Zembra_Query_Main. The page is a short script, which tells the
// wizard how it went: a refusal leaves the wizard open with nothing lost, success closes it and
// refreshes the list behind it.
void addSearch(Page& page);

// --- Where the current module, Session("usrICID"), stands in the platform's menu: module_links.h.

// False below the menu of the workflow modules.
Variant isNotWorkflowChild(Page& page);
// The workflow's id, False when the module starts none.
Variant getModuleWorkflow(Page& page);
// The pane's text; Empty for none. The argument is not read.
Variant showLinksq(Page& page, const Variant& styleaa);

}  // namespace tarlo::scheme
