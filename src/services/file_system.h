#pragma once
// Scripting.FileSystemObject, as far as the platform uses it: files below one folder, for reading.

#include <filesystem>
#include <memory>

#include "variant/object.h"

namespace tarlo::services {

// GetFile(path) gives an object with Size (bytes) and OpenAsTextStream(mode, format), whose stream
// has AtEndOfStream, Read(count) and Close. Read gives the bytes as they are in the file, whatever
// the format says. A path is absolute or below `root`. Error 53 for a file that is not there, not a
// regular file, or not below `root` once its links are followed; with an empty `root` none is.
// Error 54 for a mode other than reading, 57 when the disk fails.
std::shared_ptr<Object> makeFileSystem(const std::filesystem::path& root);

}  // namespace tarlo::services
