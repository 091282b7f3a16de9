#include "database/private_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tarlo::database {

bool makePrivateFile(const std::string& path) {
  constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
  const int made = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly);
  if (made < 0) return errno == EEXIST;
  // The umask may have taken rights from the owner too.
  const bool isDone = fchmod(made, kOwnerOnly) == 0;
  close(made);
  return isDone;
}

std::error_code makePrivateFolders(const std::filesystem::path& path) {
  std::error_code error;
  if (path.empty() || std::filesystem::exists(path, error) || error) return error;
  if (const auto failed = makePrivateFolders(path.parent_path())) return failed;
  if (mkdir(path.c_str(), S_IRWXU) != 0) {
    return errno == EEXIST ? std::error_code() : std::error_code(errno, std::generic_category());
  }
  if (chmod(path.c_str(), S_IRWXU) != 0) return {errno, std::generic_category()};
  return {};
}

bool isReadableByAll(const std::string& path) {
  struct stat found {};
  return stat(path.c_str(), &found) == 0 && (found.st_mode & S_IROTH) != 0;
}

}  // namespace tarlo::database
