#include "host/site/visit.h"

#include <fmt/format.h>

#include "frame/statement_scope.h"
#include "host/site/log_text.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::host {

namespace {

using enum database::TableGroup;

// The server's own pages: desktop, sign-in, JSON interface. Operations have rights of their own.
constexpr database::StatementRights kDesktopRights = {
    .reads = {Menu, Organisation, Workflow, Schemes, Controls, Dictionary}, .writes = {}};

}  // namespace

Visit::Visit(const WireRequest& given, WireResponse& answer, const VisitContext& context)
    : wire(given),
      out(answer),
      path(percentDecoded(given.path())),
      request(given),
      response(answer, context.charset, context.mostPageBytes),
      session(context.sessions.find(request.cookie(kSessionCookie)),
              [this] { return makeSession(); }),
      rowBudget(context.mostRowBytes, context.rowTotal),
      refusals(*this, context.log),
      page{request,
           response,
           context.server,
           session,
           context.application,
           context.databases,
           frame::statementContext(kDesktopRights)},
      what(path),
      context_(context) {
  page.statements.alsoReadable = context.readableTables;
  page.statements.refusals = &refusals;
  page.statements.budget = &rowBudget;
  page.statements.isWanted = [this] { return response.isClientConnected(); };
  page.access = {frame::Caller::SignedIn};
}

bool Visit::isSignedIn() const {
  return !variant::spliced(session.get("usrID")).empty();
}

SiteScheme Visit::scheme() const {
  const bool isSecure = context_.secureCookie || wire.isSecure;
  return isSecure ? SiteScheme::HttpsOnly : SiteScheme::HttpOrHttps;
}

std::shared_ptr<SessionData> Visit::makeSession() {
  auto data = context_.sessions.create();
  sendCookie(data->id(), "");
  return data;
}

SessionData& Visit::beginSession() {
  context_.sessions.end(session.secretId());
  auto data = makeSession();
  session.become(data);
  return *data;
}

void Visit::endSession() {
  context_.sessions.end(session.secretId());
  session.become(nullptr);
  sendCookie("", "; Max-Age=0");
}

void Visit::sendCookie(std::string_view id, std::string_view life) {
  out.addHeader("Set-Cookie",
                fmt::format("{}={}; Path=/; HttpOnly; SameSite=Lax{}{}", kSessionCookie, id, life,
                            scheme() == SiteScheme::HttpsOnly ? "; Secure" : ""));
}

void RefusalLine::refused(std::string_view statement, std::string_view reason) noexcept {
  ErrorState err;
  err.run([&] {
    log_.warn("{} {} statement refused: user {}, {}; statement {}", visit_.wire.id,
              logText(visit_.what), logText(variant::spliced(visit_.session.get("usrID"))),
              logText(reason), logText(statement));
  });
}

void RefusalLine::failed(const database::DatabaseError& error) noexcept {
  if (mustBeTold(error)) ++mustBeToldCount_;
  if (!failure_ || (mustBeTold(error) && !mustBeTold(*failure_))) failure_ = error;
}

bool RefusalLine::mustBeTold(const database::DatabaseError& error) {
  return error.native().outage != database::Outage::None || error.number() == database::kTimeout;
}

}  // namespace tarlo::host
