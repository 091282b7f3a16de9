#include "app/new_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "app/exit_code.h"
#include "database/private_files.h"

namespace tarlo::app {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMark = ".new-";

// The engine's own files stand beside the file when a build is broken off.
void removeBuild(const fs::path& file) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    fs::remove(file.string() + suffix, ignored);
  }
}

// The process that builds `file` for `target`, nothing when it is no such file.
std::optional<pid_t> builderOf(const std::string& file, const std::string& target) {
  if (!file.starts_with(target + std::string(kMark))) return std::nullopt;
  const std::string_view digits = std::string_view(file).substr(target.size() + kMark.size());
  pid_t builder = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), builder);
  const bool number = read.ec == std::errc() && builder > 0;
  return number ? std::optional(builder) : std::nullopt;
}

void removeAbandonedBuilds(const fs::path& folder, const fs::path& target) {
  std::error_code error;
  std::vector<fs::path> abandoned;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    const auto builder = builderOf(entry->path().filename().string(), target.filename().string());
    if (builder && kill(*builder, 0) != 0 && errno == ESRCH) {
      abandoned.push_back(
          folder / (target.filename().string() + std::string(kMark) + std::to_string(*builder)));
    }
  }
  for (const fs::path& file : abandoned) removeBuild(file);
}

}  // namespace

NewFile::NewFile(fs::path target) : target_(std::move(target)) {
  const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
  if (const std::error_code error = database::makePrivateFolders(folder)) {
    throw CommandError(kNoDatabase, fmt::format("The folder {} cannot be made: {}.",
                                                folder.string(), error.message()));
  }
  removeAbandonedBuilds(folder, target_);
  path_ = target_.string() + fmt::format("{}{}", kMark, getpid());
}

NewFile::~NewFile() {
  removeBuild(path_);
}

void NewFile::publish() {
  endWhenInterrupted();
  if (renameat2(AT_FDCWD, path_.c_str(), AT_FDCWD, target_.c_str(), RENAME_NOREPLACE) == 0) return;
  const int code = errno;
  std::error_code error;
  // Some file systems know no such move; there a look before it has to do.
  if (code == EINVAL && !fs::exists(target_, error)) {
    fs::rename(path_, target_, error);
    if (!error) return;
  } else {
    error = std::error_code(code, std::generic_category());
  }
  if (code == EEXIST || code == EINVAL) {
    throw CommandError(kAlreadyThere,
                       fmt::format("{} is there already; nothing was changed.", target_.string()));
  }
  throw CommandError(kNoDatabase, fmt::format("The file {} cannot be made: {}.", target_.string(),
                                              error.message()));
}

}  // namespace tarlo::app
