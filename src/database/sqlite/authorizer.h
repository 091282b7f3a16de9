#pragma once
// The engine's own word on what a statement touches, independent of what the front end read in its
// text: SQLite's compiler names every table and function that it makes code for. While a statement
// of a borrower with rights is compiled, anything beyond them ends the compilation.

#include <sqlite3.h>

#include "database/guard.h"

namespace tarlo::database {

class Authorizer {
 public:
  explicit Authorizer(const Guard& guard) : guard_(guard) {}
  Authorizer(const Authorizer&) = delete;
  Authorizer& operator=(const Authorizer&) = delete;

  void install(sqlite3* handle);

  // While it lives, what is compiled is recorded, and refused where the guard says so. Outside of
  // it the connection's own statements (pragmas, the catalogue's) go through.
  class Watch {
   public:
    explicit Watch(Authorizer& authorizer) : authorizer_(authorizer) {
      authorizer_.isWatching_ = true;
      authorizer_.seen_ = {};
    }
    ~Watch() { authorizer_.isWatching_ = false; }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    Footprint take() { return std::move(authorizer_.seen_); }

   private:
    Authorizer& authorizer_;
  };

 private:
  static int authorize(void* self, int action, const char* first, const char* second,
                       const char* database, const char* inside);
  int judge(int action, std::string_view first, std::string_view second, bool isInside);
  int touch(tsql::Access access, std::string_view name);

  const Guard& guard_;
  Footprint seen_;
  bool isWatching_ = false;
};

}  // namespace tarlo::database
