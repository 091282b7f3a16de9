#pragma once
// The scripts that make the product's own tables.

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarlo::testing {

// `name` below the schema folder: "tables/10_schemes.sql".
inline std::string schemaFile(const std::string& name) {
  std::ifstream in(TARLO_TEST_DATA "/../../schema/" + name, std::ios::binary);
  if (!in) throw std::runtime_error("no schema file " + name);
  return {std::istreambuf_iterator<char>(in), {}};
}

// The platform's tables without rows.
inline std::vector<std::string> platformTables() {
  return {schemaFile("tables/10_schemes.sql"), schemaFile("tables/20_dictionary.sql"),
          schemaFile("tables/30_organisation.sql"), schemaFile("tables/40_workflow.sql"),
          schemaFile("tables/50_services.sql")};
}

}  // namespace tarlo::testing
