#include "component/operations.h"

#include <algorithm>
#include <array>

#include "compile/operations.h"
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
#include "metadata/operations.h"
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
#include "text/fold.h"
#include "workflow/panels.h"

namespace tarlo::component {
namespace {

using database::StatementRights;
using database::TableGroup;
using database::TableGroups;
using frame::Access;
using frame::Caller;
using frame::Manager;
using frame::SubAction;

constexpr Access kProgram = {Caller::Program};
constexpr Access kSignedIn = {Caller::SignedIn};
constexpr Access kDesigner = {Caller::Designer};
constexpr Access kAdministrator = {Caller::Administrator};

constexpr Access schemes(SubAction subAction) {
  return frame::manages(Manager::Schemes, subAction);
}
constexpr Access userControls(SubAction subAction) {
  return frame::manages(Manager::UserControls, subAction);
}
constexpr Access templateControls(SubAction subAction) {
  return frame::manages(Manager::TemplateControls, subAction);
}

constexpr StatementRights reading(TableGroups reads, TableGroups writes = {}) {
  return {reads, writes, false, true};
}

// What the families of operations put into statements of their own.
constexpr TableGroups kDefinitions = {TableGroup::Dictionary, TableGroup::Schemes,
                                      TableGroup::Controls};
constexpr TableGroups kFrame = {TableGroup::Menu, TableGroup::Workflow, TableGroup::Policy};
constexpr TableGroups kDrawn = {TableGroup::DrawnGrids};

constexpr StatementRights kNothing = {};
constexpr StatementRights kDictionary = reading({TableGroup::Dictionary});
constexpr StatementRights kIntrospects = reading(kDefinitions);
constexpr StatementRights kFreezes = reading({TableGroup::Schemes}, {TableGroup::Schemes});
constexpr StatementRights kPropagates =
    reading({TableGroup::Dictionary, TableGroup::Schemes}, {TableGroup::Schemes});
constexpr StatementRights kPageFrame = reading(kFrame);
constexpr StatementRights kManagerPage = reading(kDefinitions | kFrame);
// What a designer posts stands in the look-ups of the compiler, so these rights hold nothing that a
// designer may not see.
constexpr StatementRights kSchemeWizard =
    reading({TableGroup::Dictionary, TableGroup::Schemes, TableGroup::Help});
constexpr StatementRights kSavesScheme =
    reading({TableGroup::Dictionary, TableGroup::Schemes}, {TableGroup::Schemes});
// Their controls go with them.
constexpr StatementRights kDeletesSchemes =
    reading({}, {TableGroup::Schemes, TableGroup::Controls});
constexpr StatementRights kControlWizard = reading(kDefinitions | TableGroups{TableGroup::Help});
constexpr StatementRights kSavesControl = reading(kDefinitions, {TableGroup::Controls});
constexpr StatementRights kShowsControl = reading(kDefinitions);
constexpr StatementRights kOrganisation = reading({TableGroup::Organisation, TableGroup::Menu});
constexpr StatementRights kWorkflow = {{TableGroup::Workflow, TableGroup::Menu}, {}, true, true};
constexpr StatementRights kDrawnGrids = reading(kDrawn);
constexpr StatementRights kHelp = reading({TableGroup::Help});
constexpr StatementRights kPolicy = reading({TableGroup::Policy});
// The statement is a program's own, which answers for what it reads; it only ever reads.
constexpr StatementRights kCallersStatement = {
    {TableGroup::Business, TableGroup::Dictionary, TableGroup::Schemes, TableGroup::Controls,
     TableGroup::Organisation, TableGroup::Menu, TableGroup::Workflow, TableGroup::Help,
     TableGroup::Policy, TableGroup::Platform},
    {},
    false,
    false};

// Written folder by folder, for people; looked up by folded name.
constexpr auto kByFolder = std::to_array<Operation>({
    raising<frame::isValidConnect>("isValidConnect", "frame", "", kProgram, kNothing),
    raising<frame::ServerHTMLEncode>("ServerHTMLEncode", "frame", "strA", kProgram, kNothing),
    raising<frame::preSQLFormat>("preSQLFormat", "frame", "s,bolnull", kProgram, kNothing),
    raising<frame::replaceChar>("replaceChar", "frame", "strName", kProgram, kNothing),
    raising<frame::validINT>("validINT", "frame", "iINT", kProgram, kNothing),
    raising<frame::isNothing>("isNothing", "frame", "sStr", kProgram, kNothing),
    raising<frame::getDateTime>("getDateTime", "frame", "", kSignedIn, kNothing),
    raising<compile::getQuery_None>("getQuery_None", "compile", "sTable,rel", kProgram,
                                    kDictionary),
    raising<compile::getQuery_Vir>("getQuery_Vir", "compile", "sTable,virtual,rel", kProgram,
                                   kDictionary),
    raising<compile::getQuery_Fil>("getQuery_Fil", "compile", "sTable,filter,rel", kProgram,
                                   kDictionary),
    raising<compile::getQuery_Vir_Fil>("getQuery_Vir_Fil", "compile", "sTable,virtual,filter,rel",
                                       kProgram, kDictionary),
    raising<compile::getQuery_Sta>("getQuery_Sta", "compile", "sTable,stats,group,rel", kProgram,
                                   kDictionary),
    raising<compile::getQuery_Vir_Sta>("getQuery_Vir_Sta", "compile",
                                       "sTable,virtual,stats,group,rel", kProgram, kDictionary),
    raising<compile::getQuery_Fil_Sta>("getQuery_Fil_Sta", "compile",
                                       "sTable,filter,stats,group,rel", kProgram, kDictionary),
    raising<compile::getQuery_Vir_Fil_Sta>("getQuery_Vir_Fil_Sta", "compile",
                                           "sTable,virtual,filter,stats,group,rel", kProgram,
                                           kDictionary),
    raising<compile::getQuery_Field_In>("getQuery_Field_In", "compile", "sTable,rel", kProgram,
                                        kDictionary),
    resuming<compile::Query_getVirtual>("Query_getVirtual", "compile", "virtual", kProgram,
                                        kDictionary),
    raising<compile::Query_getfilterNoVir>("Query_getfilterNoVir", "compile", "filter", kProgram,
                                           kDictionary),
    raising<compile::Query_getfilter>("Query_getfilter", "compile", "filter,virtual", kProgram,
                                      kDictionary),
    raising<compile::Query_getStats>("Query_getStats", "compile", "sTable,stats,virtual,group,rel",
                                     kProgram, kDictionary),
    raising<compile::Query_getGroupbyNoVir>("Query_getGroupbyNoVir", "compile", "group", kProgram,
                                            kDictionary),
    raising<compile::Query_getGroupby>("Query_getGroupby", "compile", "group,virtual", kProgram,
                                       kDictionary),
    resuming<metadata::getAllFieldID_Query>("getAllFieldID_Query", "metadata", "tableid", kProgram,
                                            kDictionary),
    resuming<metadata::getTableName_Query>("getTableName_Query", "metadata", "tableid", kProgram,
                                           kDictionary),
    resuming<metadata::getFieldName_Query>("getFieldName_Query", "metadata", "fieldid", kProgram,
                                           kDictionary),
    raising<metadata::getZembraID>("getZembraID", "metadata", "tableid", kProgram, kDictionary),
    raising<metadata::get2TableRel>("get2TableRel", "metadata", "TableID1,TableID2", kProgram,
                                    kDictionary),
    raising<metadata::getRelTableID>("getRelTableID", "metadata", "tablename", kProgram,
                                     kDictionary),
    raising<metadata::verID2ZembraID>("verID2ZembraID", "metadata", "qfid,queryid", kProgram,
                                      kIntrospects),
    resuming<metadata::getFieldDesc>("getFieldDesc", "metadata", "fieldname", kProgram,
                                     kDictionary),
    resuming<metadata::getTableDesc>("getTableDesc", "metadata", "tablename", kProgram,
                                     kDictionary),
    resuming<metadata::getRelationTable_Query>("getRelationTable_Query", "metadata", "tableid,rel",
                                               kProgram, kDictionary),
    resuming<metadata::getQuerySQL>("getQuerySQL", "metadata", "queryid,isInstance", kProgram,
                                    kIntrospects),
    raising<metadata::getQueryAllTitle>("getQueryAllTitle", "metadata", "queryid,isInstance",
                                        kProgram, kIntrospects),
    raising<metadata::getQueryAllCal>("getQueryAllCal", "metadata", "queryid,isInstance", kProgram,
                                      kIntrospects),
    raising<metadata::getQueryAllField>("getQueryAllField", "metadata", "queryid,isInstance",
                                        kProgram, kIntrospects),
    resuming<metadata::KeyField2TableID>("KeyField2TableID", "metadata", "queryid,isInstance",
                                         kProgram, kIntrospects),
    resuming<metadata::getTableListTitle>("getTableListTitle", "metadata", "controlid,isInstance",
                                          kProgram, kIntrospects),
    raising<metadata::SQL2Fields>("SQL2Fields", "metadata", "SQLstr", kProgram, kNothing),
    raising<metadata::getControlSQL1>("getControlSQL1", "metadata", "controlid,isInstance",
                                      kProgram, kIntrospects),
    resuming<metadata::getControlSQL>("getControlSQL", "metadata", "controlid,i,isInstance",
                                      kProgram, kIntrospects),
    resuming<metadata::Control2Field>("Control2Field", "metadata", "controlid,isInstance", kProgram,
                                      kIntrospects),
    resuming<metadata::Control2Fieldid>("Control2Fieldid", "metadata", "controlid,isInstance",
                                        kProgram, kIntrospects),
    resuming<metadata::getQueryKeyField>("getQueryKeyField", "metadata", "queryid,isInstance",
                                         kProgram, kIntrospects),
    raising<metadata::GetQuerySelRel>("GetQuerySelRel", "metadata", "queryid,isInstance", kProgram,
                                      kIntrospects),
    raising<metadata::getQueryFields>("getQueryFields", "metadata",
                                      "queryid,tablename,controlType,isInstance", kProgram,
                                      kIntrospects),
    resuming<metadata::getQueryField>("getQueryField", "metadata", "sql", kProgram, kNothing),
    resuming<metadata::getCalFieldOrder>("getCalFieldOrder", "metadata", "controlid,isInstance",
                                         kProgram, kIntrospects),
    resuming<metadata::getVirtualFields>("getVirtualFields", "metadata", "queryid,isInstance",
                                         kProgram, kIntrospects),
    raising<metadata::CopyQuery>("CopyQuery", "metadata", "queryid", kProgram, kFreezes),
    raising<metadata::getAllQueryid>("getAllQueryid", "metadata", "tableid", kProgram,
                                     kIntrospects),
    raising<metadata::DecTableinUse>("DecTableinUse", "metadata", "tableid", kProgram,
                                     kIntrospects),
    // It belongs to these by its subject; it compiles, so its code lies one step up.
    resuming<compile::UpdateQuery>("UpdateQuery", "metadata", "tableid", kAdministrator,
                                   kPropagates),
    raising<scheme::ctrlSearch>("ctrlSearch", "scheme", "", schemes(SubAction::Browse),
                                kManagerPage),
    raising<scheme::isNotWorkflowChild>("isNotWorkflowChild", "scheme", "", kProgram, kPageFrame),
    raising<scheme::showLinksq>("showLinksq", "scheme", "styleaa", kProgram, kPageFrame),
    resuming<scheme::addSearchDlg>("addSearchDlg", "scheme", "", schemes(SubAction::AddOrModify),
                                   kSchemeWizard),
    raising<scheme::modisearchdlg>("modisearchdlg", "scheme", "", schemes(SubAction::Modify),
                                   kSchemeWizard),
    raising<scheme::addSearchDlg1>("addSearchDlg1", "scheme", "", schemes(SubAction::AddOrModify),
                                   kSchemeWizard),
    raising<scheme::addSearchDlg2>("addSearchDlg2", "scheme", "", schemes(SubAction::AddOrModify),
                                   kSchemeWizard),
    resuming<scheme::addSearchDlg3>("addSearchDlg3", "scheme", "", schemes(SubAction::AddOrModify),
                                    kSchemeWizard),
    resuming<scheme::addSearchDlg4>("addSearchDlg4", "scheme", "", schemes(SubAction::AddOrModify),
                                    kSchemeWizard),
    raising<scheme::addSearchDlg5>("addSearchDlg5", "scheme", "", schemes(SubAction::AddOrModify),
                                   kSchemeWizard),
    resuming<scheme::previewSearchdlg>("previewSearchdlg", "scheme", "",
                                       schemes(SubAction::AddOrModify), kSchemeWizard),
    resuming<scheme::addSearchDlg6>("addSearchDlg6", "scheme", "", schemes(SubAction::AddOrModify),
                                    kSchemeWizard),
    resuming<scheme::addSearch>("addSearch", "scheme", "", schemes(SubAction::AddOrModify),
                                kSavesScheme),
    resuming<scheme::showSearchDlg>("showSearchDlg", "scheme", "", schemes(SubAction::Preview),
                                    kIntrospects),
    resuming<scheme::delSearch>("delSearch", "scheme", "", schemes(SubAction::Delete),
                                kDeletesSchemes),
    resuming<scheme::querycheckselect>("querycheckselect", "scheme", "", schemes(SubAction::Browse),
                                       kDictionary),
    raising<control::ctrlSearch_Usrfield>("ctrlSearch_Usrfield", "control", "",
                                          userControls(SubAction::Browse), kManagerPage),
    resuming<control::delSearch_UsrField>("delSearch_UsrField", "control", "",
                                          userControls(SubAction::Delete), kSavesControl),
    raising<control::addSearchDlg_UsrField>("addSearchDlg_UsrField", "control", "",
                                            userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField1>("addSearchDlg_UsrField1", "control", "",
                                             userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField1_1>("addSearchDlg_UsrField1_1", "control", "",
                                               userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField1_2>("addSearchDlg_UsrField1_2", "control", "",
                                               userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField2>("addSearchDlg_UsrField2", "control", "",
                                             userControls(SubAction::Add), kControlWizard),
    resuming<control::addSearchDlg_UsrField2_1>("addSearchDlg_UsrField2_1", "control", "id",
                                                userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField2_2>("addSearchDlg_UsrField2_2", "control", "id",
                                               userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrField2_3>("addSearchDlg_UsrField2_3", "control", "id",
                                               userControls(SubAction::Add), kControlWizard),
    resuming<control::addSearchDlg_UsrField3>("addSearchDlg_UsrField3", "control", "",
                                              userControls(SubAction::Add), kControlWizard),
    raising<control::savesearch_UsrField>("savesearch_UsrField", "control", "",
                                          userControls(SubAction::Add), kSavesControl),
    resuming<control::savesearch_UsrField1>("savesearch_UsrField1", "control", "",
                                            userControls(SubAction::Add), kSavesControl),
    resuming<control::savesearch_UsrField2>("savesearch_UsrField2", "control", "",
                                            userControls(SubAction::Add), kSavesControl),
    resuming<control::savesearch_UsrField3>("savesearch_UsrField3", "control", "",
                                            userControls(SubAction::Add), kSavesControl),
    raising<control::previewSearchdlg_UsrField>("previewSearchdlg_UsrField", "control", "",
                                                userControls(SubAction::Add), kControlWizard),
    resuming<control::previewSearchdlg_UsrField1>("previewSearchdlg_UsrField1", "control", "",
                                                  userControls(SubAction::Add), kControlWizard),
    resuming<control::previewSearchdlg_UsrField2>("previewSearchdlg_UsrField2", "control", "",
                                                  userControls(SubAction::Add), kControlWizard),
    raising<control::previewSearchdlg_UsrField3>("previewSearchdlg_UsrField3", "control", "",
                                                 userControls(SubAction::Add), kControlWizard),
    resuming<control::showSearchpreview_UsrField>("showSearchpreview_UsrField", "control", "",
                                                  userControls(SubAction::Add), kControlWizard),
    resuming<control::showSearchDlg_UsrField>("showSearchDlg_UsrField", "control", "",
                                              userControls(SubAction::Preview), kShowsControl),
    resuming<control::showSearchDlg_UsrField1>("showSearchDlg_UsrField1", "control", "",
                                               userControls(SubAction::Preview), kShowsControl),
    resuming<control::showSearchDlg_UsrField2>("showSearchDlg_UsrField2", "control", "",
                                               userControls(SubAction::Preview), kShowsControl),
    asPage(resuming<control::showSearchDlg_UsrField3>(
        "showSearchDlg_UsrField3", "control", "", userControls(SubAction::Preview), kShowsControl)),
    raising<control::ctrlSearch_Sysfield>("ctrlSearch_Sysfield", "control", "",
                                          templateControls(SubAction::Browse), kManagerPage),
    resuming<control::delSearch_sysField>("delSearch_sysField", "control", "",
                                          templateControls(SubAction::Delete), kSavesControl),
    raising<control::addsearchdlg_UsrModel>("addsearchdlg_UsrModel", "control", "",
                                            userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrModel1>("addSearchDlg_UsrModel1", "control", "",
                                             userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrModel1_1>("addSearchDlg_UsrModel1_1", "control", "",
                                               userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrModel2>("addSearchDlg_UsrModel2", "control", "",
                                             userControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_UsrModel3>("addSearchDlg_UsrModel3", "control", "",
                                             userControls(SubAction::Add), kSavesControl),
    raising<control::addSearchDlg_sysfield>("addSearchDlg_sysfield", "control", "",
                                            templateControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_sysfield1>("addSearchDlg_sysfield1", "control", "",
                                             templateControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_sysfield1_1>("addSearchDlg_sysfield1_1", "control", "",
                                               templateControls(SubAction::Add), kControlWizard),
    raising<control::getQueryTable>("getQueryTable", "control", "", kDesigner, kNothing),
    raising<control::addSearchDlg_sysField2>("addSearchDlg_sysField2", "control", "",
                                             templateControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_sysField2_1>("addSearchDlg_sysField2_1", "control", "",
                                               templateControls(SubAction::Add), kControlWizard),
    raising<control::addSearchDlg_sysField2_2>("addSearchDlg_sysField2_2", "control", "",
                                               templateControls(SubAction::Add), kControlWizard),
    raising<control::getSaveName>("getSaveName", "control", "", kDesigner, kNothing),
    raising<control::savesearch_sysField>("savesearch_sysField", "control", "",
                                          templateControls(SubAction::Add), kSavesControl),
    resuming<control::savesearch_sysField1>("savesearch_sysField1", "control", "",
                                            templateControls(SubAction::Add), kSavesControl),
    resuming<control::savesearch_sysField2>("savesearch_sysField2", "control", "",
                                            templateControls(SubAction::Add), kSavesControl),
    raising<control::previewSearchdlg_sysField>("previewSearchdlg_sysField", "control", "",
                                                templateControls(SubAction::Add), kControlWizard),
    resuming<control::previewSearchdlg_sysField1>("previewSearchdlg_sysField1", "control", "",
                                                  templateControls(SubAction::Add), kControlWizard),
    resuming<control::previewSearchdlg_sysField2>("previewSearchdlg_sysField2", "control", "",
                                                  templateControls(SubAction::Add), kControlWizard),
    raising<control::showSearchpreview_SysField>("showSearchpreview_SysField", "control", "",
                                                 templateControls(SubAction::Preview),
                                                 kShowsControl),
    resuming<control::showSearchDlg_sysField>("showSearchDlg_sysField", "control", "",
                                              templateControls(SubAction::Preview), kShowsControl),
    resuming<control::showSearchDlg_sysField1>("showSearchDlg_sysField1", "control", "",
                                               templateControls(SubAction::Preview), kShowsControl),
    resuming<control::showSearchDlg_sysField2>("showSearchDlg_sysField2", "control", "",
                                               templateControls(SubAction::Preview), kShowsControl),
    raising<org::getUserNameByID>("getUserNameByID", "org", "userid", kProgram, kOrganisation),
    raising<org::getUserRank>("getUserRank", "org", "", kProgram, kOrganisation),
    raising<org::getUserPosition>("getUserPosition", "org", "userid", kProgram, kOrganisation),
    resuming<org::getUserDeptID>("getUserDeptID", "org", "userid", kProgram, kOrganisation),
    resuming<org::getUserDeptName>("getUserDeptName", "org", "userid", kProgram, kOrganisation),
    raising<org::getDeptID>("getDeptID", "org", "iID", kProgram, kOrganisation),
    resuming<org::getDeptName>("getDeptName", "org", "gID", kProgram, kOrganisation),
    raising<org::getHeaderTitle>("getHeaderTitle", "org", "", kProgram, kOrganisation),
    raising<org::RankLimit>("RankLimit", "org", "", kProgram, kOrganisation),
    raising<org::getGroupID>("getGroupID", "org", "", kProgram, kOrganisation),
    raising<org::getGroupName>("getGroupName", "org", "", kProgram, kOrganisation),
    raising<org::getJoinGroupID>("getJoinGroupID", "org", "", kProgram, kOrganisation),
    raising<org::getGroupLimitSQL>("getGroupLimitSQL", "org", "", kProgram, kOrganisation),
    raising<org::getZembraGroupList>("getZembraGroupList", "org", "gID", kProgram, kOrganisation),
    raising<org::getJoinGroupList>("getJoinGroupList", "org", "gID,bolLeft", kProgram,
                                   kOrganisation),
    raising<org::getRankList>("getRankList", "org", "rid", kProgram, kOrganisation),
    raising<org::getPosition>("getPosition", "org", "", kProgram, kOrganisation),
    raising<org::getDeptList>("getDeptList", "org", "", kProgram, kOrganisation),
    raising<org::getUserListGroup>("getUserListGroup", "org", "gID,uid", kProgram, kOrganisation),
    raising<org::getMenuParentList>("getMenuParentList", "org", "menuID", kProgram, kOrganisation),
    raising<org::getIconList>("getIconList", "org", "id", kProgram, kOrganisation),
    raising<org::allowSubActionTest>("allowSubActionTest", "org", "subActionName,outPutHtml",
                                     kProgram, kOrganisation),
    raising<org::allowSubAction>("allowSubAction", "org", "subActionName,outPutHtml", kProgram,
                                 kOrganisation),
    raising<org::allowSubActionHTML>("allowSubActionHTML", "org", "subActionName,outPutHtml",
                                     kProgram, kOrganisation),
    raising<org::allowSubActionTableList>("allowSubActionTableList", "org", "subActionName",
                                          kProgram, kOrganisation),
    raising<workflow::MergeGetMyTaskInFirst>("MergeGetMyTaskInFirst", "workflow", "", kSignedIn,
                                             kWorkflow),
    raising<workflow::WorkFlowWaitingForDealList>("WorkFlowWaitingForDealList", "workflow", "",
                                                  kSignedIn, kWorkflow),
    raising<workflow::doGetWFIName>("doGetWFIName", "workflow", "iUID,strName,strType,strPara2",
                                    kProgram, kWorkflow),
    raising<workflow::doFindPermissionWFI>("doFindPermissionWFI", "workflow",
                                           "intMenuID,strPara1,strPara2", kProgram, kWorkflow),
    raising<workflow::getCurrentResultSet>("getCurrentResultSet", "workflow", "", kProgram,
                                           kDrawnGrids),
    raising<services::TarloCBODataSource>("TarloCBODataSource", "services", "sSQL,sPar", kProgram,
                                          kCallersStatement),
    resuming<services::GetComboBoxXMLs>("GetComboBoxXMLs", "services", "sSQL", kProgram,
                                        kCallersStatement),
    raising<services::GetRadioOrCheckBoxXML>("GetRadioOrCheckBoxXML", "services", "sSQL", kProgram,
                                             kCallersStatement),
    raising<services::TarloDivDialog>("TarloDivDialog", "services",
                                      "id,WinTitle,TopicTitle,WinWidth,WinHeight,WinBody,WinButon",
                                      kProgram, kNothing),
    raising<services::getActionHelp>("getActionHelp", "services", "sAction", kProgram, kHelp),
    raising<services::getActionHelpTitle>("getActionHelpTitle", "services", "sAction", kProgram,
                                          kHelp),
    raising<services::getUserTableName>("getUserTableName", "services", "sDatabase,showAll",
                                        kProgram, kDictionary),
    raising<services::getUserFieldName>("getUserFieldName", "services", "sTableName", kProgram,
                                        kDictionary),
    raising<services::getTableIDField>("getTableIDField", "services", "sTableName", kProgram,
                                       kDictionary),
    raising<services::getTableIDValue>("getTableIDValue", "services", "sTableName", kProgram,
                                       kDictionary),
    raising<services::getFieldIDValue>("getFieldIDValue", "services", "sTableName,sFieldName",
                                       kProgram, kDictionary),
    raising<services::getPolicyInfo>("getPolicyInfo", "services", "strName", kProgram, kPolicy),
    // The page head's own question, under the name that other components know.
    raising<scheme::getModuleWorkflow>("isWorkFlowModul", "services", "", kProgram, kPageFrame),
    raising<services::SendPayment>("SendPayment", "services", "toName,Subject_,Body_", kProgram,
                                   kNothing),
    raising<services::SendPassWordEmail>("SendPassWordEmail", "services", "toName,Subject_S,Body_S",
                                         kProgram, kPolicy),
    raising<services::TransferFile>("TransferFile", "services", "pathandfilename,filename",
                                    kProgram, kNothing),
});

// In the order that the look-up needs. Sorted at the first use: a compiler may give up counting.
const auto& sortedOperations() {
  static const auto sorted = [] {
    auto all = kByFolder;
    std::ranges::sort(all, text::precedesNoCase, &Operation::name);
    return all;
  }();
  return sorted;
}

}  // namespace

bool changesData(const StatementRights& rights) {
  return !rights.writes.empty();
}

bool changesData(const Operation& operation) {
  return changesData(operation.rights);
}

std::span<const Operation> operations() {
  return sortedOperations();
}

const Operation* findOperation(std::string_view name) {
  const auto& all = sortedOperations();
  const auto found = std::ranges::lower_bound(all, name, text::precedesNoCase, &Operation::name);
  if (found == all.end() || text::precedesNoCase(name, found->name)) return nullptr;
  return &*found;
}

}  // namespace tarlo::component
