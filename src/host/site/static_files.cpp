#include "host/site/static_files.h"

#include <fmt/format.h>

#include <cstdint>

#include "embedded_web.h"
#include "host/context/content_policy.h"
#include "text/fold.h"

namespace tarlo::host {

namespace {

std::string_view typeOf(std::string_view address) {
  static constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
      {".zembra", "text/javascript; charset=utf-8"},
      {".js", "text/javascript; charset=utf-8"},
      {".css", "text/css; charset=utf-8"},
      {".html", "text/html; charset=utf-8"},
      {".txt", "text/plain; charset=utf-8"},
      {".gif", "image/gif"},
      {".png", "image/png"},
      {".jpg", "image/jpeg"},
      {".svg", "image/svg+xml"},
      {".ico", "image/x-icon"}};
  const std::string folded = text::foldedName(address);
  for (const auto& [ending, type] : kTypes) {
    if (folded.ends_with(ending)) return type;
  }
  return "application/octet-stream";
}

// FNV-1a: names a content, and nobody gains by making two contents of one name.
std::uint64_t hashOf(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return hash;
}

// Whether a list such as `"a", W/"b"` names the tag.
bool names(std::string_view list, std::string_view etag) {
  return list == "*" || list.find(etag) != std::string_view::npos;
}

constexpr std::string_view kStatic = "static";  // its files stand at their own paths

std::string addressOf(std::string_view name) {
  if (name == "scripts.js") return std::string(kScriptLibrary);
  if (name.starts_with(kStatic)) return std::string(name.substr(kStatic.size()));
  return "/assets/" + std::string(name);
}

}  // namespace

void StaticFiles::add(std::string address, std::string_view bytes) {
  const std::string_view type = typeOf(address);
  // Pictures hardly change; scripts and styles must be those of the server that wrote the page.
  const bool picture = type.starts_with("image/");
  StaticFile file{bytes, std::string(type), fmt::format("\"{:016x}\"", hashOf(bytes)),
                  picture ? "public, max-age=3600" : "no-cache"};
  files_.insert_or_assign(std::move(address), std::move(file));
}

const StaticFile* StaticFiles::find(std::string_view address) const {
  const auto found = files_.find(address);
  return found == files_.end() ? nullptr : &found->second;
}

StaticFiles embeddedFiles() {
  StaticFiles files;
  for (const auto& file : embedded::web::files()) files.add(addressOf(file.name), file.text);
  return files;
}

void sendFile(const StaticFile& file, const WireRequest& request, WireResponse& response) {
  response.addHeader("ETag", file.etag);
  response.addHeader("Cache-Control", file.cacheControl);
  response.addHeader(std::string(kContentPolicy), std::string(dataPolicy()));
  if (names(request.header("If-None-Match"), file.etag)) {
    response.setStatus(304);
    response.send("");
    return;
  }
  response.addHeader("Content-Type", file.type);
  response.send(std::string(file.bytes));
}

}  // namespace tarlo::host
