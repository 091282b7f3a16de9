#pragma once
// The web site: which address leads where, for whom, and under which headers.

#include <spdlog/logger.h>

#include <memory>

#include "database/database.h"
#include "host/config.h"
#include "host/sign_in/sign_in.h"
#include "host/site/static_files.h"
#include "host/site/visit.h"
#include "host/upkeep/readiness.h"

namespace tarlo::host {

class Site {
 public:
  // All outlive the site. `log` takes what operators need to know; users never see it.
  Site(const Config& config, database::Registry& databases, StaticFiles files,
       std::shared_ptr<spdlog::logger> log);

  // The handler of the wire server: answers every request and throws nothing.
  void handle(const WireRequest& request, WireResponse& response);
  // Files and health checks wait for nothing, and sign-ins not for operations.
  Lane laneOf(const WireRequest& request) const;
  // By the session's user, or by what else a request names its user with.
  Visitor visitorOf(const WireRequest& request);
  // Tells that the request found no place, 429 or 503.
  void turnDown(const WireRequest& request, unsigned status, WireResponse& response);
  // What the site says about itself; somebody else looks.
  Readiness& readiness() { return readiness_; }

 private:
  void route(Visit& visit);
  bool routeOpen(Visit& visit);
  void routeDesktop(Visit& visit);
  void writeReadiness(Visit& visit);
  void reportSlow(const Visit& visit, std::chrono::steady_clock::time_point begin);

  const Config& config_;
  database::Registry& databases_;
  const std::shared_ptr<spdlog::logger> log_;
  const StaticFiles files_;
  Sessions sessions_;
  const ObjectFactories objects_;
  HttpServer server_;
  HttpApplication application_;
  SignIn signIn_;
  database::RowTotal rowTotal_;
  Readiness readiness_;
  const VisitContext context_;
};

}  // namespace tarlo::host
