#pragma once
// A site without a socket: a database with users, and requests as the wire would have them.

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/site/site.h"
#include "support/temporary_folder.h"
#include "support/text.h"

namespace tarlo::host::testing {

using tarlo::testing::holds;

std::shared_ptr<spdlog::logger> loggerTo(std::ostream& out);

// What the site answered.
struct Answer : WireResponse {
  void setStatus(unsigned number) override { status = number; }
  void addHeader(std::string name, std::string value) override {
    headers.emplace_back(std::move(name), std::move(value));
  }
  void send(std::string text) override {
    body += text;
    started = true;
  }
  bool flush(std::string_view bytes) override {
    body += bytes;
    started = true;
    return true;
  }
  bool isStarted() const override { return started; }
  bool isClientConnected() override { return true; }

  // All values of the header, one a line.
  std::string header(std::string_view name) const;
  std::string text() const;  // the body as UTF-8

  unsigned status = 200;
  std::vector<Header> headers;
  std::string body;
  bool started = false;
};

class TestSite {
 public:
  explicit TestSite(Config config = {});

  Site& site();
  SignIn& signIn();
  database::Database& database();
  // The first cell of the statement's rows, as text.
  std::string ask(const std::string& sql);
  int userId(const std::string& login);
  // Ends the site, so that the next request meets a fresh one of the changed configuration.
  Config& changeConfig();
  const Config& config() const { return config_; }
  StaticFiles& files() { return files_; }

  // Sends with the cookie that the site has set last.
  std::unique_ptr<Answer> get(std::string target, std::vector<Header> headers = {});
  // As a page of the site posts, unless the headers say where the form stands.
  std::unique_ptr<Answer> post(std::string target, std::string body,
                               std::vector<Header> headers = {});
  std::unique_ptr<Answer> send(WireRequest request);
  void signInAs(const std::string& login);
  void forgetCookie() { cookie_.clear(); }
  const std::string& cookie() const { return cookie_; }

  std::string log() const { return log_.str(); }
  std::string remoteAddress = "127.0.0.1";

 private:
  tarlo::testing::TemporaryFolder folder_;
  Config config_;
  std::ostringstream log_;
  std::shared_ptr<spdlog::logger> logger_;
  // Nobody waits long for a lock here.
  database::Registry databases_{{.busyTimeout = std::chrono::milliseconds(300)}};
  StaticFiles files_;
  std::unique_ptr<Site> site_;
  std::unique_ptr<SignIn> signIn_;
  std::string cookie_;
};

}  // namespace tarlo::host::testing
