#include "site_support.h"

#include <spdlog/sinks/ostream_sink.h>

#include <algorithm>

#include "database/schema_version.h"
#include "database/script.h"
#include "support/schema_files.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::host::testing {

namespace {

// Made once: a site starts from a copy.
const std::filesystem::path& templateDatabase() {
  static const tarlo::testing::TemporaryFolder folder;
  static const std::filesystem::path file = [] {
    const std::filesystem::path path = folder.path() / "template.db";
    const auto fresh = database::openDatabase("sqlite:" + path.string(), {.create = true});
    auto connection = fresh->borrow();
    connection->allowDdl(true);
    for (const char* script :
         {"tables/10_schemes.sql", "tables/20_dictionary.sql", "tables/30_organisation.sql",
          "tables/40_workflow.sql", "tables/50_services.sql", "tables/60_sign_in.sql",
          "tables/70_upkeep.sql", "demo/10_organisation.sql"})
      database::runScript(*connection, tarlo::testing::schemaFile(script));
    database::storeSchemaVersion(*connection, "tests");
    return path;
  }();
  return file;
}

}  // namespace

std::shared_ptr<spdlog::logger> loggerTo(std::ostream& out) {
  return std::make_shared<spdlog::logger>("test",
                                          std::make_shared<spdlog::sinks::ostream_sink_mt>(out));
}

std::string Answer::header(std::string_view name) const {
  std::string values;
  for (const auto& [key, value] : headers) {
    if (text::equalsNoCase(key, name)) values += (values.empty() ? "" : "\n") + value;
  }
  return values;
}

std::string Answer::text() const {
  const bool utf8 = header("Content-Type").find("utf-8") != std::string::npos;
  return utf8 ? body : decodeGbk(body);
}

TestSite::TestSite(Config config) : config_(std::move(config)) {
  const std::filesystem::path file = folder_.path() / "site.db";
  std::filesystem::copy_file(templateDatabase(), file);
  config_.database = "sqlite:" + file.string();
  logger_ = loggerTo(log_);
}

Site& TestSite::site() {
  if (site_ == nullptr) {
    site_ = std::make_unique<Site>(config_, databases_, files_, logger_);
    site_->readiness().look();
  }
  return *site_;
}

SignIn& TestSite::signIn() {
  if (signIn_ == nullptr) signIn_ = std::make_unique<SignIn>(config_, databases_, logger_);
  return *signIn_;
}

database::Database& TestSite::database() {
  return databases_.find(config_.database);
}

std::string TestSite::ask(const std::string& sql) {
  return variant::spliced(database().borrow()->open(sql)->value(0));
}

int TestSite::userId(const std::string& login) {
  return findUser(database(), login)->id;
}

Config& TestSite::changeConfig() {
  site_.reset();
  signIn_.reset();
  return config_;
}

std::unique_ptr<Answer> TestSite::send(WireRequest request) {
  request.id = "test-1";
  request.remoteAddress = remoteAddress;
  request.headers.emplace_back("Host", "site.example");
  if (!cookie_.empty()) request.headers.emplace_back("Cookie", cookie_);
  auto answer = std::make_unique<Answer>();
  site().handle(request, *answer);
  const std::string set = answer->header("Set-Cookie");
  if (!set.empty()) cookie_ = set.substr(0, set.find(';'));
  return answer;
}

std::unique_ptr<Answer> TestSite::get(std::string target, std::vector<Header> headers) {
  return send({"", "GET", std::move(target), std::move(headers), "", "", 0});
}

std::unique_ptr<Answer> TestSite::post(std::string target, std::string body,
                                       std::vector<Header> headers) {
  const bool saysWhere = std::ranges::any_of(headers, [](const Header& header) {
    return header.first == "Origin" || header.first == "Sec-Fetch-Site";
  });
  if (!saysWhere) headers.emplace_back("Origin", "http://site.example");
  headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
  return send({"", "POST", std::move(target), std::move(headers), std::move(body), "", 0});
}

void TestSite::signInAs(const std::string& login) {
  const std::string token =
      makeSignInLink(database(), userId(login), std::chrono::milliseconds(60'000));
  get("/sign-in?link=" + token);
}

}  // namespace tarlo::host::testing
