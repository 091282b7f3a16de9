#pragma once
// Rows of a statement as the text that the browser's widgets take. Statements give two columns:
// value first, caption second. The XML for combo boxes is encoded for an attribute in double
// quotes; the other two forms are data that the page encodes where it puts them, and a caption with
// their marks in it breaks the list.

#include <string>

#include "frame/page.h"

namespace tarlo::services {

// "<caption<value" for each row, then ">" and the index (from 0) of the last row whose value equals
// sPar, or nothing. Empty with no rows. A Null sPar becomes "" in the caller's variable. Raises
// DatabaseError.
Variant TarloCBODataSource(Page& page, const Variant& sSQL, Variant& sPar);

// The options as XML for a combo box; Empty with no rows and for a refused statement.
Variant GetComboBoxXMLs(Page& page, const Variant& sSQL);
// The same as text, "" for Empty.
std::string comboBoxOptions(Page& page, const std::string& statement);
// The same for a statement that was stored, or that a designer has put together.
std::string storedOptions(Page& page, const std::string& statement);

// The options as XML for radio buttons and check boxes; Empty with no rows. Raises DatabaseError.
Variant GetRadioOrCheckBoxXML(Page& page, const Variant& sSQL);

}  // namespace tarlo::services
