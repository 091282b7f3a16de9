#include "host/site/embedded_files.h"

// A build without the browser side serves pages without their scripts.
#if __has_include(<embedded_web.h>)
#include <embedded_web.h>
#endif

namespace tarlo::host {

#if __has_include(<embedded_web.h>)

namespace {

constexpr std::string_view kStatic = "static";  // its files stand at their own paths

std::string addressOf(std::string_view name) {
  if (name == "scripts.js") return std::string(kScriptLibrary);
  if (name.starts_with(kStatic)) return std::string(name.substr(kStatic.size()));
  return "/assets/" + std::string(name);
}

}  // namespace

StaticFiles embeddedFiles() {
  StaticFiles files;
  for (const auto& file : embedded::web::files()) files.add(addressOf(file.name), file.text);
  return files;
}

#else

StaticFiles embeddedFiles() {
  return {};
}

#endif

}  // namespace tarlo::host
