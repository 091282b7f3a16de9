#pragma once
// How much the files may hold that SQLite makes for itself while it sorts and groups: one file, and
// all of a database's connections together. SQLite has no such limit, so its file layer gets one
// put in front that counts what temporary files grow by; all other files pass it untouched.

#include <atomic>
#include <cstdint>
#include <string>

#include <sqlite3.h>

namespace tarlo::database {

class TemporaryFiles {
 public:
  // 0 is no limit.
  TemporaryFiles(std::int64_t mostOfOne, std::int64_t mostOfAll);
  ~TemporaryFiles();
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;

  // For sqlite3_open_v2. Connections are closed before this goes.
  const char* vfsName() const { return name_.c_str(); }
  std::int64_t held() const { return held_; }

  // For the files: false, and nothing counted, when a file of `size` bytes may not grow by `more`.
  bool grow(std::int64_t size, std::int64_t more);
  void shrink(std::int64_t bytes) { held_ -= bytes; }

 private:
  const std::int64_t mostOfOne_;
  const std::int64_t mostOfAll_;
  std::atomic<std::int64_t> held_{0};
  std::string name_;
  sqlite3_vfs vfs_{};
};

}  // namespace tarlo::database
