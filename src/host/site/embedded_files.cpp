#include "host/site/embedded_files.h"

#include "embedded_web.h"

namespace tarlo::host {

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

}  // namespace tarlo::host
