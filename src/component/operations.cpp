#include "component/operations.h"

#include <algorithm>
#include <array>

#include "compile/assembly.h"
#include "compile/computed_fields.h"
#include "compile/field_list.h"
#include "compile/filter.h"
#include "compile/grouping.h"
#include "compile/statistics.h"
#include "component/binding.h"
#include "frame/helpers.h"
#include "metadata/dictionary_lookups.h"
#include "metadata/introspection.h"
#include "metadata/relation_table.h"
#include "metadata/version_lookups.h"
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
    raising<services::TarloCBODataSource>("TarloCBODataSource", "services", "sSQL,sPar"),
    resuming<services::GetComboBoxXMLs>("GetComboBoxXMLs", "services", "sSQL"),
    raising<services::GetRadioOrCheckBoxXML>("GetRadioOrCheckBoxXML", "services", "sSQL"),
    raising<services::TarloDivDialog>("TarloDivDialog", "services",
                                      "id,WinTitle,TopicTitle,WinWidth,WinHeight,WinBody,WinButon"),
    raising<services::getActionHelp>("getActionHelp", "services", "sAction"),
    raising<services::getActionHelpTitle>("getActionHelpTitle", "services", "sAction"),
});

constexpr auto kOperations = [] {
  auto sorted = kByFolder;
  std::ranges::sort(sorted, precedes, &Operation::name);
  return sorted;
}();

// Not before its neighbour: the same name twice.
static_assert(std::ranges::adjacent_find(
                  kOperations,
                  [](std::string_view a, std::string_view b) { return !precedes(a, b); },
                  &Operation::name) == kOperations.end());

}  // namespace

std::span<const Operation> operations() {
  return kOperations;
}

const Operation* findOperation(std::string_view name) {
  const auto found = std::ranges::lower_bound(kOperations, name, precedes, &Operation::name);
  if (found == kOperations.end() || precedes(name, found->name)) return nullptr;
  return &*found;
}

}  // namespace tarlo::component
