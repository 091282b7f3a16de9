#pragma once
// A disk without room.

#include <sqlite3.h>

namespace tarlo::testing {

// Every connection that is opened while it lives can make its file no bigger.
class NoRoom {
 public:
  NoRoom() { sqlite3_auto_extension(reinterpret_cast<void (*)()>(&limit)); }
  ~NoRoom() { sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&limit)); }
  NoRoom(const NoRoom&) = delete;
  NoRoom& operator=(const NoRoom&) = delete;

 private:
  static int limit(sqlite3* handle, const char**, const void*) {
    return sqlite3_exec(handle, "PRAGMA max_page_count=1", nullptr, nullptr, nullptr);
  }
};

}  // namespace tarlo::testing
