#include "scheme/wizard_extras.h"

#include <fmt/format.h>

#include <cstdint>

#include "embedded_scheme_pages.h"
#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "frame/template.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::scheme {
namespace {

using frame::Template;
using variant::spliced;

// FNV-1a, 64 bits: tells two texts apart, guards nothing.
std::uint64_t hashOf(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

std::string nameOf(Page& page, const Variant& user) {
  if (variant::equalsAsText(user, spliced(page.session.get("usrid")))) return "您在另一个窗口";
  if (!variant::isNumeric(user)) return "其他用户";
  const frame::StatementScope scope(page,
                                    {.reads = {database::TableGroup::Organisation}, .writes = {}});
  return spliced(frame::firstCell(
      page, "select User_Name from Zembra_User where User_ID=" + spliced(user), "其他用户"));
}

}  // namespace

bool hasExtras(Page& page) {
  return frame::isSwitchedOn(page, "designerExtras");
}

SchemeState schemeState(Page& page, const Variant& prikeyid) {
  if (!hasExtras(page) || !variant::isNumeric(prikeyid)) return {};
  const Variant rows = frame::execSQLRows(
      page,
      "select Zembra_ModiUser,Zembra_ModiDate,Zembra_Flag,Query_Name,Query_Desc,Query_Fields,"
      "Query_Vir,Query_Rel,Query_Static,Query_Group,Query_MultiRelSel,Query_MultiRel,Query_Dic,"
      "Query_System,Query_MainTBID from Zembra_Query_Main where "
      "Query_ID=" +
          spliced(prikeyid));
  if (!rows.isArray()) return {};
  const Array& cells = rows.array();
  std::string all;
  for (std::ptrdiff_t column = 0; column <= cells.upperBound(1); ++column) {
    all.append(spliced(cells.at(column, 0))).append(1, '\0');
  }
  const bool isDeleted = variant::equalsAsText(cells.at(2, 0), "0");
  return {fmt::format("{:016x}", hashOf(all)),
          isDeleted
              ? "此方案已被删除"
              : nameOf(page, cells.at(0, 0)) + "已于 " + spliced(cells.at(1, 0)) + " 修改过此方案"};
}

std::string wizardExtras(Page& page, const Variant& prikeyid) {
  static const Template script(embedded::scheme_pages::find("wizard_extras.js"));
  ErrorState err;
  std::string text;
  err.run([&] {
    const SchemeState state = schemeState(page, prikeyid);
    if (state.stamp.empty()) return;
    text = "<script>\r\n" + script.fill({{"id", spliced(prikeyid)}, {"stamp", state.stamp}}) +
           "</script>\r\n";
  });
  return text;
}

}  // namespace tarlo::scheme
