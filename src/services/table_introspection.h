#pragma once
// Tables and fields of the data dictionary by their physical names, and policy values: what other
// components of the platform ask for. All are operations.
//
// Names go into the statement between single quotes and are not escaped. All raise DatabaseError;
// the last three of the tables' raise error 13 when there is no such table or field.

#include "frame/page.h"

namespace tarlo::services {

// Physical name and display name of the tables, or of those alone that users have defined
// ("UserTb_"...), unless `showAll` is True; Empty when there are none. `sDatabase` is not read.
Variant getUserTableName(Page& page, const Variant& sDatabase, const Variant& showAll);
// Physical name and display name of the table's fields, Empty when there are none.
Variant getUserFieldName(Page& page, const Variant& sTableName);
Variant getTableIDField(Page& page, const Variant& sTableName);  // name of the key field
Variant getTableIDValue(Page& page, const Variant& sTableName);  // DDT_ID
Variant getFieldIDValue(Page& page, const Variant& sTableName,
                        const Variant& sFieldName);  // DDF_ID

// The policy's values; see frame/policy.h.
Variant getPolicyInfo(Page& page, const Variant& strName);

}  // namespace tarlo::services
