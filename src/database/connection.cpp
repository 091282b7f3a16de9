#include "database/connection.h"

namespace tarlo::database {

std::vector<std::unique_ptr<Recordset>> Connection::openAll(
    std::span<const std::string_view> statements) {
  std::vector<std::unique_ptr<Recordset>> all;
  for (const std::string_view sql : statements) all.push_back(open(sql));
  return all;
}

}  // namespace tarlo::database
