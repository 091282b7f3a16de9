#pragma once
// Schemes over the small business, for the controls that hang on them.

#include <gtest/gtest.h>

#include <string>

#include "frame/dialog_frame.h"
#include "scheme/page_frame.h"
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
    ask({{"id", scheme}, {"realField", value}, {"viewField", text}});
  }
  // The newest row as one line.
  std::string newest() {
    return rows(
        "select top 1 QF_Name,QF_NameID,QF_Field,QF_CField,QF_Table,QF_CTable,QF_Relation,"
        "QF_Desc,QF_FieldType,QF_System,Zembra_Flag from Zembra_Query_Field order by QF_ID desc");
  }
  std::string logged() { return rows("select OperateLog_SQL from " + logTable()); }
};

// What a page shows between a head and a foot, which have tests of their own.
inline std::string withoutFrame(const std::string& page, const std::string& head,
                                const std::string& foot) {
  EXPECT_TRUE(page.starts_with(head) && page.ends_with(foot)) << page;
  if (page.size() < head.size() + foot.size()) return page;
  return page.substr(head.size(), page.size() - head.size() - foot.size());
}

// A page of a wizard's frame.
template <class Step>
std::string inFrame(DatabasePage& data, Step&& step) {
  const std::string page = data.writtenBy(std::forward<Step>(step));
  const std::string head = data.writtenBy([&] { frame::writeStepHead(data.page()); });
  return withoutFrame(page, head, "</body>\r\n</html>\r\n");
}

// A full page.
template <class Step>
std::string inPage(DatabasePage& data, std::string_view title, Step&& step) {
  const std::string page = data.writtenBy(std::forward<Step>(step));
  const std::string head = data.writtenBy([&] { scheme::writePageHead(data.page(), title); });
  const std::string foot = data.writtenBy([&] { scheme::writePageFoot(data.page()); });
  return withoutFrame(page, head, foot);
}

// A page in a dialog; "" for the title of one that leaves its head out.
template <class Step>
std::string inDialog(DatabasePage& data, std::string_view title, Step&& step) {
  const std::string page = data.writtenBy(std::forward<Step>(step));
  std::string head;
  if (!title.empty()) {
    head = data.writtenBy(
        [&] { frame::writeDialogHead(data.page(), title, frame::DialogBody::WindowColour); });
  }
  return withoutFrame(page, head, data.writtenBy([&] { frame::writeDialogFoot(data.page()); }));
}

}  // namespace tarlo::testing
