#pragma once
// A scheme by its id, and all of them by name: how code that is no page of the wizard reads
// Zembra_Query_Main. The wizard's own pages read single columns of it where they need them.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "compile/definition.h"

namespace tarlo::scheme {

struct Scheme {
  int id = 0;
  std::string name;
  std::string description;
  compile::Definition definition;
  std::string stored;    // the statement compiled when it was last saved or updated; "" for none
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

}  // namespace tarlo::scheme
