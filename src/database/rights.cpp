#include "database/rights.h"

#include <algorithm>
#include <map>

#include "text/fold.h"

namespace tarlo::database {
namespace {

using enum TableGroup;

struct PlatformTable {
  std::string_view name;  // folded
  TableGroup group;
};

constexpr PlatformTable kPlatformTables[] = {
    {"zembra_datadict_field", Dictionary},
    {"zembra_datadict_relation", Dictionary},
    {"zembra_datadict_table", Dictionary},
    {"zembra_dict_fieldtype", Dictionary},
    {"zembra_dict_tabledir", Dictionary},
    {"zembra_exchangepermission", Workflow},
    {"zembra_functions", Help},
    {"zembra_group", Organisation},
    {"zembra_icon", Organisation},
    {"zembra_menu", Menu},
    {"zembra_mytask_record", Workflow},
    {"zembra_operatelog", OperationLog},
    {"zembra_permission", Menu},
    {"zembra_policy", Policy},
    {"zembra_quarters", Organisation},
    {"zembra_query_field", Controls},
    {"zembra_query_field_ver2", Controls},
    {"zembra_query_main", Schemes},
    {"zembra_query_type", Controls},
    {"zembra_query_ver2", Schemes},
    {"zembra_rank", Organisation},
    {"zembra_subhelp", Help},
    {"zembra_temp_tarlotable", DrawnGrids},
    {"zembra_user", Organisation},
    {"zembra_wfinstance_exchangepermission", Workflow},
    {"zembra_workflow_custom", Workflow},
    {"zembra_workflow_perdot", Workflow},
    {"zembra_workflowinstance_attribute", Workflow},
    {"zembra_workflowinstance_handle", Workflow},
    {"zembra_workflowinstance_main", Workflow},
};
static_assert(std::ranges::is_sorted(kPlatformTables, {}, &PlatformTable::name));

constexpr std::string_view kPlatformPrefix = "zembra_";
constexpr std::string_view kServerPrefix = "tarlo_";
constexpr std::string_view kEnginePrefix = "sqlite_";

}  // namespace

TableGroup groupOf(std::string_view table) {
  const std::string name = text::foldedName(table);
  if (name.starts_with(kServerPrefix)) return Server;
  if (name.starts_with(kEnginePrefix)) return Platform;
  if (!name.starts_with(kPlatformPrefix)) return Business;
  const auto* found = std::ranges::lower_bound(kPlatformTables, name, {}, &PlatformTable::name);
  return found != std::end(kPlatformTables) && found->name == name ? found->group : Platform;
}

std::string_view nameOf(TableGroup group) {
  switch (group) {
    case Business:
      return "business tables";
    case Dictionary:
      return "dictionary";
    case Schemes:
      return "schemes";
    case Controls:
      return "controls";
    case Organisation:
      return "organisation";
    case Menu:
      return "menu and permissions";
    case Workflow:
      return "workflow";
    case Help:
      return "help texts";
    case Policy:
      return "policies";
    case OperationLog:
      return "operation log";
    case DrawnGrids:
      return "drawn lists";
    case Platform:
      return "other platform tables";
    case Server:
      return "the server's own";
  }
  return {};
}

StatementRights StatementRights::everything() {
  const TableGroups all = {Business, Dictionary, Schemes, Controls,     Organisation, Menu,
                           Workflow, Help,       Policy,  OperationLog, DrawnGrids,   Platform};
  return {all, all, true, false, {}};
}

void Footprint::add(tsql::Access access, std::string_view name) {
  Touch touch{access, text::foldedName(name)};
  if (std::ranges::find(touches, touch) != touches.end()) return;
  if (access == tsql::Access::Execute) {
    executes = true;
  } else {
    TableGroups& groups = access == tsql::Access::Write    ? writes
                          : access == tsql::Access::Delete ? deletes
                                                           : reads;
    groups.add(groupOf(name));
  }
  touches.push_back(std::move(touch));
}

bool Footprint::isWithin(const StatementRights& rights) const {
  return (rights.reads | rights.writes).containsAll(reads) && rights.writes.containsAll(writes) &&
         rights.deletes.containsAll(deletes) && (rights.executes || !executes);
}

bool covers(const StatementRights& rights, tsql::Access access, std::string_view name) {
  Footprint one;
  one.add(access, name);
  return one.isWithin(rights);
}

}  // namespace tarlo::database
