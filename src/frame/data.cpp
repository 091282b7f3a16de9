#include "frame/data.h"

#include "frame/operate_log.h"
#include "variant/convert.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kIdentityField = "NeoID";

// The statement's text without a copy where the variant holds text; `buffer` keeps any other.
std::string_view commandText(const Variant& sql, std::string& buffer) {
  if (sql.isText()) return sql.text();
  buffer = variant::spliced(sql);
  return buffer;
}

// One statement over an open connection: the value of NeoID, or Empty for a statement whose text
// does not end in that word.
Variant runCommand(database::Connection& connection, const Variant& sql, int commandType) {
  if (commandType != kCommandText) throw RuntimeError(ErrorNumber::InvalidCall, "command type");
  std::string buffer;
  const std::string_view text = commandText(sql, buffer);
  if (text.ends_with(kIdentityField)) return connection.open(text)->value(kIdentityField);
  connection.execute(text);
  return {};
}

}  // namespace

database::Lease borrowConnection(Page& page) {
  const std::string name = variant::spliced(page.application.get("strConn"));
  return page.databases.borrow(name, page.statements);
}

Variant execSQLRows(Page& page, const Variant& sql) {
  std::string buffer;
  database::Lease connection = borrowConnection(page);
  return connection->open(commandText(sql, buffer))->getRows();
}

Variant firstCell(Page& page, const Variant& sql, const Variant& otherwise) {
  const Variant rows = execSQLRows(page, sql);
  return rows.isArray() ? rows.array().at(0, 0) : otherwise;
}

Variant execSQL(Page& page, const Variant& sql, int commandType) {
  database::Lease connection = borrowConnection(page);
  return runCommand(*connection, sql, commandType);
}

Variant execSQLLogged(Page& page, Variant& sql, int commandType) {
  database::Lease connection = borrowConnection(page);
  Variant result = runCommand(*connection, sql, commandType);
  writeOperateLog(page, *connection, sql);
  return result;
}

Variant getSQLFieldNames(Page& page, const Variant& sql) {
  std::string buffer;
  database::Lease connection = borrowConnection(page);
  const auto recordset = connection->open(commandText(sql, buffer));
  const std::size_t count = recordset->fieldCount();
  Array names({static_cast<std::ptrdiff_t>(count)});
  for (std::size_t i = 0; i < count; ++i) names.elements()[i + 1] = recordset->fieldName(i);
  return names;
}

}  // namespace tarlo::frame
