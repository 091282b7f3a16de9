#include "component/operations.h"

#include <algorithm>
#include <array>

#include "compile/assembly.h"
#include "compile/computed_fields.h"
#include "compile/field_list.h"
#include "compile/filter.h"
#include "compile/grouping.h"
#include "compile/propagation.h"
#include "compile/statistics.h"
#include "component/binding.h"
#include "control/bind_wizard.h"
#include "control/cascade_page.h"
#include "control/field_wizard.h"
#include "control/manager_page.h"
#include "control/preview_control.h"
#include "control/preview_template.h"
#include "control/save_control.h"
#include "control/save_template.h"
#include "control/show_control.h"
#include "control/template_wizard.h"
#include "control/wizard_frames.h"
#include "frame/helpers.h"
#include "metadata/control_fields.h"
#include "metadata/control_statements.h"
#include "metadata/dictionary_lookups.h"
#include "metadata/introspection.h"
#include "metadata/relation_table.h"
#include "metadata/scheme_copy.h"
#include "metadata/version_lookups.h"
#include "org/directory.h"
#include "org/group_limit.h"
#include "org/option_lists.h"
#include "org/sub_actions.h"
#include "scheme/computed_step.h"
#include "scheme/filter_step.h"
#include "scheme/manager_page.h"
#include "scheme/module_links.h"
#include "scheme/preview_page.h"
#include "scheme/relation_step.h"
#include "scheme/save_form.h"
#include "scheme/save_scheme.h"
#include "scheme/scheme_detail.h"
#include "scheme/statistics_step.h"
#include "scheme/wizard_shell.h"
#include "services/action_help.h"
#include "services/data_sources.h"
#include "services/div_dialog.h"
#include "services/file_transfer.h"
#include "services/mail.h"
#include "services/table_introspection.h"
#include "workflow/panels.h"

