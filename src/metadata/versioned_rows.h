#pragma once
// Reading what exists twice, as it is now and as a frozen version. Not for use outside this folder.

#include <string_view>

#include "frame/page.h"

namespace tarlo::metadata {

// The rows of the statement with the id behind it: of the version's for `isInstance` True, else of
// the current one's. Null when there are none. Raises DatabaseError.
Variant versionedRows(Page& page, const Variant& isInstance, std::string_view versionStatement,
                      std::string_view currentStatement, const Variant& id);

// The scheme's Query_Prikey, as one row; Null for an unknown scheme. Raises DatabaseError.
Variant keyRow(Page& page, const Variant& queryid, const Variant& isInstance);

// Columns of a control; Null for an unknown one. Raises DatabaseError.
Variant controlRow(Page& page, const Variant& controlid, const Variant& isInstance,
                   std::string_view columns = "QF_Relation,QF_FieldType");

}  // namespace tarlo::metadata
