#pragma once
// Files and folders for their owner only, whatever the process's umask says: what this system
// writes holds business data, hashes and addresses of users. What is there already keeps its mode.

#include <filesystem>
#include <string>
#include <system_error>

namespace tarlo::database {

// Makes an empty file (0600) where there is none. False, and errno set, when it cannot be made.
bool makePrivateFile(const std::string& path);

// Makes the folders of the path that are missing (0700).
std::error_code makePrivateFolders(const std::filesystem::path& path);

// Whether users other than the owner and the group may read it. False when there is no such file.
bool isReadableByAll(const std::string& path);

}  // namespace tarlo::database
