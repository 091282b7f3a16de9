#pragma once
// Objects of the server that pages create by name: mail and files.

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "variant/object.h"

namespace tarlo::services {

struct MailServer {
  std::string url;   // smtp://HOST:PORT or smtps://HOST:PORT; "" when there is none
  std::string user;  // "" for a server that asks for none
  std::string password;
  std::chrono::seconds timeout{30};  // for the whole message
};

// CDONTS.NewMail: one message, sent over SMTP. Properties: From, To (addresses joined by ";" or
// ","), Subject, Body, BodyFormat (0: HTML, 1: text), MailFormat (not read: every message is MIME).
// Send sends it; it raises error 70 when no server is configured, and error 31 with the mail
// library's words when the server cannot be reached or refuses. Line ends in a header are dropped.
std::shared_ptr<Object> makeNewMail(const MailServer& server);

// Scripting.FileSystemObject, as far as the platform uses it: files below one folder, for reading.
// GetFile(path) gives an object with Size (bytes) and OpenAsTextStream(mode, format), whose stream
// has AtEndOfStream, Read(count) and Close. Read gives the bytes as they are in the file, whatever
// the format says. A path is absolute or below `root`. Error 53 for a file that is not there, not a
// regular file, or not below `root` once its links are followed; with an empty `root` none is.
// Error 54 for a mode other than reading, 57 when the disk fails.
std::shared_ptr<Object> makeFileSystem(const std::filesystem::path& root);

}  // namespace tarlo::services
