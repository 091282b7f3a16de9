#pragma once
// The desktop's panels of open tasks and of workflow steps that wait, and what stands behind them.
// The pages they link to belong to other components. The operations raise DatabaseError.
// They ask for the current user, who is never known (org/groups.h).

#include <string>
#include <string_view>

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

// The statements behind the panels. They form the panels' markup themselves: a title that is cut, a
// link that opens the task, red for what is late.

// The five newest open tasks of the user that have started: markup and period.
std::string openTasksStatement(std::string_view user);
// The five newest steps that wait for the user, directly or through a delegation valid today:
// markup, state, Menu_ID. Without a user the text is one that the database refuses.
std::string waitingStepsStatement(std::string_view user);

}  // namespace tarlo::workflow
