#include "host/context/content_policy.h"

#include <fmt/format.h>

#include "host/context/sessions.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kEveryPage =
    "object-src 'none'; base-uri 'self'; form-action 'self'; frame-ancestors 'self'";

// The style sheet draws the user's picture from an address that holds it.
constexpr std::string_view kPictures = "img-src 'self' data:";

std::string_view additionOf(OwnPage page) {
  switch (page) {
    case OwnPage::Plain:
      break;
    case OwnPage::Desktop:
      return "; frame-src 'self' http: https:";
    case OwnPage::Tags:
      return "; style-src-attr 'unsafe-inline'; style-src-elem 'self' 'unsafe-inline'";
    case OwnPage::Pane:
      return "; script-src-attr 'unsafe-inline'; style-src-attr 'unsafe-inline'";
  }
  return {};
}

}  // namespace

std::string_view platformPolicy() {
  static const std::string policy = fmt::format(
      "default-src 'self'; script-src 'self' 'unsafe-inline' 'unsafe-eval'; "
      "style-src 'self' 'unsafe-inline'; {}; {}",
      kPictures, kEveryPage);
  return policy;
}

std::string_view dataPolicy() {
  return "default-src 'none'; base-uri 'none'; form-action 'none'; frame-ancestors 'self'; sandbox";
}

std::string beginOwnPage(frame::Response& response, OwnPage page) {
  constexpr std::size_t kNonceLength = 32;  // 16 random bytes
  std::string nonce = randomToken().substr(0, kNonceLength);
  response.setHeader(kContentPolicy, fmt::format("default-src 'self'; script-src 'nonce-{}'; "
                                                 "style-src 'self'; {}; {}{}",
                                                 nonce, kPictures, kEveryPage, additionOf(page)));
  return nonce;
}

}  // namespace tarlo::host
