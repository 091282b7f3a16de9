#pragma once
// One request on its way through the site: what came, what goes out, and the page context on both.

#include <spdlog/logger.h>

#include <memory>
#include <optional>
#include <string>

#include "database/statement_context.h"
#include "host/context/http_request.h"
#include "host/context/http_response.h"
#include "host/context/http_server.h"
#include "host/context/sessions.h"

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

class Visit;

// A statement that was refused for what it touches, as a line of the log: with the request, the
// user and the operation, since nobody else is told by what the operation makes of it. And the
// statements that failed in another way, for the request's end.
class RefusalLine : public database::RefusalLog {
 public:
  // Both outlive it.
  RefusalLine(const Visit& visit, spdlog::logger& log) : visit_(visit), log_(log) {}
  void refused(std::string_view statement, std::string_view reason) noexcept override;
  void failed(const database::DatabaseError& error) noexcept override;

  // The first failure of a statement that mattered; one that an answer must tell comes before those
  // of which the operation knows better: an outage, or a statement that took too long.
  const std::optional<database::DatabaseError>& failure() const { return failure_; }
  static bool mustBeTold(const database::DatabaseError& error);
  // How many failures an answer must tell.
  std::size_t mustBeToldCount() const { return mustBeToldCount_; }

 private:
  const Visit& visit_;
  spdlog::logger& log_;
  std::optional<database::DatabaseError> failure_;
  std::size_t mustBeToldCount_ = 0;
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