namespace tarlo::component {
namespace {

constexpr char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool precedes(std::string_view a, std::string_view b) {
  return std::ranges::lexicographical_compare(a, b, {}, folded, folded);
}

// Written folder by folder, for people; looked up by folded name.
constexpr auto kByFolder = std::to_array<Operation>({
    raising<frame::isValidConnect>("isValidConnect", "frame", ""),
    raising<frame::ServerHTMLEncode>("ServerHTMLEncode", "frame", "strA"),
    raising<frame::preSQLFormat>("preSQLFormat", "frame", "s,bolnull"),
    raising<frame::replaceChar>("replaceChar", "frame", "strName"),
    raising<frame::validINT>("validINT", "frame", "iINT"),
    raising<frame::isNothing>("isNothing", "frame", "sStr"),
    raising<frame::getDateTime>("getDateTime", "frame", ""),
    raising<compile::getQuery_None>("getQuery_None", "compile", "sTable,rel"),
    raising<compile::getQuery_Vir>("getQuery_Vir", "compile", "sTable,virtual,rel"),
    raising<compile::getQuery_Fil>("getQuery_Fil", "compile", "sTable,filter,rel"),
    raising<compile::getQuery_Vir_Fil>("getQuery_Vir_Fil", "compile", "sTable,virtual,filter,rel"),
    raising<compile::getQuery_Sta>("getQuery_Sta", "compile", "sTable,stats,group,rel"),
    raising<compile::getQuery_Vir_Sta>("getQuery_Vir_Sta", "compile",
                                       "sTable,virtual,stats,group,rel"),
    raising<compile::getQuery_Fil_Sta>("getQuery_Fil_Sta", "compile",
                                       "sTable,filter,stats,group,rel"),
    raising<compile::getQuery_Vir_Fil_Sta>("getQuery_Vir_Fil_Sta", "compile",
                                           "sTable,virtual,filter,stats,group,rel"),
    raising<compile::getQuery_Field_In>("getQuery_Field_In", "compile", "sTable,rel"),
    resuming<compile::Query_getVirtual>("Query_getVirtual", "compile", "virtual"),
    raising<compile::Query_getfilterNoVir>("Query_getfilterNoVir", "compile", "filter"),
    raising<compile::Query_getfilter>("Query_getfilter", "compile", "filter,virtual"),
    raising<compile::Query_getStats>("Query_getStats", "compile", "sTable,stats,virtual,group,rel"),
    raising<compile::Query_getGroupbyNoVir>("Query_getGroupbyNoVir", "compile", "group"),
    raising<compile::Query_getGroupby>("Query_getGroupby", "compile", "group,virtual"),
    resuming<metadata::getAllFieldID_Query>("getAllFieldID_Query", "metadata", "tableid"),
    resuming<metadata::getTableName_Query>("getTableName_Query", "metadata", "tableid"),
    resuming<metadata::getFieldName_Query>("getFieldName_Query", "metadata", "fieldid"),
    raising<metadata::getZembraID>("getZembraID", "metadata", "tableid"),
    raising<metadata::get2TableRel>("get2TableRel", "metadata", "TableID1,TableID2"),
    raising<metadata::getRelTableID>("getRelTableID", "metadata", "tablename"),
    raising<metadata::verID2ZembraID>("verID2ZembraID", "metadata", "qfid,queryid"),
    resuming<metadata::getFieldDesc>("getFieldDesc", "metadata", "fieldname"),
    resuming<metadata::getTableDesc>("getTableDesc", "metadata", "tablename"),
    resuming<metadata::getRelationTable_Query>("getRelationTable_Query", "metadata", "tableid,rel"),
    resuming<metadata::getQuerySQL>("getQuerySQL", "metadata", "queryid,isInstance"),
    raising<metadata::getQueryAllTitle>("getQueryAllTitle", "metadata", "queryid,isInstance"),
    raising<metadata::getQueryAllCal>("getQueryAllCal", "metadata", "queryid,isInstance"),
    raising<metadata::getQueryAllField>("getQueryAllField", "metadata", "queryid,isInstance"),
    resuming<metadata::KeyField2TableID>("KeyField2TableID", "metadata", "queryid,isInstance"),
    resuming<metadata::getTableListTitle>("getTableListTitle", "metadata", "controlid,isInstance"),
    raising<metadata::SQL2Fields>("SQL2Fields", "metadata", "SQLstr"),
    raising<metadata::getControlSQL1>("getControlSQL1", "metadata", "controlid,isInstance"),
    resuming<metadata::getControlSQL>("getControlSQL", "metadata", "controlid,i,isInstance"),
    resuming<metadata::Control2Field>("Control2Field", "metadata", "controlid,isInstance"),
    resuming<metadata::Control2Fieldid>("Control2Fieldid", "metadata", "controlid,isInstance"),
    resuming<metadata::getQueryKeyField>("getQueryKeyField", "metadata", "queryid,isInstance"),
    raising<metadata::GetQuerySelRel>("GetQuerySelRel", "metadata", "queryid,isInstance"),
    raising<metadata::getQueryFields>("getQueryFields", "metadata",
                                      "queryid,tablename,controlType,isInstance"),
    resuming<metadata::getQueryField>("getQueryField", "metadata", "sql"),
    resuming<metadata::getCalFieldOrder>("getCalFieldOrder", "metadata", "controlid,isInstance"),
    resuming<metadata::getVirtualFields>("getVirtualFields", "metadata", "queryid,isInstance"),
    raising<metadata::CopyQuery>("CopyQuery", "metadata", "queryid"),
    raising<metadata::getAllQueryid>("getAllQueryid", "metadata", "tableid"),
    raising<metadata::DecTableinUse>("DecTableinUse", "metadata", "tableid"),
    // It belongs to these by its subject; it compiles, so its code lies one step up.
    resuming<compile::UpdateQuery>("UpdateQuery", "metadata", "tableid"),
    raising<scheme::ctrlSearch>("ctrlSearch", "scheme", ""),
    raising<scheme::isNotWorkflowChild>("isNotWorkflowChild", "scheme", ""),
    raising<scheme::showLinksq>("showLinksq", "scheme", "styleaa"),
    resuming<scheme::addSearchDlg>("addSearchDlg", "scheme", ""),
    raising<scheme::modisearchdlg>("modisearchdlg", "scheme", ""),
    raising<scheme::addSearchDlg1>("addSearchDlg1", "scheme", ""),
    raising<scheme::addSearchDlg2>("addSearchDlg2", "scheme", ""),
    resuming<scheme::addSearchDlg3>("addSearchDlg3", "scheme", ""),
    resuming<scheme::addSearchDlg4>("addSearchDlg4", "scheme", ""),
    raising<scheme::addSearchDlg5>("addSearchDlg5", "scheme", ""),
    resuming<scheme::previewSearchdlg>("previewSearchdlg", "scheme", ""),
    resuming<scheme::addSearchDlg6>("addSearchDlg6", "scheme", ""),
    resuming<scheme::addSearch>("addSearch", "scheme", ""),
    resuming<scheme::showSearchDlg>("showSearchDlg", "scheme", ""),
    resuming<scheme::delSearch>("delSearch", "scheme", ""),
    resuming<scheme::querycheckselect>("querycheckselect", "scheme", ""),
    raising<control::ctrlSearch_Usrfield>("ctrlSearch_Usrfield", "control", ""),
    resuming<control::delSearch_UsrField>("delSearch_UsrField", "control", ""),
    raising<control::addSearchDlg_UsrField>("addSearchDlg_UsrField", "control", ""),
    raising<control::addSearchDlg_UsrField1>("addSearchDlg_UsrField1", "control", ""),
    raising<control::addSearchDlg_UsrField1_1>("addSearchDlg_UsrField1_1", "control", ""),
    raising<control::addSearchDlg_UsrField1_2>("addSearchDlg_UsrField1_2", "control", ""),
    raising<control::addSearchDlg_UsrField2>("addSearchDlg_UsrField2", "control", ""),
    resuming<control::addSearchDlg_UsrField2_1>("addSearchDlg_UsrField2_1", "control", "id"),
    raising<control::addSearchDlg_UsrField2_2>("addSearchDlg_UsrField2_2", "control", "id"),
    raising<control::addSearchDlg_UsrField2_3>("addSearchDlg_UsrField2_3", "control", "id"),
    resuming<control::addSearchDlg_UsrField3>("addSearchDlg_UsrField3", "control", ""),
    raising<control::savesearch_UsrField>("savesearch_UsrField", "control", ""),
    resuming<control::savesearch_UsrField1>("savesearch_UsrField1", "control", ""),
    resuming<control::savesearch_UsrField2>("savesearch_UsrField2", "control", ""),
    resuming<control::savesearch_UsrField3>("savesearch_UsrField3", "control", ""),
    raising<control::previewSearchdlg_UsrField>("previewSearchdlg_UsrField", "control", ""),
    resuming<control::previewSearchdlg_UsrField1>("previewSearchdlg_UsrField1", "control", ""),
    resuming<control::previewSearchdlg_UsrField2>("previewSearchdlg_UsrField2", "control", ""),
    raising<control::previewSearchdlg_UsrField3>("previewSearchdlg_UsrField3", "control", ""),
    resuming<control::showSearchpreview_UsrField>("showSearchpreview_UsrField", "control", ""),
    resuming<control::showSearchDlg_UsrField>("showSearchDlg_UsrField", "control", ""),
    resuming<control::showSearchDlg_UsrField1>("showSearchDlg_UsrField1", "control", ""),
    resuming<control::showSearchDlg_UsrField2>("showSearchDlg_UsrField2", "control", ""),
    asPage(resuming<control::showSearchDlg_UsrField3>("showSearchDlg_UsrField3", "control", "")),
    raising<control::ctrlSearch_Sysfield>("ctrlSearch_Sysfield", "control", ""),
    resuming<control::delSearch_sysField>("delSearch_sysField", "control", ""),
    raising<control::addsearchdlg_UsrModel>("addsearchdlg_UsrModel", "control", ""),
    raising<control::addSearchDlg_UsrModel1>("addSearchDlg_UsrModel1", "control", ""),
    raising<control::addSearchDlg_UsrModel1_1>("addSearchDlg_UsrModel1_1", "control", ""),
    raising<control::addSearchDlg_UsrModel2>("addSearchDlg_UsrModel2", "control", ""),
    raising<control::addSearchDlg_UsrModel3>("addSearchDlg_UsrModel3", "control", ""),
    raising<control::addSearchDlg_sysfield>("addSearchDlg_sysfield", "control", ""),
    raising<control::addSearchDlg_sysfield1>("addSearchDlg_sysfield1", "control", ""),
    raising<control::addSearchDlg_sysfield1_1>("addSearchDlg_sysfield1_1", "control", ""),
    raising<control::getQueryTable>("getQueryTable", "control", ""),
    raising<control::addSearchDlg_sysField2>("addSearchDlg_sysField2", "control", ""),
    raising<control::addSearchDlg_sysField2_1>("addSearchDlg_sysField2_1", "control", ""),
    raising<control::addSearchDlg_sysField2_2>("addSearchDlg_sysField2_2", "control", ""),
    raising<control::getSaveName>("getSaveName", "control", ""),
    raising<control::savesearch_sysField>("savesearch_sysField", "control", ""),
    resuming<control::savesearch_sysField1>("savesearch_sysField1", "control", ""),
    resuming<control::savesearch_sysField2>("savesearch_sysField2", "control", ""),
    raising<control::previewSearchdlg_sysField>("previewSearchdlg_sysField", "control", ""),
    resuming<control::previewSearchdlg_sysField1>("previewSearchdlg_sysField1", "control", ""),
    resuming<control::previewSearchdlg_sysField2>("previewSearchdlg_sysField2", "control", ""),
    raising<control::showSearchpreview_SysField>("showSearchpreview_SysField", "control", ""),
    resuming<control::showSearchDlg_sysField>("showSearchDlg_sysField", "control", ""),
    resuming<control::showSearchDlg_sysField1>("showSearchDlg_sysField1", "control", ""),
    resuming<control::showSearchDlg_sysField2>("showSearchDlg_sysField2", "control", ""),
    raising<org::getUserNameByID>("getUserNameByID", "org", "userid"),
    raising<org::getUserRank>("getUserRank", "org", ""),
    raising<org::getUserPosition>("getUserPosition", "org", "userid"),
    resuming<org::getUserDeptID>("getUserDeptID", "org", "userid"),
    resuming<org::getUserDeptName>("getUserDeptName", "org", "userid"),
    raising<org::getDeptID>("getDeptID", "org", "iID"),
    resuming<org::getDeptName>("getDeptName", "org", "gID"),
    raising<org::getHeaderTitle>("getHeaderTitle", "org", ""),
    raising<org::RankLimit>("RankLimit", "org", ""),
    raising<org::getGroupID>("getGroupID", "org", ""),
    raising<org::getGroupName>("getGroupName", "org", ""),
    raising<org::getJoinGroupID>("getJoinGroupID", "org", ""),
    raising<org::getGroupLimitSQL>("getGroupLimitSQL", "org", ""),
    raising<org::getZembraGroupList>("getZembraGroupList", "org", "gID"),
    raising<org::getJoinGroupList>("getJoinGroupList", "org", "gID,bolLeft"),
    raising<org::getRankList>("getRankList", "org", "rid"),
    raising<org::getPosition>("getPosition", "org", ""),
    raising<org::getDeptList>("getDeptList", "org", ""),
    raising<org::getUserListGroup>("getUserListGroup", "org", "gID,uid"),
    raising<org::getMenuParentList>("getMenuParentList", "org", "menuID"),
    raising<org::getIconList>("getIconList", "org", "id"),
    raising<org::allowSubActionTest>("allowSubActionTest", "org", "subActionName,outPutHtml"),
    raising<org::allowSubAction>("allowSubAction", "org", "subActionName,outPutHtml"),
    raising<org::allowSubActionHTML>("allowSubActionHTML", "org", "subActionName,outPutHtml"),
    raising<org::allowSubActionTableList>("allowSubActionTableList", "org", "subActionName"),
    raising<workflow::MergeGetMyTaskInFirst>("MergeGetMyTaskInFirst", "workflow", ""),
    raising<workflow::WorkFlowWaitingForDealList>("WorkFlowWaitingForDealList", "workflow", ""),
    raising<workflow::doGetWFIName>("doGetWFIName", "workflow", "iUID,strName,strType,strPara2"),
    raising<workflow::doFindPermissionWFI>("doFindPermissionWFI", "workflow",
                                           "intMenuID,strPara1,strPara2"),
    raising<workflow::getCurrentResultSet>("getCurrentResultSet", "workflow", ""),
    raising<services::TarloCBODataSource>("TarloCBODataSource", "services", "sSQL,sPar"),
    resuming<services::GetComboBoxXMLs>("GetComboBoxXMLs", "services", "sSQL"),
    raising<services::GetRadioOrCheckBoxXML>("GetRadioOrCheckBoxXML", "services", "sSQL"),
    raising<services::TarloDivDialog>("TarloDivDialog", "services",
                                      "id,WinTitle,TopicTitle,WinWidth,WinHeight,WinBody,WinButon"),
    raising<services::getActionHelp>("getActionHelp", "services", "sAction"),
    raising<services::getActionHelpTitle>("getActionHelpTitle", "services", "sAction"),
    raising<services::getUserTableName>("getUserTableName", "services", "sDatabase,showAll"),
    raising<services::getUserFieldName>("getUserFieldName", "services", "sTableName"),
    raising<services::getTableIDField>("getTableIDField", "services", "sTableName"),
    raising<services::getTableIDValue>("getTableIDValue", "services", "sTableName"),
    raising<services::getFieldIDValue>("getFieldIDValue", "services", "sTableName,sFieldName"),
    raising<services::getPolicyInfo>("getPolicyInfo", "services", "strName"),
    // The page head's own question, under the name that other components know.
    raising<scheme::getModuleWorkflow>("isWorkFlowModul", "services", ""),
    raising<services::SendPayment>("SendPayment", "services", "toName,Subject_,Body_"),
    raising<services::SendPassWordEmail>("SendPassWordEmail", "services",
                                         "toName,Subject_S,Body_S"),
    raising<services::TransferFile>("TransferFile", "services", "pathandfilename,filename"),
});

// In the order that the look-up needs. Sorted at the first use: a compiler may give up counting.
const auto& sortedOperations() {
  static const auto sorted = [] {
    auto all = kByFolder;
    std::ranges::sort(all, precedes, &Operation::name);
    return all;
  }();
  return sorted;
}

}  // namespace

std::span<const Operation> operations() {
  return sortedOperations();
}

const Operation* findOperation(std::string_view name) {
  const auto& all = sortedOperations();
  const auto found = std::ranges::lower_bound(all, name, precedes, &Operation::name);
  if (found == all.end() || precedes(name, found->name)) return nullptr;
  return &*found;
}

}  // namespace tarlo::component
