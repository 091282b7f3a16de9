#include <fmt/format.h>

#include "embedded_host_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "host/context/content_policy.h"
#include "host/desktop/desktop.h"
#include "host/desktop/desktop_data.h"
#include "variant/convert.h"

namespace tarlo::host {
namespace {

using frame::inPlace;
using frame::PageText;
using frame::Place;

constexpr std::string_view kManagerAddress = "/TarloQuery.Zembra?action=ctrlSearch";

std::string_view greeting(int hour) {
  if (hour < 5) return "夜深了";
  if (hour < 11) return "早上好";
  if (hour < 13) return "中午好";
  if (hour < 18) return "下午好";
  return "晚上好";
}

std::string dateText(const variant::CalendarTime& now, variant::Date date) {
  constexpr std::string_view kDays[] = {"日", "一", "二", "三", "四", "五", "六"};
  // Day 0 of the count, 1899-12-30, was a Saturday.
  const auto weekday = static_cast<std::size_t>((static_cast<long>(date.days) + 6) % 7);
  return fmt::format("{}年{}月{}日 星期{}", now.year, now.month, now.day, kDays[weekday]);
}

std::string dayOf(const std::string& dateTime) {
  return dateTime.substr(0, 10);
}

std::string emptyRow(std::string_view text) {
  return fmt::format("<li class=\"dt-none\">{}</li>\n", inPlace(Place::Encoded, text));
}

// "逾期 3 天" from the days that are left; tasks without a planned end show nothing.
std::string dueHtml(const std::string& daysLeft) {
  if (daysLeft.empty()) return "";
  const int days = variant::toInt32(daysLeft);
  if (days < 0) return fmt::format("<em class=\"dt-late\">逾期 {} 天</em>", -days);
  if (days == 0) return "<em class=\"dt-soon\">今天到期</em>";
  if (days <= 7) return fmt::format("<em class=\"dt-soon\">还剩 {} 天</em>", days);
  return fmt::format("<em>还剩 {} 天</em>", days);
}

std::string tasksHtml(Page& page, int user) {
  const frame::Rows rows =
      frame::rows(page, fmt::format("select top 8 MT_Topic, MT_StartDate, MT_PlanEndDate,"
                                    " DateDiff(d, getdate(), MT_PlanEndDate) as DaysLeft"
                                    " from Zembra_MyTask_Record"
                                    " where Zembra_Flag = 1 and MT_UserID = '{}' and MT_Status = 1"
                                    " and DateDiff(d, MT_StartDate, getdate()) >= 0"
                                    " order by MT_PlanEndDate, Zembra_ID",
                                    user));
  std::string html;
  for (const frame::Row row : rows) {
    html += fmt::format("<li><b>{}</b><span>{} 至 {}</span>{}</li>\n",
                        inPlace(Place::Encoded, row.text(0)),
                        inPlace(Place::Encoded, dayOf(row.text(1))),
                        inPlace(Place::Encoded, dayOf(row.text(2))), dueHtml(row.text(3)));
  }
  return rows.empty() ? emptyRow("没有待处理的任务") : html;
}

// Workflow steps that wait for the user, or for somebody who has handed them over for today.
std::string stepsHtml(Page& page, int user) {
  const frame::Rows rows = frame::rows(
      page,
      fmt::format("select top 8 M.Zembra_ID, N.Menu_Name, A.WFIA_Name, P.WFPS_NoName"
                  " from Zembra_WorkFlowInstance_Main as M, Zembra_WorkFlowInstance_Attribute as A,"
                  " Zembra_WorkFlow_Custom as C, Zembra_Menu as N, Zembra_WorkFlow_PerDot as P"
                  " where M.WFI_InstanceID = A.WFIA_InstanceID and C.Zembra_ID = M.WFI_WorkFlowID"
                  " and N.Menu_AddValue = C.WF_SameFlag and N.Menu_AddType = 1"
                  " and P.Zembra_ID = M.WFI_WorkFlowStepID and M.WFI_Action = 2"
                  " and M.WFI_Keeping = 0 and not M.Zembra_Flag in (0,2,3,4,5)"
                  " and (M.WFI_NeedUser = {0} or M.WFI_NeedUser in (select EPWF_sID"
                  " from Zembra_WFInstance_ExchangePermission where EPWF_rID = {0}"
                  " and getdate() between EPWF_StartDate and EPWF_EndDate))"
                  " order by M.Zembra_ID desc",
                  user));
  std::string html;
  for (const frame::Row row : rows) {
    html += fmt::format(
        "<li><b>{}</b><span>{}</span><em>{}</em></li>\n", inPlace(Place::Encoded, row.text(2)),
        inPlace(Place::Encoded, row.text(1)),
        row.text(3).empty() ? "等待处理" : "等待" + inPlace(Place::Encoded, row.text(3)));
  }
  return rows.empty() ? emptyRow("没有待处理的流程") : html;
}

std::string schemesHtml(Page& page) {
  const frame::Rows rows =
      frame::rows(page,
                  "select top 8 a.Query_ID, a.Query_Name, b.TD_Name, a.Query_System,"
                  " ISNULL(a.Zembra_ModiDate, a.Zembra_WriteDate) as Changed"
                  " from Zembra_Query_Main as a, Zembra_Dict_TableDir as b"
                  " where a.Zembra_Flag <> 0 and a.Query_Dic = b.Zembra_ID"
                  " and a.Query_IsDataAlert = 0"
                  " order by Changed DESC, a.Query_ID DESC");
  std::string html;
  for (const frame::Row row : rows) {
    html += fmt::format(
        "<li><a href=\"#\" data-scheme-id=\"{}\"><b>{}</b></a><span>{} · "
        "{}</span><em>{}</em></li>\n",
        inPlace(Place::Encoded, row.text(0)), inPlace(Place::Encoded, row.text(1)),
        inPlace(Place::Encoded, row.text(2)), row.text(3) == "1" ? "系统" : "用户",
        inPlace(Place::Encoded, dayOf(row.text(4))));
  }
  return rows.empty() ? emptyRow("还没有查询方案") : html;
}

// Schemes are shown to those only who may open their manager.
std::string schemesPanel(Page& page, const std::vector<MenuEntry>& entries) {
  static const PageText panel(embedded::host_pages::find("desktop/start_schemes.html"));
  for (const MenuEntry& entry : entries) {
    if (entry.href != kManagerAddress) continue;
    return panel.fill({{"id", std::to_string(entry.id)}, {"schemes", schemesHtml(page)}});
  }
  return "";
}

}  // namespace

void writeStart(Page& page) {
  const DesktopUser user = currentUser(page);
  const variant::Date date = variant::now();
  const variant::CalendarTime now = variant::calendarOf(date);
  const std::vector<MenuEntry> entries = openEntries(menuTree(page, user.id));
  static const PageText start(embedded::host_pages::find("desktop/start.html"));
  start.write(page.response, {{"scheme", takeStyle(page)},
                              {"nonce", beginOwnPage(page.response)},
                              {"greeting", greeting(now.hour)},
                              {"user", user.name},
                              {"date", dateText(now, date)},
                              {"tasks", tasksHtml(page, user.id)},
                              {"steps", stepsHtml(page, user.id)},
                              {"schemes", schemesPanel(page, entries)},
                              {"cards", menuCardsHtml(entries)}});
}

}  // namespace tarlo::host
