#pragma once
// A small business in memory: contracts with customers, regions and items, and a few of the
// system's own tables.

#include <map>
#include <sstream>
#include <string>
#include <string_view>

#include "text/fold.h"
#include "tsql/catalogue.h"

namespace tarlo::tsql::testing {

// Columns "name:kind", parted by blanks: "key" and "as" are integers that the engine numbers and
// computes; "textN" has N characters, "text" no bound; without a kind it is an integer.
inline Table tableOf(const std::string& name, const std::string& columns) {
  Table table{name, {}, {}};
  std::istringstream all(columns);
  for (std::string word; all >> word;) {
    const std::size_t colon = std::min(word.find(':'), word.size());
    const std::string kind = word.substr(std::min(colon + 1, word.size()));
    Column column{word.substr(0, colon), kIntType};
    column.isIdentity = kind == "key";
    column.isNullable = kind != "key";
    column.isGenerated = kind == "as";
    if (kind == "key") table.key.push_back(table.columns.size());
    if (kind == "money") column.type = decimalType(18, 2);
    if (kind == "date") column.type = kDateType;
    if (kind.starts_with("text")) {
      column.type = kTextType;
      column.type.length = static_cast<std::uint16_t>(std::atoi(kind.c_str() + 4));
    }
    table.columns.push_back(std::move(column));
  }
  return table;
}

class FixtureCatalogue : public Catalogue {
 public:
  FixtureCatalogue() {
    add("Orders", "ID:key Amount:money CustID ShipTo Zembra_Flag");
    add("Customer", "ID:key City:text50 RegionID Zembra_Flag");
    add("Region", "ID:key Name:text50 Zembra_Flag");
    add("UserTb_Contract",
        "Zembra_ID:key Title:text50 Amount:money Discount:money Qty CustID AgentID SignDate:date "
        "EndDate:date Status Memo:text200 Zembra_Flag");
    add("UserTb_Customer",
        "Zembra_ID:key Name:text50 City:text50 Kind:text50 Credit:money Founded:date RegionID "
        "Phone:text50 Zembra_Flag");
    add("UserTb_Region", "Zembra_ID:key Name:text50 Code:text10 Zembra_Flag");
    add("UserTb_Item", "Zembra_ID:key ContractID Product:text50 Qty Price:money Zembra_Flag");
    add("Zembra_DataDict_Table",
        "Zembra_ID:key DDT_ID:as DDT_Name:text128 DDT_CName:text128 DDT_DirID DDT_Status "
        "Zembra_Flag");
    // No key: its rows have no order of their own.
    add("Zembra_Policy", "Policy_Name:text100 Policy_ParaA:text");
  }

  const Table* findTable(std::string_view name) override {
    const auto found = tables_.find(text::upperName(name));
    return found == tables_.end() ? nullptr : &found->second;
  }
  bool hasProcedure(std::string_view name) override {
    return text::equalsNoCase(name, "Zembra_WorkFlowInstance_IsExistsTempMenu");
  }

 private:
  void add(const std::string& name, const std::string& columns) {
    tables_.emplace(text::upperName(name), tableOf(name, columns));
  }

  std::map<std::string, Table> tables_;
};

}  // namespace tarlo::tsql::testing
