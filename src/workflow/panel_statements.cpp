// The statements of the panels.

#include "text/pieces.h"
#include "workflow/operations.h"

namespace tarlo::workflow {
namespace {

constexpr std::string_view kTask =
    "select top 5 /* Zembra_ID ,*/ '<span onclick=\"top.TarloY.showWebDialog("
    "''TarloMyScheme.Zembra?action=AddMyTask&sFlag=0&sSort=9&id='+ CAST(Zembra_ID AS varchar(50))+"
    "''',680,510);\">'+ "
    "CASE WHEN DateDiff (d , getdate() , MT_PlanEndDate ) >= 0  "
    "THEN (case when Len(MT_Topic)> 8 then substring(MT_Topic,1,8)+'...' else MT_Topic end )  "
    "ELSE '<font color=red>'+(case when Len(MT_Topic)> 8 then substring(MT_Topic,1,8)+'...' "
    "else MT_Topic end )+'</font>'  END +'</span>'  , "
    "CAST(DATEPART (yy,MT_StartDate)AS varchar(50))+'-'    + "
    "CAST(DATEPART (m,MT_StartDate) AS varchar(50))+'-'    + "
    "CAST(DATEPART (d,MT_StartDate) AS varchar(50))+' 至 '    + "
    "CAST(DATEPART (yy,MT_PlanEndDate)AS varchar(50))+'-'    + "
    "CAST(DATEPART (m,MT_PlanEndDate) AS varchar(50))+'-'    + "
    "CAST(DATEPART (d,MT_PlanEndDate) AS varchar(50))+'  '  as MyDate   "
    "FROM Zembra_MyTask_Record where Zembra_Flag = 1  And MT_UserID = '";
constexpr std::string_view kTaskClosing =
    "'  And MT_Status = 1  And DateDiff (d , MT_StartDate, getdate() ) >= 0  "
    "order by Zembra_ID desc ";

// The opening of a link to the step's page, in both columns.
constexpr std::string_view kOpenStep =
    "'<span onclick=\"top.TarloY.showWebDialog("
    "''TarloWFInstance.Zembra?action=doTransactWindowWFI&intMenuID='+ "
    "CAST(menu.menu_ID AS varchar(50))+'&intPermission=0&intWorkFlowSame='+ "
    "CAST(WF_WorkName AS varchar(50))+'&intSort=1&intUID='+ "
    "CAST(M.Zembra_id AS varchar(50))+''',770,570);\">'+";

constexpr std::string_view kStepName =
    "menu.Menu_Name + ':' +    Case  WHEN len(A.WFIA_Name) < 6 then A.WFIA_Name  "
    "WHEN len(A.WFIA_Name) > 5 then substring(A.WFIA_Name,1,5) + '...' end AS 标题,  ";

// The step's name, or, for a step without one, that of the instance's state.
constexpr std::string_view kStepState =
    "   '等待'+      case      when (Select len(WFPS_NoName) From Zembra_WorkFlow_PerDot PD, "
    "Zembra_WorkFlowInstance_Main subM1 where PD.Zembra_ID=subM1.WFI_WorkFlowStepID and "
    "subM1.Zembra_id = M.Zembra_id) < 1         "
    "then (SELECT TOP 1 WFH_Name  FROM Zembra_WorkFlowInstance_Main subM,  "
    "Zembra_WorkFlowInstance_Handle H WHERE  H.Zembra_ID = subM.WFI_Status AND "
    "subM.WFI_InstanceID = M.WFI_InstanceID  AND subM.Zembra_id = M.Zembra_id "
    "ORDER BY subM.Zembra_ID DESC)         "
    "else          (Select top 1 WFPS_NoName From Zembra_WorkFlow_PerDot PD, "
    "Zembra_WorkFlowInstance_Main subM1 where PD.Zembra_ID=subM1.WFI_WorkFlowStepID and "
    "subM1.Zembra_id = M.Zembra_id)     end  AS 状态 , menu.menu_ID ";

constexpr std::string_view kStepTables =
    "FROM  Zembra_WorkFlowInstance_Main M,  Zembra_WorkFlowInstance_Attribute A  , "
    "Zembra_WorkFlow_Custom  C      , Zembra_Menu menu "
    "WHERE M.WFI_InstanceID = A.WFIA_InstanceID       "
    "AND menu.Menu_AddValue =  c.WF_SameFlag AND menu.Menu_AddType=1  AND M.WFI_Keeping = 0   "
    "AND C.Zembra_ID = M.WFI_WorkFlowID  AND (       ( (M.WFI_NeedUser = (  "
    "SELECT  DISTINCT EPWF_sID   FROM Zembra_WFInstance_ExchangePermission   "
    "WHERE  EPWF_rID =  ";
constexpr std::string_view kOrDirectly =
    "   AND GETDATE() BETWEEN EPWF_StartDate AND EPWF_EndDate   ) ) OR M.WFI_NeedUser = ";
constexpr std::string_view kStepClosing =
    ") ) AND M.WFI_Action = 2 AND NOT M.Zembra_Flag in(0,2,3,4,5)   "
    "group by M.Zembra_ID,menu.menu_ID,menu.Menu_Name, C.WF_WorkName,A.WFIA_Name,"
    "M.WFI_InstanceID  ORDER BY M.Zembra_ID DESC ";

}  // namespace

std::string openTasksStatement(std::string_view user) {
  return text::joined({kTask, user, kTaskClosing});
}

std::string waitingStepsStatement(std::string_view user) {
  return text::joined({" SELECT  top 5  ", kOpenStep, kStepName, kOpenStep, kStepState, kStepTables,
                       user, kOrDirectly, user, kStepClosing});
}

}  // namespace tarlo::workflow
