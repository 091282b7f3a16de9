#pragma once
// The desktop's panels of open tasks and of workflow steps that wait, and what stands behind them.
// The pages they link to belong to other components. All are operations and raise DatabaseError.
// They ask for the current user, who is never known (org/current_user.h).

#include "frame/page.h"

namespace tarlo::workflow {

void MergeGetMyTaskInFirst(Page& page);  // finds the tasks of nobody
// Nothing is written: the statement is refused.
void WorkFlowWaitingForDealList(Page& page);

// What the platform's stored procedure says of the instance `iUID`; "" when it gives no row. The
// other arguments are not read. Refused by a database without the procedure.
Variant doGetWFIName(Page& page, const Variant& iUID, const Variant& strName,
                     const Variant& strType, const Variant& strPara2);
// Who handed the module `intMenuID` over to the current user; 0 without a row. Always refused.
Variant doFindPermissionWFI(Page& page, const Variant& intMenuID, const Variant& strPara1,
                            const Variant& strPara2);

// The statement of the grid that was drawn last in this session, the second one where it has one.
// Empty without a grid.
Variant getCurrentResultSet(Page& page);

}  // namespace tarlo::workflow
