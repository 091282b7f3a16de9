#include "frame/data.h"

#include <fmt/format.h>

#include "frame/helpers.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"
#include "variant/text.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kIdentityField = "NeoID";

// One statement over an open connection: the value of NeoID, or Empty for a statement whose text
// does not end in that word.
Variant runCommand(database::Connection& connection, std::string_view sql) {
  if (sql.ends_with(kIdentityField)) return connection.open(sql)->value(kIdentityField);
  connection.execute(sql);
  return {};
}

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

// Writes the row over the given connection. A row that cannot be written is lost without a word,
// since the statement that it tells of has been carried out.
void writeOperateLog(Page& page, database::Connection& connection, std::string& sql) {
  ErrorState err;
  const Variant user = err.value([&] { return page.session.get("usrID"); });
  Variant module = err.value([&] { return page.session.get("usrICID"); });
  if (module.isNull() || module.isEmpty()) module = kNoModule;
  if (variant::len(sql) > kLongestLogged) sql = "Batch update";
  const std::string literal = literalOf(text::replace(sql, "<", "&lt;"));
  const LogRights rights(page, connection);
  err.run([&] {
    connection.execute(fmt::format(
        " insert into {}(OperateLog_UID,OperateLog_ModulID,OperateLog_SQL) values({},{},{})",
        kLogTable, variant::spliced(user), variant::spliced(module), literal));
  });
}

}  // namespace

database::Lease borrowConnection(Page& page) {
  const std::string name = variant::spliced(page.application.get("strConn"));
  return page.databases.borrow(name, page.statements);
}

const Variant& Row::value(std::size_t column) const {
  if (column >= cells_.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return cells_[column];
}

std::string Row::text(std::size_t column) const {
  return variant::spliced(value(column));
}

std::size_t Rows::size() const {
  return empty() ? 0 : static_cast<std::size_t>(table_.array().upperBound(2)) + 1;
}

Row Rows::operator[](std::size_t row) const {
  const Array& cells = table_.array();
  if (row >= size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  const auto columns = static_cast<std::size_t>(cells.upperBound(1)) + 1;
  return Row(cells.elements().subspan(row * columns, columns));
}

Rows rows(Page& page, std::string_view sql) {
  database::Lease connection = borrowConnection(page);
  return Rows(connection->open(sql)->getRows());
}

Variant firstCell(Page& page, std::string_view sql, Variant otherwise) {
  const Rows found = rows(page, sql);
  return found.empty() ? otherwise : found.front().value(0);
}

std::string firstText(Page& page, std::string_view sql) {
  return variant::spliced(firstCell(page, sql));
}

Variant execSQL(Page& page, std::string_view sql) {
  database::Lease connection = borrowConnection(page);
  return runCommand(*connection, sql);
}

Variant execSQLLogged(Page& page, std::string& sql) {
  database::Lease connection = borrowConnection(page);
  Variant result = runCommand(*connection, sql);
  writeOperateLog(page, *connection, sql);
  return result;
}

std::vector<std::string> titles(Page& page, std::string_view sql) {
  database::Lease connection = borrowConnection(page);
  const auto recordset = connection->open(sql);
  std::vector<std::string> names(recordset->fieldCount());
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = recordset->fieldName(i);
  return names;
}

Variant titleArray(const std::vector<std::string>& titles) {
  Array names({static_cast<std::ptrdiff_t>(titles.size())});
  for (std::size_t i = 0; i < titles.size(); ++i) names.elements()[i + 1] = titles[i];
  return names;
}

}  // namespace tarlo::frame
