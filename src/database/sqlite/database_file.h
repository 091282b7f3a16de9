#pragma once
// The file behind a database's connections, and the two that SQLite keeps beside it. SQLite goes on
// working on a file that was deleted or moved away, and what it then writes is lost; so everybody
// who writes asks here first whether the files are still the ones that were opened. Thread-safe.

#include <sys/types.h>

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "database/health.h"

namespace tarlo::database {

class DatabaseFile {
 public:
  // An empty path is a database in memory, of which nothing is asked.
  explicit DatabaseFile(std::string path) : path_(std::move(path)) {}
  DatabaseFile(const DatabaseFile&) = delete;
  DatabaseFile& operator=(const DatabaseFile&) = delete;

  // A connection's share in the file, from its first read until it is about to be closed.
  class Use {
   public:
    // Throws DatabaseError (kConnectionFailed) when the file is not the one of the other
    // connections.
    explicit Use(DatabaseFile& file) : file_(file) { file_.opened(); }
    ~Use() { file_.closing(); }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    DatabaseFile& file() const { return file_; }

   private:
    DatabaseFile& file_;
  };

  // Throws DatabaseError (kConnectionFailed, Outage::Gone) unless the files are in their places.
  void check() const;
  // Whether a write found no room. Forgotten when one succeeds.
  void noteFull(bool isFull) {
    if (isFull_ != isFull) isFull_ = isFull;
  }
  bool isFull() const { return isFull_; }

  // `reserve`: bytes that must be free. A login that only reads is not asked about writing.
  Health health(std::uint64_t reserve, bool writes) const;

 private:
  struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const Identity&) const = default;
  };
  static std::optional<Identity> identityOf(const std::string& path);

  void opened();
  void closing() noexcept;
  Health place() const;

  const std::string path_;
  mutable std::mutex mutex_;
  std::size_t uses_ = 0;
  std::optional<Identity> main_;
  // Of the log and its index. The last connection removes them, so they are new with the first.
  std::array<std::optional<Identity>, 2> beside_;
  std::atomic<bool> isFull_{false};
};

}  // namespace tarlo::database
