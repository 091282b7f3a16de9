#include "host/site/visit.h"

#include <fmt/format.h>

#include "variant/convert.h"

namespace tarlo::host {

Visit::Visit(const WireRequest& given, WireResponse& answer, const VisitContext& context)
    : wire(given),
      out(answer),
      path(percentDecoded(given.path())),
      request(given),
      response(answer, context.charset, context.mostPageBytes),
      session(context.sessions.find(request.cookie(kSessionCookie)),
              [this] { return makeSession(); }),
      page{request, response, context.server, session, context.application, context.databases},
      what(path),
      context_(context) {}

bool Visit::isSignedIn() const {
  return !variant::spliced(session.get("usrID")).empty();
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
                            context_.secureCookie ? "; Secure" : ""));
}

}  // namespace tarlo::host
