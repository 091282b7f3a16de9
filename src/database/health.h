#pragma once
// How a database stands, seen from outside of any statement: whether what was opened is still in
// its place and can be written to.

#include <cstdint>
#include <string>

namespace tarlo::database {

enum class Trouble {
  None,
  Missing,      // what was opened is no longer in its place
  Replaced,     // something else stands there
  NoAnswer,     // it cannot be opened or read
  Locked,       // somebody else has kept it for long
  Full,         // little room is left, or the last write found none
  NotWritable,  // its file or folder may not be written to
  OldSchema,    // it holds the tables of an older program
  NewSchema     // of a newer one
};

struct Health {
  Trouble trouble = Trouble::None;
  std::string detail;  // for the log: names files, and may hold the engine's own text
};

}  // namespace tarlo::database
