#pragma once
// Text, date and validation helpers that pages and statements are put together with. All are
// operations of the component.

#include "frame/page.h"

namespace tarlo::frame {

Variant ServerHTMLEncode(Page& page, const Variant& strA);  // Null gives ""
// An SQL literal of a user's value, written back into `s` too: quoted, ' doubled, < and >
// full-width, " as &quot;. Blank text gives null when `bolnull` is True, else ''.
Variant preSQLFormat(Page& page, Variant& s, const Variant& bolnull);
// & < > " as entities and ' doubled, for text in a literal and in a page at once; Null gives "".
Variant replaceChar(Page& page, const Variant& strName);
Variant validINT(Page& page, const Variant& iINT);   // numeric and within 32 bits; fractions pass
Variant isNothing(Page& page, const Variant& sStr);  // Null, Empty or ""
void getDateTime(Page& page);                        // writes "2002,1,8,9,05,33"
Variant isValidConnect(Page& page);  // the origin check; writes the refusal and gives False

// The same as the house asks them.
bool hasValidOrigin(Page& page);
bool isBlank(const Variant& value);            // Null, Empty or ""
bool isWholeNumber(const Variant& value);      // numeric and within 32 bits; fractions pass
std::string literalOf(std::string_view text);  // blank text gives ''
std::string attributeText(std::string_view text);

// Whether an Application value is on: True, or not set.
bool isSwitchedOn(Page& page, std::string_view key);

// The server's date and time as statements hold it: YYYY-MM-DD HH:MM:SS.
std::string currentDateTimeText();

}  // namespace tarlo::frame
