#include "org/may_call.h"

#include <algorithm>

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "text/fold.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"

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

struct Grant {
  std::string subActions;
  std::string address;  // of the entry
};

// The user's permission rows for entries whose address holds the text.
std::vector<Grant> grants(Page& page, std::string_view text) {
  const frame::StatementScope scope(page, kAsksMenu);
  const std::string condition =
      text.empty() ? "" : " and Menu_Href like '%" + std::string(text) + "%'";
  const std::string sql =
      "select Permission_SubAction,Menu_Href from Zembra_Permission,Zembra_Menu where "
      "Permission_UserID=" +
      std::to_string(userOf(page)) + " and permission_forbid <> 1 and Menu_ID=Permission_MenuID" +
      condition;
  std::vector<Grant> list;
  for (const frame::Row row : frame::rows(page, sql)) list.push_back({row.text(0), row.text(1)});
  return list;
}

// Whether the address asks for the operation: nothing or a further value stands behind it.
bool opens(std::string_view address, std::string_view operation) {
  const std::string folded = text::foldedName(address);
  const std::string wanted = text::foldedName("action=" + std::string(operation));
  for (std::size_t at = folded.find(wanted); at != std::string::npos;
       at = folded.find(wanted, at + 1)) {
    const std::size_t end = at + wanted.size();
    if (end == folded.size() || folded[end] == '&') return true;
  }
  return false;
}

bool lists(std::string_view subActions, std::string_view name) {
  return std::ranges::any_of(text::split(subActions, ","), [&](std::string_view item) {
    return text::equalsNoCase(text::trim(item), name);
  });
}

SubAction meant(Page& page, SubAction subAction) {
  if (subAction != SubAction::AddOrModify) return subAction;
  const bool isChange = variant::equalsAsText(page.request.value("type"), "1");
  return isChange ? SubAction::Modify : SubAction::Add;
}

bool mayManage(Page& page, const Access& access) {
  const std::string_view name = nameOf(meant(page, access.subAction));
  const std::string_view operation = addressOf(access.manager);
  return std::ranges::any_of(grants(page, operation), [&](const Grant& grant) {
    return lists(grant.subActions, name) && opens(grant.address, operation);
  });
}

bool mayOpenAnyManager(Page& page) {
  constexpr Manager kAll[] = {Manager::Schemes, Manager::UserControls, Manager::TemplateControls};
  // All three begin with the first one's name.
  return std::ranges::any_of(grants(page, addressOf(Manager::Schemes)), [&](const Grant& grant) {
    return std::ranges::any_of(
        kAll, [&](Manager manager) { return opens(grant.address, addressOf(manager)); });
  });
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
