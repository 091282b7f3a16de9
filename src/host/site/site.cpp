#include "host/site/site.h"

#include <fmt/ranges.h>

#include "host/api/api.h"
#include "host/context/registered_classes.h"
#include "host/desktop/desktop.h"
#include "host/site/boundary.h"
#include "host/site/component_pages.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"
#include "host/site/same_origin.h"
#include "host/site/sign_in_pages.h"
#include "org/may_call.h"
#include "services/page_objects.h"
#include "siblings/siblings.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::string_view kAlive = "/healthz";
constexpr std::string_view kReady = "/readyz";
constexpr std::string_view kSignIn = "/sign-in";
constexpr std::string_view kSignOut = "/sign-out";
constexpr std::string_view kDemoForm = "/demo/form";

// Beside the policy that every answer has of its own: frames are the site's, and it alone is told
// the referring address, which shows where a request comes from.
constexpr std::pair<std::string_view, std::string_view> kSecurityHeaders[] = {
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "SAMEORIGIN"},
    {"Referrer-Policy", "same-origin"}};

void addSecurityHeaders(WireResponse& response) {
  for (const auto& [name, value] : kSecurityHeaders)
    response.addHeader(std::string(name), std::string(value));
}

Charset charsetIn(const Config& config) {
  return config.charset == "utf-8" ? Charset::Utf8 : Charset::Gbk;
}

frame::ValueMap applicationValues(const Config& config) {
  frame::ValueMap values;
  for (const auto& [name, value] : config.application) values[name] = value;
  values["virtualWebKeyWord"] = config.virtualWebKeyWord;
  values["strConn"] = config.database;
  values["designerExtras"] = config.designerExtras;
  values["statementsByUrl"] = config.statementsByUrl;
  values["designersOnly"] = config.designersOnly;
  values["administrators"] = fmt::format("{}", fmt::join(config.administrators, ","));
  values["mailSender"] = config.mailSender;
  values["mailTelephone"] = config.mailTelephone;
  values["mailComplaintsTelephone"] = config.mailComplaintsTelephone;
  values["mailCompany"] = config.mailCompany;
  return values;
}

ObjectFactories pageObjects(const Config& config, spdlog::logger& log) {
  ObjectFactories factories;
  const services::MailServer mail{
      config.mailServer, config.mailUser, config.mailPassword,
      std::chrono::duration_cast<std::chrono::seconds>(config.mailTime)};
  factories["CDONTS.NewMail"] = [mail] { return services::makeNewMail(mail); };
  factories["Scripting.FileSystemObject"] = [folder = config.transferFolder] {
    return services::makeFileSystem(folder);
  };
  for (const auto& progId : siblings::progIds()) factories[std::string(progId.name)] = progId.make;
  addRegisteredClasses(config.registry, factories, log);
  return factories;
}

bool isSupported(std::string_view method) {
  return method == "GET" || method == "HEAD" || method == "POST";
}

// Whatever a browser posts, and the sign-out however it is asked for. A program that shows a token
// and has no session is no browser that another site could lure. Operations asked for by GET are
// known later by what they write.
bool wantsEvidence(const Visit& visit) {
  if (visit.wire.method != "POST") return visit.path == kSignOut;
  return !isApiPath(visit.path) || !isTokenCall(visit);
}

void writePlain(Visit& visit, unsigned status, std::string_view text) {
  visit.response.setStatus(status);
  visit.response.setHeader("Content-Type", "text/plain; charset=utf-8");
  visit.response.write(text);
}

}  // namespace

Site::Site(const Config& config, database::Registry& databases, StaticFiles files,
           std::shared_ptr<spdlog::logger> log)
    : config_(config),
      databases_(databases),
      log_(std::move(log)),
      files_(std::move(files)),
      sessions_(config.sessionIdle, config.sessions),
      objects_(pageObjects(config, *log_)),
      server_(objects_, charsetIn(config)),
      application_(applicationValues(config)),
      signIn_(config, databases, log_),
      rowTotal_(config.rowBytesInAll),
      readiness_(config.database, databases, config.diskReserve, log_),
      context_{charsetIn(config),
               config.limits.responseBytes,
               config.secureCookie,
               sessions_,
               server_,
               application_,
               databases,
               rowTotal_,
               config.rowBytes,
               config.readableTables,
               *log_} {}

