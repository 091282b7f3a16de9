#include "frame/operate_log.h"

#include <fmt/format.h>

#include "frame/helpers.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::frame {
namespace {

constexpr int kNoModule = 127;  // the module of a row whose session names none

// The row is the system's own, whatever the statement that it tells of was allowed.
class LogRights {
 public:
  LogRights(Page& page, database::Connection& connection) : page_(page), connection_(connection) {
    context_.rights.writes = {database::TableGroup::OperationLog};
    connection_.setContext(&context_);
  }
  ~LogRights() { connection_.setContext(&page_.statements); }
  LogRights(const LogRights&) = delete;
  LogRights& operator=(const LogRights&) = delete;

 private:
  Page& page_;
  database::Connection& connection_;
  database::StatementContext context_;
};

}  // namespace

void writeOperateLog(Page& page, database::Connection& connection, std::string& sql) {
  ErrorState err;
  const Variant user = err.value([&] { return page.session.get("usrID"); });
  Variant module = err.value([&] { return page.session.get("usrICID"); });
  if (module.isNull() || module.isEmpty()) module = kNoModule;
  if (variant::len(sql) > kLongestLogged) sql = "Batch update";
  Variant literal(text::replace(sql, "<", "&lt;"));
  err.run([&] { preSQLFormat(page, literal, false); });
  const LogRights rights(page, connection);
  err.run([&] {
    connection.execute(fmt::format(
        " insert into {}(OperateLog_UID,OperateLog_ModulID,OperateLog_SQL) values({},{},{})",
        kLogTable, variant::spliced(user), variant::spliced(module), variant::spliced(literal)));
  });
}

}  // namespace tarlo::frame
