#include "database/schema_version.h"

#include <fmt/format.h>

#include "text/sql_text.h"
#include "variant/convert.h"

namespace tarlo::database {

StoredSchema storedSchema(Connection& connection) {
  if (connection.catalogue().findTable("Tarlo_Schema") == nullptr) return {};
  const auto rows =
      connection.open("select top 1 Version,WrittenBy from Tarlo_Schema order by Version desc");
  if (rows->atEnd()) return {};
  return {variant::toInt32(rows->value(0)), variant::spliced(rows->value(1))};
}

void storeSchemaVersion(Connection& connection, std::string_view writer) {
  connection.execute(
      fmt::format("insert into Tarlo_Schema (Version,WrittenAt,WrittenBy) values ({},getdate(),{})",
                  kSchemaVersion, text::sqlText(writer)));
}

}  // namespace tarlo::database
