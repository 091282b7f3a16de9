#pragma once
// One request on its way through the site: what came, what goes out, and the page context on both.

#include <memory>
#include <string>

#include "host/context/http_request.h"
#include "host/context/http_response.h"
#include "host/context/http_server.h"
#include "host/context/sessions.h"
#include "host/site/refusal_line.h"

namespace tarlo::host {

inline constexpr std::string_view kSessionCookie = "TARLOSESSION";

// The scheme of the site's own addresses: where its cookie travels over TLS only, a page of the
// same name that came in clear is another site's.
enum class SiteScheme { HttpOrHttps, HttpsOnly };

struct VisitContext {
  Charset charset;
  std::size_t mostPageBytes;
  bool secureCookie;
  Sessions& sessions;
  frame::Server& server;
  frame::Application& application;
  database::Registry& databases;
  // What its statements may cost, and what they may read beside the dictionary.
  database::RowTotal& rowTotal;
  std::size_t mostRowBytes;
  std::span<const std::string> readableTables;
  spdlog::logger& log;
};

class Visit {
 public:
  // All outlive the visit.
  Visit(const WireRequest& request, WireResponse& response, const VisitContext& context);

  // Ends the session that the browser has, if any, and begins another, so that an id known before
  // a sign-in is worth nothing after it.
  SessionData& beginSession();
  void endSession();
  bool isSignedIn() const;
  // Of the site's own addresses, as far as the configuration and the connection tell.
  SiteScheme scheme() const;

  const WireRequest& wire;
  WireResponse& out;
  const std::string path;  // decoded
  HttpRequest request;
  HttpResponse response;
  HttpSession session;
  database::RowBudget rowBudget;
  RefusalLine refusals;
  Page page;
  std::string what;  // names the page in the log: component and operation

 private:
  std::shared_ptr<SessionData> makeSession();
  void sendCookie(std::string_view id, std::string_view life);

  const VisitContext& context_;
};

}  // namespace tarlo::host
