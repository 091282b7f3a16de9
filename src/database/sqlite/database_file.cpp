#include "database/sqlite/database_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>

#include <fmt/format.h>

#include "database/error.h"

namespace tarlo::database {
namespace {

constexpr std::array kBeside = {"-wal", "-shm"};

bool mayWrite(const std::string& path) {
  return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

}  // namespace

std::optional<DatabaseFile::Identity> DatabaseFile::identityOf(const std::string& path) {
  struct stat found {};
  if (stat(path.c_str(), &found) != 0) return std::nullopt;
  return Identity{found.st_dev, found.st_ino};
}

void DatabaseFile::opened() {
  if (path_.empty()) return;
  {
    const std::lock_guard lock(mutex_);
    if (!main_) main_ = identityOf(path_);
    if (uses_ == 0) {
      for (std::size_t i = 0; i < kBeside.size(); ++i) {
        beside_[i] = identityOf(path_ + kBeside[i]);
      }
    }
  }
  check();
  const std::lock_guard lock(mutex_);
  ++uses_;
}

void DatabaseFile::closing() noexcept {
  if (path_.empty()) return;
  const std::lock_guard lock(mutex_);
  if (--uses_ == 0) beside_ = {};
}

Health DatabaseFile::place() const {
  if (path_.empty()) return {};
  const std::lock_guard lock(mutex_);
  if (!main_) return {};  // nobody has opened it yet
  const auto now = identityOf(path_);
  if (!now) return {Trouble::Missing, fmt::format("The database file {} is gone.", path_)};
  if (now != main_) {
    return {Trouble::Replaced,
            fmt::format("Another file stands in the place of the database file {}.", path_)};
  }
  for (std::size_t i = 0; i < kBeside.size(); ++i) {
    if (!beside_[i] || identityOf(path_ + kBeside[i]) == beside_[i]) continue;
    return {Trouble::Replaced,
            fmt::format("The file {}{} was removed or replaced while it is in use.", path_,
                        kBeside[i])};
  }
  return {};
}

void DatabaseFile::check() const {
  Health found = place();
  if (found.trouble == Trouble::None) return;
  throw DatabaseError(kConnectionFailed, found.detail,
                      {.engine = "sqlite",
                       .code = 0,
                       .sqlState = "08006",
                       .text = found.detail,
                       .outage = Outage::Gone});
}

Health DatabaseFile::health(std::uint64_t reserve, bool writes) const {
  Health found = place();
  if (path_.empty() || !writes || found.trouble != Trouble::None) return found;
  const std::filesystem::path file(path_);
  const std::string folder = file.has_parent_path() ? file.parent_path().string() : ".";
  for (const std::string& each : {path_, folder}) {
    if (mayWrite(each)) continue;
    return {Trouble::NotWritable, fmt::format("{} cannot be written to.", each)};
  }
  struct statvfs space {};
  if (statvfs(path_.c_str(), &space) == 0) {
    const std::uint64_t free = std::uint64_t{space.f_bavail} * space.f_frsize;
    if (free < reserve) {
      return {Trouble::Full, fmt::format("The disk of {} has {} bytes left.", path_, free)};
    }
  }
  if (isFull_) return {Trouble::Full, fmt::format("The last write to {} found no room.", path_)};
  return {};
}

}  // namespace tarlo::database
