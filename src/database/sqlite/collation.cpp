// The collation TSQL: which texts are equal in translated statements, and stand as one in groups
// and indexes.

#include "database/sqlite/function_call.h"
#include "database/sqlite/text_fold.h"

namespace tarlo::database {
namespace {

int compareTexts(void*, int aBytes, const void* a, int bBytes, const void* b) {
  return compareFolded({static_cast<const char*>(a), static_cast<std::size_t>(aBytes)},
                       {static_cast<const char*>(b), static_cast<std::size_t>(bBytes)});
}

}  // namespace

int registerCollation(sqlite3* handle) {
  return sqlite3_create_collation_v2(handle, "TSQL", SQLITE_UTF8, nullptr, compareTexts, nullptr);
}

}  // namespace tarlo::database
