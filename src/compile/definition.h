#pragma once
// A scheme's definition and its one SELECT statement. Saving, preview, recompilation and the
// command line all compile here; the eight operations of operations.h are the same with the choice
// of the parts taken away.

#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::compile {

// The strings of a scheme, in the forms in which they are stored; "" for a part that it has not.
struct Definition {
  std::string mainTable = {};   // id
  std::string computed = {};    // computed fields: name:expression, joined by ";"
  std::string filter = {};      // conditions joined by "|||"
  std::string statistics = {};  // items joined by "|||"
  std::string grouping = {};    // field tokens joined by ","
  std::string relations = {};   // ids joined by ","
};

// Which parts take part in a statement.
struct Parts {
  bool computed = false;
  bool filter = false;
  bool statistics = false;  // and the grouping
};
// Those that are not ""; blanks count, and the grouping does not.
Parts partsOf(const Definition& definition);
// The name of the operation that compiles such a scheme, such as "getQuery_Vir_Fil".
std::string_view operationFor(const Definition& definition);

// The statement. Raises what the compilers of its parts raise (clauses.h). Nothing checks that it
// is valid SQL; the database does that when it is first run.
std::string compileDefinition(Page& page, const Definition& definition);
std::string compileParts(Page& page, const Definition& definition, Parts parts);

}  // namespace tarlo::compile
