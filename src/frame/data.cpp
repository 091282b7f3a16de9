#include "frame/data.h"

#include "frame/operate_log.h"
#include "variant/convert.h"

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

Variant execSQLRows(Page& page, const Variant& sql) {
  return rows(page, variant::spliced(sql)).table();
}

}  // namespace tarlo::frame
