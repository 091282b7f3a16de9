#pragma once
// Schemes as they lie in Zembra_Query_Main: reading one, listing them, and compiling one into its
// statement. Everybody who needs a scheme by its id comes here.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/page.h"

namespace tarlo::scheme {

// One row. The definition strings are as stored: text, or Null where the column holds none.
struct Scheme {
  int id = 0;
  std::string name;
  std::string description;
  Variant mainTable;     // id of the main table
  Variant computed;      // computed fields, stored form
  Variant filter;        // filter conditions
  Variant statistics;    // statistics
  Variant grouping;      // grouping
  Variant relations;     // selected relations
  Variant stored;        // the statement compiled when it was last saved or updated
  bool deleted = false;  // soft-deleted schemes can still be read and compiled
};

struct SchemeTitle {
  int id = 0;
  std::string name;
};

// Nothing when no row has the id; a deleted scheme is found. Raises DatabaseError.
std::optional<Scheme> loadScheme(Page& page, int id);

// The schemes that are not deleted, by id. Raises DatabaseError.
std::vector<SchemeTitle> listSchemes(Page& page);

// The operation that compiles this scheme, such as "getQuery_Vir_Fil", picked by which of the
// statistics, computed fields and filter hold text. Blanks are text; Null is not.
std::string_view variantName(const Scheme& scheme);

// The statement, made afresh from the dictionary. Raises what the operation raises.
Variant compileScheme(Page& page, const Scheme& scheme);

}  // namespace tarlo::scheme
