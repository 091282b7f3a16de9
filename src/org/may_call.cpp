#include "org/may_call.h"

#include <algorithm>

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "variant/array.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::org {
namespace {

using frame::Access;
using frame::Caller;
using frame::Manager;
using frame::SubAction;
using variant::spliced;

constexpr database::StatementRights kAsksMenu = {.reads = {database::TableGroup::Menu},
                                                 .writes = {}};

// The user's number; 0 when nobody has signed in.
int userOf(Page& page) {
  const Variant user = page.session.get("usrID");
  return variant::isNumeric(user) ? variant::toInt32(user) : 0;
}

// The lists of sub-actions of the user's permission rows, one a row, for entries that meet the
// condition.
std::vector<std::string> grants(Page& page, const std::string& condition) {
  const frame::StatementScope scope(page, kAsksMenu);
  const Variant rows = frame::execSQLRows(
      page,
      "select Permission_SubAction from Zembra_Permission,Zembra_Menu where "
      "Permission_UserID=" +
          std::to_string(userOf(page)) +
          " and permission_forbid <> 1 and Menu_ID=Permission_MenuID" + condition);
  std::vector<std::string> lists;
  if (!rows.isArray()) return lists;
  for (const Variant& cell : rows.array().elements()) lists.push_back(spliced(cell));
  return lists;
}

std::string openedBy(std::string_view operation) {
  const std::string address = " Menu_Href like '%action=" + std::string(operation);
  return address + "' or" + address + "&%'";
}

bool lists(std::string_view subActions, std::string_view name) {
  return std::ranges::any_of(variant::split(subActions, ","), [&](std::string_view item) {
    return variant::equalsNoCase(variant::trim(item), name);
  });
}

SubAction meant(Page& page, SubAction subAction) {
  if (subAction != SubAction::AddOrModify) return subAction;
  const bool isChange = variant::equalsAsText(page.request.value("type"), "1");
  return isChange ? SubAction::Modify : SubAction::Add;
}

bool mayManage(Page& page, const Access& access) {
  const std::string_view name = nameOf(meant(page, access.subAction));
  const auto granted = grants(page, " and (" + openedBy(addressOf(access.manager)) + ")");
  return std::ranges::any_of(granted, [&](const auto& list) { return lists(list, name); });
}

bool mayOpenAnyManager(Page& page) {
  std::string condition;
  for (const Manager manager :
       {Manager::Schemes, Manager::UserControls, Manager::TemplateControls}) {
    condition.append(condition.empty() ? " and (" : " or").append(openedBy(addressOf(manager)));
  }
  return !grants(page, condition + ")").empty();
}

bool isAdministrator(Page& page) {
  const std::string login = spliced(page.session.get("usrLogin"));
  return !login.empty() && lists(spliced(page.application.get("administrators")), login);
}

}  // namespace

bool mayCall(Page& page, const Access& access) {
  if (access.caller == Caller::Program) return true;
  if (userOf(page) <= 0) return false;
  switch (access.caller) {
    case Caller::Program:
    case Caller::SignedIn:
      return true;
    case Caller::FormUser:
      return !grants(page, "").empty();
    case Caller::Designer:
      if (!frame::isSwitchedOn(page, "designersOnly")) return true;
      return access.manager == Manager::None ? mayOpenAnyManager(page) : mayManage(page, access);
    case Caller::Administrator:
      return isAdministrator(page);
  }
  return false;
}

std::string_view nameOf(SubAction subAction) {
  switch (subAction) {
    case SubAction::Browse:
      return "browse";
    case SubAction::Preview:
      return "preview";
    case SubAction::Add:
      return "add";
    case SubAction::Modify:
      return "modify";
    case SubAction::Delete:
      return "delete";
    case SubAction::None:
    case SubAction::AddOrModify:
      break;
  }
  return {};
}

std::string_view addressOf(Manager manager) {
  switch (manager) {
    case Manager::Schemes:
      return "ctrlSearch";
    case Manager::UserControls:
      return "ctrlSearch_Usrfield";
    case Manager::TemplateControls:
      return "ctrlSearch_Sysfield";
    case Manager::None:
      break;
  }
  return {};
}

}  // namespace tarlo::org
