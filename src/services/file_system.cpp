#include "services/page_objects.h"

#include <algorithm>
#include <fstream>

#include "frame/member_table.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

namespace fs = std::filesystem;

constexpr int kFileNotFound = 53;
constexpr int kBadFileMode = 54;
constexpr int kDeviceError = 57;
constexpr int kForReading = 1;
constexpr std::int64_t kMostBytesAtOnce = 1 << 20;

class TextStream : public frame::MemberObject<TextStream> {
 public:
  struct Members {
    static std::span<const frame::Property<TextStream>> properties();
    static std::span<const frame::Method<TextStream>> methods();
  };
  explicit TextStream(const fs::path& path) : file_(path, std::ios::binary) {
    if (!file_) throw RuntimeError(kFileNotFound, "File not found", "FileSystemObject");
  }

 private:
  Variant read(std::span<Variant> arguments);
  Variant close(std::span<Variant>) {
    file_.close();
    return {};
  }
  Variant isAtEnd(std::span<Variant>) {
    return !file_.is_open() || file_.peek() == std::ifstream::traits_type::eof();
  }

  std::ifstream file_;
};

std::span<const frame::Property<TextStream>> TextStream::Members::properties() {
  return {};
}

std::span<const frame::Method<TextStream>> TextStream::Members::methods() {
  static constexpr frame::Method<TextStream> kRows[] = {{"AtEndOfStream", 0, &TextStream::isAtEnd},
                                                        {"Read", 1, &TextStream::read},
                                                        {"Close", 0, &TextStream::close}};
  return kRows;
}

Variant TextStream::read(std::span<Variant> arguments) {
  const auto count = variant::toInt64(arguments[0]);
  std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, kMostBytesAtOnce)),
                    '\0');
  file_.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (file_.bad()) throw RuntimeError(kDeviceError, "Device I/O error", "FileSystemObject");
  bytes.resize(static_cast<std::size_t>(file_.gcount()));
  return Variant(std::move(bytes));
}

class File : public frame::MemberObject<File> {
 public:
  struct Members {
    static std::span<const frame::Property<File>> properties();
    static std::span<const frame::Method<File>> methods();
  };
  explicit File(fs::path path) : path_(std::move(path)) {}

 private:
  Variant open(std::span<Variant> arguments) {
    if (variant::toInt32(arguments[0]) != kForReading) {
      throw RuntimeError(kBadFileMode, "Bad file mode", "FileSystemObject");
    }
    return Variant(std::make_shared<TextStream>(path_));
  }
  Variant size(std::span<Variant>) { return static_cast<double>(fs::file_size(path_)); }

  fs::path path_;
};

std::span<const frame::Property<File>> File::Members::properties() {
  return {};
}

std::span<const frame::Method<File>> File::Members::methods() {
  static constexpr frame::Method<File> kRows[] = {{"Size", 0, &File::size},
                                                  {"OpenAsTextStream", 2, &File::open}};
  return kRows;
}

// The file with its links followed; nothing when it is no regular file below the root.
fs::path fileBelow(const fs::path& root, const fs::path& path) {
  std::error_code error;
  if (root.empty()) return {};
  const fs::path folder = fs::canonical(root, error);
  if (error) return {};
  const fs::path file = fs::canonical(folder / path, error);
  if (error || !fs::is_regular_file(file, error)) return {};
  const auto [end, ignored] = std::ranges::mismatch(folder, file);
  return end == folder.end() ? file : fs::path();
}

class FileSystem : public frame::MemberObject<FileSystem> {
 public:
  struct Members {
    static std::span<const frame::Property<FileSystem>> properties() { return {}; }
    static std::span<const frame::Method<FileSystem>> methods();
  };
  explicit FileSystem(fs::path root) : root_(std::move(root)) {}

 private:
  Variant getFile(std::span<Variant> arguments) {
    fs::path file = fileBelow(root_, variant::spliced(arguments[0]));
    if (file.empty()) throw RuntimeError(kFileNotFound, "File not found", "FileSystemObject");
    return Variant(std::make_shared<File>(std::move(file)));
  }

  fs::path root_;
};

std::span<const frame::Method<FileSystem>> FileSystem::Members::methods() {
  static constexpr frame::Method<FileSystem> kRows[] = {{"GetFile", 1, &FileSystem::getFile}};
  return kRows;
}

}  // namespace

std::shared_ptr<Object> makeFileSystem(const fs::path& root) {
  return std::make_shared<FileSystem>(root);
}

}  // namespace tarlo::services
