#include "app/new_file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "app/exit_code.h"

namespace tarlo::app {
namespace {

namespace fs = std::filesystem;

}  // namespace

NewFile::NewFile(fs::path target) : target_(std::move(target)) {
  const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    throw CommandError(kNoDatabase, fmt::format("The folder {} cannot be made: {}.",
                                                folder.string(), error.message()));
  }
  path_ = target_.string() + fmt::format(".new-{}", getpid());
}

NewFile::~NewFile() {
  std::error_code ignored;
  // The engine's own files beside it stay behind when a build is broken off.
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
    fs::remove(path_.string() + suffix, ignored);
  }
}

void NewFile::publish() {
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