Lane Site::laneOf(const WireRequest& request) const {
  const std::string path = percentDecoded(request.path());
  if (path == kAlive || path == kReady || files_.find(path) != nullptr) return Lane::Immediate;
  return path == kSignIn || path == kSignOut ? Lane::SignIn : Lane::Operation;
}

Visitor Site::visitorOf(const WireRequest& request) {
  const auto session = sessions_.find(HttpRequest(request).cookie(kSessionCookie));
  if (session != nullptr) return {session->publicId(), variant::spliced(session->get("usrID"))};
  // A token is looked up behind the gate only: it counts as a session of its own.
  return {std::string(request.header("Authorization")), std::string(signIn_.trustedLogin(request))};
}

void Site::turnDown(const WireRequest& request, unsigned status, WireResponse& response) {
  addSecurityHeaders(response);
  Visit visit(request, response, context_);
  runWithin(visit, *log_, [&] {
    const Notice& notice = status == kTooManyAtOnce.status ? kTooManyAtOnce : kBusy;
    writeNotice(visit, notice);
    if (!isApiPath(visit.path)) return;
    visit.response.clear();
    throw ApiError(status, "busy", "Too many requests at a time.");
  });
}

void Site::handle(const WireRequest& request, WireResponse& response) {
  const auto begin = Clock::now();
  addSecurityHeaders(response);
  Visit visit(request, response, context_);
  runWithin(visit, *log_, [&] { route(visit); });
  reportSlow(visit, begin);
}

void Site::route(Visit& visit) {
  if (!isSupported(visit.wire.method)) {
    writeNotice(visit, kWrongMethod);
    visit.response.setHeader("Allow", "GET, HEAD, POST");
    return;
  }
  if (const StaticFile* file = files_.find(visit.path); file != nullptr) {
    sendFile(*file, visit.wire, visit.out);
    return;
  }
  visit.response.setHeader("Cache-Control", "no-store");
  const std::string_view component = componentOf(visit.path);
  if (wantsEvidence(visit) && !mayGoOn(visit, Purpose::Changes, *log_)) return;
  if (isApiPath(visit.path)) {
    answerApi(visit, signIn_);
    return;
  }
  if (routeOpen(visit)) return;
  if (!component.empty() && !hasComponent(component)) {
    writeNotice(visit, kNotInstalled);
  } else if (component.empty() && visit.path != "/" && visit.path != kDemoForm) {
    writeNotice(visit, kNoSuchPage);
  } else if (!takeTrustedUser(visit, signIn_)) {
    askToSignIn(visit);
  } else if (!component.empty()) {
    runComponentPage(visit, component, *log_);
  } else {
    routeDesktop(visit);
  }
}

// Addresses that need nobody signed in. False for any other.
bool Site::routeOpen(Visit& visit) {
  if (visit.path == kAlive) {
    writePlain(visit, 200, "ok\n");
  } else if (visit.path == kReady) {
    writeReadiness(visit);
  } else if (visit.path == kSignIn) {
    signInPage(visit, signIn_, config_);
  } else if (visit.path == kSignOut) {
    signOutPage(visit);
  } else {
    return false;
  }
  return true;
}

void Site::routeDesktop(Visit& visit) {
  if (visit.path == kDemoForm) {
    if (org::mayCall(visit.page, {frame::Caller::FormUser})) {
      writeDemoForm(visit.page);
    } else {
      refuse(visit, *log_, kNotGranted, "the user may open no entry of the menu");
    }
    return;
  }
  const Variant menu = visit.request.value("cmdID");
  if (!menu.isEmpty()) {
    openMenu(visit.page, variant::spliced(menu));
  } else if (variant::spliced(visit.request.value("pane")) == "1") {
    writePane(visit.page);
  } else {
    writeShell(visit.page);
  }
}

void Site::writeReadiness(Visit& visit) {
  const std::string_view reason = readiness_.reason();
  if (reason.empty()) {
    writePlain(visit, 200, "ready\n");
  } else {
    writePlain(visit, 503, fmt::format("not ready: {}\n", reason));
  }
}

void Site::reportSlow(const Visit& visit, Clock::time_point begin) {
  const auto took = std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
  if (took > config_.operationTime)
    log_->warn("{} {} took {} ms", visit.wire.id, logText(visit.what), took.count());
}

}  // namespace tarlo::host
