#pragma once
// Reserved words. None of them can be a bare name; in delimiters every one can.

#include <cstdint>
#include <string_view>

namespace tarlo::tsql {

enum class Keyword : std::uint8_t {
  None,      // no reserved word
  Reserved,  // reserved, and nothing here begins with it
  Add,
  All,
  Alter,
  And,
  As,
  Asc,
  Between,
  By,
  Case,
  Clustered,
  Coalesce,
  Collate,
  Constraint,
  Convert,
  Create,
  Cross,
  CurrentTimestamp,
  Declare,
  Default,
  Delete,
  Desc,
  Distinct,
  Else,
  End,
  Escape,
  Exec,
  Execute,
  Exists,
  Fetch,
  From,
  Full,
  Group,
  Having,
  Identity,
  IdentityInsert,
  In,
  Index,
  Inner,
  Insert,
  Into,
  Is,
  Join,
  Key,
  Left,
  Like,
  Nonclustered,
  Not,
  Null,
  Nullif,
  Off,
  On,
  Or,
  Order,
  Outer,
  Primary,
  Right,
  Select,
  Set,
  Table,
  Then,
  Top,
  Union,
  Unique,
  Update,
  Values,
  When,
  Where,
  With
};

// Without regard to case.
Keyword keywordOf(std::string_view word);

}  // namespace tarlo::tsql
