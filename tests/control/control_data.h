#pragma once
// Schemes over the small business, for the controls that hang on them.

#include <string>

#include "support/wizard_support.h"

namespace tarlo::testing {

struct ControlDatabase : WizardDatabase {
  // Orders with their customers: statement, relations, key field.
  std::string addOrders() {
    return addScheme(
        "orders", "Query_Fields,Query_MultiRelSel,Query_HasStatic",
        "'select [Orders].[ID] as [Order.Key],[Orders].[Amount] as [Order.Sum \"net\"],"
        "[Customer].[City] as [Client.Town] from [Customer],[Orders] where "
        "[Orders].[CustID]=[Customer].[ID] and [Customer].[Zembra_Flag]=1 and "
        "[Orders].[Zembra_Flag]=1','5',0");
  }
  // Orders counted by customer: a grouping stands in the way of the key.
  std::string addCounts() {
    return addScheme("counts", "Query_Fields,Query_HasStatic",
                     "'select [Orders].[CustID] as [Order.Cust],COUNT([Orders].[ID]) as "
                     "[Order.Count] from [Orders] group by [Orders].[CustID]',1");
  }
  void askColumns(const std::string& scheme, std::string_view value, std::string_view text) {
    ask("id", scheme);
    ask("realField", value);
    ask("viewField", text);
  }
  // The newest row as one line.
  std::string newest() {
    return rows(
        "select top 1 QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,QF_Relation,"
        "QF_Desc,QF_FieldType,QF_System,Zembra_Flag from Zembra_Query_Field order by QF_ID desc");
  }
  std::string logged() { return rows("select OperateLog_SQL from " + logTable()); }
};

}  // namespace tarlo::testing
