#pragma once
// The frame of a full page: a head with the menu bar, and a foot that repaints the side pane and
// the frameset in the user's colours. A page writes the head, its content, then the foot.
//
// Neither part handles an error: a Session("usrICID") that is no number stops the page with error
// 13.

#include "frame/page.h"

namespace tarlo::scheme {

// `title` is the page's title as text, or a Tarlo.menu object that the page has set up and that
// carries the title; its `title` property is then overwritten with the page's heading.
void writePageHead(Page& page, const Variant& title);
void writePageFoot(Page& page);

enum class SidePane { Links, Oem };

// The script that fills the side pane and paints the frameset: in the colours that the browser
// keeps for the module, else in those of `style` (a value of Session("usrStyle")).
void writeStylePane(Page& page, const Variant& style, SidePane pane);

}  // namespace tarlo::scheme
