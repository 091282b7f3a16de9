#pragma once
// A small business in memory: contracts with customers, regions and items, and a few of the
// system's own tables.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "text/fold.h"
#include "tsql/catalogue.h"

namespace tarlo::tsql::testing {

inline Column intColumn(std::string name) {
  return {std::move(name), kIntType};
}
inline Column moneyColumn(std::string name) {
  return {std::move(name), decimalType(18, 2)};
}
inline Column dateColumn(std::string name) {
  return {std::move(name), kDateType};
}
inline Column textColumn(std::string name, std::uint16_t length) {
  Type type = kTextType;
  type.length = length;
  return {std::move(name), type};
}
inline Column identityColumn(std::string name) {
  Column column = intColumn(std::move(name));
  column.isIdentity = true;
  column.isNullable = false;
  return column;
}
inline Column generatedColumn(std::string name) {
  Column column = intColumn(std::move(name));
  column.isGenerated = true;
  return column;
}

class FixtureCatalogue : public Catalogue {
 public:
  FixtureCatalogue() {
    add({"Orders",
         {identityColumn("ID"), moneyColumn("Amount"), intColumn("CustID"), intColumn("ShipTo"),
          intColumn("Zembra_Flag")},
         {0}});
    add({"Customer",
         {identityColumn("ID"), textColumn("City", 50), intColumn("RegionID"),
          intColumn("Zembra_Flag")},
         {0}});
    add({"Region", {identityColumn("ID"), textColumn("Name", 50), intColumn("Zembra_Flag")}, {0}});
    add({"UserTb_Contract",
         {identityColumn("Zembra_ID"), textColumn("Title", 50), moneyColumn("Amount"),
          moneyColumn("Discount"), intColumn("Qty"), intColumn("CustID"), intColumn("AgentID"),
          dateColumn("SignDate"), dateColumn("EndDate"), intColumn("Status"),
          textColumn("Memo", 200), intColumn("Zembra_Flag")},
         {0}});
    add({"UserTb_Customer",
         {identityColumn("Zembra_ID"), textColumn("Name", 50), textColumn("City", 50),
          textColumn("Kind", 50), moneyColumn("Credit"), dateColumn("Founded"),
          intColumn("RegionID"), textColumn("Phone", 50), intColumn("Zembra_Flag")},
         {0}});
    add({"UserTb_Region",
         {identityColumn("Zembra_ID"), textColumn("Name", 50), textColumn("Code", 10),
          intColumn("Zembra_Flag")},
         {0}});
    add({"UserTb_Item",
         {identityColumn("Zembra_ID"), intColumn("ContractID"), textColumn("Product", 50),
          intColumn("Qty"), moneyColumn("Price"), intColumn("Zembra_Flag")},
         {0}});
    addSystemTables();
  }

  const Table* findTable(std::string_view name) override {
    const auto found = tables_.find(text::upperName(name));
    return found == tables_.end() ? nullptr : &found->second;
  }
  bool hasProcedure(std::string_view name) override {
    return text::equalsNoCase(name, "Zembra_WorkFlowInstance_IsExistsTempMenu");
  }

  void add(Table table) {
    const std::string key = text::upperName(table.name);
    tables_.insert_or_assign(key, std::move(table));
  }

 private:
  void addSystemTables() {
    add({"Zembra_DataDict_Table",
         {identityColumn("Zembra_ID"), generatedColumn("DDT_ID"), textColumn("DDT_Name", 128),
          textColumn("DDT_CName", 128), intColumn("DDT_DirID"), intColumn("DDT_Status"),
          intColumn("Zembra_Flag")},
         {0}});
    add({"Zembra_OperateLog",
         {identityColumn("OperateLog_ID"), intColumn("OperateLog_UID"),
          intColumn("OperateLog_ModulID"), textColumn("OperateLog_SQL", 0)},
         {0}});
    add({"Zembra_User",
         {identityColumn("User_ID"), textColumn("User_Name", 50), textColumn("User_user", 50),
          intColumn("User_GroupID"), textColumn("User_joinGroupID", 500), intColumn("User_RankID"),
          intColumn("user_position"), intColumn("User_DeptID")},
         {0}});
    // No key: its rows have no order of their own.
    add({"Zembra_Policy", {textColumn("Policy_Name", 100), textColumn("Policy_ParaA", 0)}, {}});
  }

  std::map<std::string, Table> tables_;
};

}  // namespace tarlo::tsql::testing
