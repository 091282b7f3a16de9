#pragma once
// Request of a page over a request of the wire. Everything is decoded at its first use and kept.

#include <optional>

#include "frame/page.h"
#include "host/decode/values.h"
#include "host/wire/message.h"

namespace tarlo::host {

class HttpRequest : public frame::Request {
 public:
  // The wire's request outlives this object.
  explicit HttpRequest(const WireRequest& wire) : wire_(wire) {}

  Variant value(std::string_view key) const override;
  Variant serverVariable(std::string_view name) const override;

  const WireRequest& wire() const { return wire_; }
  // The value of a cookie, "" when there is none.
  std::string cookie(std::string_view name) const;

 private:
  const Values& query() const;
  const Values& form() const;
  const Values& cookies() const;

  const WireRequest& wire_;
  mutable std::optional<Values> query_, form_, cookies_;
};

}  // namespace tarlo::host
