#include "host/site/visit.h"

#include <fmt/format.h>

#include "frame/statement_scope.h"
#include "variant/convert.h"

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

}  // namespace tarlo::host
