#pragma once
// Files that are the same for everybody: script library, styles, pictures. They come from the
// binary; tests fill in their own.

#include <map>
#include <string>
#include <string_view>

#include "frame/local_page.h"
#include "host/wire/message.h"

namespace tarlo::host {

struct StaticFile {
  std::string_view bytes;
  std::string type;  // of the Content-Type header
  std::string etag;  // with its quotes
  std::string cacheControl;
};

class StaticFiles {
 public:
  // `address` begins with "/" and is matched without regard to case, as pages write it in several.
  // The bytes outlive this object.
  void add(std::string address, std::string_view bytes);
  // Nothing when there is none.
  const StaticFile* find(std::string_view address) const;

 private:
  std::map<std::string, StaticFile, frame::NoCaseLess> files_;
};

// The browser side of the product as the binary carries it, by the addresses that pages use.
StaticFiles embeddedFiles();

// Answers with the file, or with 304 when the browser has it already.
void sendFile(const StaticFile& file, const WireRequest& request, WireResponse& response);

// The address under which the script library stands in the files.
inline constexpr std::string_view kScriptLibrary = "/TarloScripts.Zembra";

}  // namespace tarlo::host
