#include "database/sqlite/temporary_files.h"

#include <algorithm>
#include <cstring>

#include <fmt/format.h>

#include "database/sqlite/errors.h"
#include "database/sqlite/open.h"

namespace tarlo::database {
namespace {

constexpr int kTemporary = SQLITE_OPEN_TEMP_DB | SQLITE_OPEN_TRANSIENT_DB |
                           SQLITE_OPEN_TEMP_JOURNAL | SQLITE_OPEN_SUBJOURNAL;

// SQLite allocates szOsFile bytes: this, and behind it the file of the system's own layer.
struct CountedFile {
  sqlite3_file base;
  TemporaryFiles* limit;
  std::int64_t size;
};

sqlite3_vfs* systemVfs() {
  setUpSqlite();
  return sqlite3_vfs_find(nullptr);
}

CountedFile& counted(sqlite3_file* file) {
  return *reinterpret_cast<CountedFile*>(file);
}
sqlite3_file* real(sqlite3_file* file) {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<char*>(file) + sizeof(CountedFile));
}

int closeFile(sqlite3_file* file) {
  counted(file).limit->shrink(counted(file).size);
  return real(file)->pMethods->xClose(real(file));
}

int writeFile(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
  CountedFile& self = counted(file);
  const std::int64_t more = std::max<std::int64_t>(0, offset + count - self.size);
  if (more > 0 && !self.limit->grow(self.size, more)) return kTemporaryFilesFull;
  const int code = real(file)->pMethods->xWrite(real(file), bytes, count, offset);
  if (code == SQLITE_OK) {
    self.size += more;
  } else {
    self.limit->shrink(more);
  }
  return code;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  CountedFile& self = counted(file);
  const int code = real(file)->pMethods->xTruncate(real(file), size);
  if (code == SQLITE_OK && size < self.size) {
    self.limit->shrink(self.size - size);
    self.size = size;
  }
  return code;
}

// Version 1: no shared memory and no mapping, which temporary files can do without. A mapped file
// would grow unseen.
constexpr sqlite3_io_methods kCountedMethods = {
    1,
    closeFile,
    [](sqlite3_file* file, void* room, int count, sqlite3_int64 offset) {
      return real(file)->pMethods->xRead(real(file), room, count, offset);
    },
    writeFile,
    truncateFile,
    [](sqlite3_file* file, int flags) { return real(file)->pMethods->xSync(real(file), flags); },
    [](sqlite3_file* file, sqlite3_int64* size) {
      return real(file)->pMethods->xFileSize(real(file), size);
    },
    [](sqlite3_file* file, int level) { return real(file)->pMethods->xLock(real(file), level); },
    [](sqlite3_file* file, int level) { return real(file)->pMethods->xUnlock(real(file), level); },
    [](sqlite3_file* file, int* held) {
      return real(file)->pMethods->xCheckReservedLock(real(file), held);
    },
    [](sqlite3_file* file, int what, void* argument) {
      // Hints about sizes to come would let it grow past the count.
      if (what == SQLITE_FCNTL_SIZE_HINT || what == SQLITE_FCNTL_CHUNK_SIZE) return SQLITE_OK;
      return real(file)->pMethods->xFileControl(real(file), what, argument);
    },
    [](sqlite3_file* file) { return real(file)->pMethods->xSectorSize(real(file)); },
    [](sqlite3_file* file) { return real(file)->pMethods->xDeviceCharacteristics(real(file)); },
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

int openFile(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* given) {
  sqlite3_vfs* system = systemVfs();
  if ((flags & kTemporary) == 0) return system->xOpen(system, name, file, flags, given);
  std::memset(file, 0, sizeof(CountedFile));
  const int code = system->xOpen(system, name, real(file), flags, given);
  // A file without methods is not closed by SQLite.
  if (real(file)->pMethods == nullptr) return code;
  CountedFile& self = counted(file);
  self.limit = static_cast<TemporaryFiles*>(vfs->pAppData);
  self.base.pMethods = &kCountedMethods;
  return code;
}

}  // namespace

// Everything but the opening of files is the system layer's own.
TemporaryFiles::TemporaryFiles(std::int64_t mostOfOne, std::int64_t mostOfAll)
    : mostOfOne_(mostOfOne),
      mostOfAll_(mostOfAll),
      name_(fmt::format("counted-{}", fmt::ptr(this))),
      vfs_(*systemVfs()) {
  vfs_.zName = name_.c_str();
  vfs_.pNext = nullptr;
  vfs_.pAppData = this;
  vfs_.szOsFile += static_cast<int>(sizeof(CountedFile));
  vfs_.xOpen = openFile;
  sqlite3_vfs_register(&vfs_, 0);
}

TemporaryFiles::~TemporaryFiles() {
  sqlite3_vfs_unregister(&vfs_);
}

bool TemporaryFiles::grow(std::int64_t size, std::int64_t more) {
  if (mostOfOne_ > 0 && size + more > mostOfOne_) return false;
  const std::int64_t all = held_.fetch_add(more) + more;
  if (mostOfAll_ <= 0 || all <= mostOfAll_) return true;
  held_ -= more;
  return false;
}

}  // namespace tarlo::database
