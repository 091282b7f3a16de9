#pragma once
// The four statements that write a scheme. They differ in more than they need to, and rows written
// long ago were written by them, so they stay apart:
//
//   - a scheme with statistics stores neither the relations nor whether they are multi-level;
//   - Query_HasStatic is left to its default in the INSERT without statistics;
//   - Query_MultiRel goes in without quotes, so that an empty one fails the statement;
//   - the grouping's quotes are doubled in the INSERTs only.

#include <string>

#include "compile/definition.h"

namespace tarlo::scheme {

// Everything that goes into the row. Texts as they stand in a literal are marked "spliced as is".
struct SchemeRow {
  bool isChange = false;
  std::string id;           // of the scheme that is changed
  std::string name;         // quotes doubled already
  std::string description;  // quotes doubled already
  std::string statement;
  std::string keyField;      // spliced as is
  std::string kind;          // spliced as is
  std::string directory;     // spliced as is
  std::string user;          // spliced as is
  std::string now;           // spliced as is
  std::string isMultiLevel;  // spliced as is
  compile::Definition definition;
};

std::string saveStatement(const SchemeRow& row);

}  // namespace tarlo::scheme
