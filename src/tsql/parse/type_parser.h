#pragma once
// A type as CAST, DECLARE and CREATE TABLE write it: a name and its sizes.

#include <string>
#include <vector>

#include "tsql/parse/token_stream.h"

namespace tarlo::tsql {

struct TypeText {
  std::string name;        // as typed
  std::vector<int> sizes;  // -1 stands for MAX
};

// int, varchar(50), decimal(18, 2), nvarchar(max). Whether there is such a type is not asked here.
TypeText parseType(TokenStream& tokens);

}  // namespace tarlo::tsql
