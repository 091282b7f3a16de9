#pragma once
// A scheme's strings together, and the choice of the operation that compiles them. Saving, preview
// and recompilation all choose here.

#include <string_view>

#include "frame/page.h"

namespace tarlo::compile {

struct Definition {
  Variant sTable;
  Variant computed;
  Variant filter;
  Variant stats;
  Variant group;
  Variant rel;
};

// The name of the operation, such as "getQuery_Vir_Fil". Statistics, computed fields and filter
// count as present unless they are "", Empty or Null; blanks count, and the grouping does not.
std::string_view operationFor(const Definition& definition);

// The statement, by that operation; raises what it raises.
Variant compileDefinition(Page& page, const Definition& definition);

}  // namespace tarlo::compile
