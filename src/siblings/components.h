#pragma once
// The objects that pages create beside TarloQuery, by the factories of siblings.h.

#include <memory>

#include "variant/object.h"

namespace tarlo::siblings {

// TarloTable.table: the grid that pages list their rows with.
//
// Every property can be read back. Flags are Booleans or texts. A grid that is drawn before
// ASPConnect raises error 91, one without an id or whose id is no script name error 5. A refused
// statement raises nothing: the grid then says so in the place of its rows.
std::shared_ptr<Object> makeTable();

// Tarlo.menu: the menu bar of a full page, with the page's title in front.
//
// `title` is markup and stands in the menu as it is; `Left` is the bar's distance from the left in
// pixels. `Top`, where pull-downs once opened, is kept and not used: they open under their entry.
// AddMenu0 and AddSubMenu take caption, href, target, sub-menu: AddMenu0 names the pull-down that
// opens, AddSubMenu the one that the entry belongs to. Caption and href empty: a separator.
// WriteMenu gives the markup.
std::shared_ptr<Object> makeMenu();

// TarloDialog.WebDialog: a dialog of steps, each with its content and the scripts that leave it.
//
// Properties: title, TotalStep, addjs (script text, or script elements when it begins with one;
// written behind the steps), FormAction, HelpHtml, HelpTitle, addHTML. addStep takes title,
// content, next script and back script, an empty script being the dialog's own step. Contents,
// addjs, addHTML and HelpHtml are markup and stand in the page as they are; the titles are text.
// The page gives scripts the form `TarloDialog`, the button `btnNext`, the hidden frames
// `pophidden` and `hidden`, switchStep(), moveStep(n), and calls doFirstStep() once where the page
// has one; behind the last step it closes with the result 1. writeDialog before ASPConnect raises
// error 91.
std::shared_ptr<Object> makeWebDialog();

// TarloDialog.SingleDialog: a dialog of one page with a button that closes it.
//
// Properties: title, bodyHtml and addjs (markup, written as they are), bgcolor (a colour name or
// #rrggbb; others are dropped), ViewType (kept for reading back). writeDialog before ASPConnect
// raises error 91.
std::shared_ptr<Object> makeSingleDialog();

}  // namespace tarlo::siblings
