#pragma once
// Server and Application of a page: what does not change between requests.

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "frame/local_page.h"
#include "host/decode/charset.h"

namespace tarlo::host {

// Objects that pages may create, by program id without regard to case.
using ObjectFactories =
    std::map<std::string, std::function<std::shared_ptr<Object>()>, frame::NoCaseLess>;

class HttpServer : public frame::Server {
 public:
  HttpServer(const ObjectFactories& factories, Charset charset)
      : factories_(factories), charset_(charset) {}
  std::shared_ptr<Object> createObject(std::string_view progId) override;
  // In the page's code page, so that a browser reads the address as the page would have sent it.
  std::string urlEncode(std::string_view text) const override;

 private:
  const ObjectFactories& factories_;
  const Charset charset_;
};

class HttpApplication : public frame::Application {
 public:
  explicit HttpApplication(frame::ValueMap values) : values_(std::move(values)) {}
  Variant get(std::string_view key) const override;

 private:
  const frame::ValueMap values_;
};

}  // namespace tarlo::host
