// The configuration: what it refuses, and that what it prints is what it reads.

#include <gtest/gtest.h>

#include "host/config_keys.h"
#include "support/text.h"

namespace tarlo::host {
namespace {

using tarlo::testing::holds;

std::string refusalOf(std::string_view text) {
  try {
    parseConfig(text, "site.toml");
  } catch (const ConfigError& error) {
    return error.what();
  }
  return "taken";
}

TEST(Config, RefusesInWordsForPeople) {
  const std::pair<const char*, const char*> rows[] = {
      {"[server]\nlisten = 8080", "site.toml, line 2: server.listen must be a text"},
      {"[server]\nthreads = 1", "site.toml, line 2: server.threads must be a number from 2 to 256"},
      {"[server]\nthreads = \"4\"", "threads must be a number"},
      {"[server]\nthreads = nan", "site.toml, line 2: server.threads must be a number from"},
      {"[server]\nthreads = inf", "server.threads must be a number from"},
      {"[server]\nthreads = 4.5", "site.toml, line 2: server.threads must be a whole number"},
      {"[server]\nthreads = 9223372036854775807", "server.threads must be a number from"},
      {"[limits]\nbody_seconds = nan", "limits.body_seconds must be a number from"},
      {"[limits]\nbody_seconds = -inf", "limits.body_seconds must be a number from"},
      {"[server]\nthreds = 4", "line 2: server.threds is not a key of the configuration"},
      {"[servers]\nthreads = 4", "servers.threads is not a key"},
      {"listen = \"x\"", "stands outside of a section"},
      {"[server]\nthreads = 4\nrunning = 4", "together must be less than server.threads"},
      {"[server]\nlisten = \"nowhere\"",
       "site.toml: server.listen: \"nowhere\" is not an address and a port"},
      {"[server]\nlisten = \"designer.example:80\"", "is not an address and a port"},
      {"[tls]\nkey = \"a.key\"", "site.toml: tls.certificate and tls.key go together"},
      {"[server]\nlisten = \"a:99999\"", "is not an address and a port"},
      {"[pages]\ncharset = \"koi8\"", "charset must be gb2312 or utf-8"},
      {"[pages]\nstart_page = \"http://x\"", "start_page must begin with /"},
      {"[log]\nlevel = \"loud\"", "log.level must be"},
      {"[session]\nsecure_cookie = 1", "must be true or false"},
      {"[sign_in]\ntrusted_header = \"X-User\"", "needs sign_in.trusted_addresses"},
      {"[sign_in]\ntrusted_addresses = [1]", "must be a list of texts"},
      {"[application]\na = 1", "must be a text"},
      {"[server\n", "line 1"}};
  for (const auto& [text, said] : rows)
    EXPECT_TRUE(holds(refusalOf(text), said)) << text << " gives " << refusalOf(text);
  EXPECT_THROW(loadConfig("/nonexistent/site.toml"), ConfigError);
}

TEST(Config, ReadsWhatItPrints) {
  Config config = parseConfig(
      "[server]\nqueue_seconds = 0.5\n[housekeeping]\nended_days = 1.5\n[sign_in]\ntrusted_header "
      "= \"X-User\"\n"
      "trusted_addresses = [\"10.0.0.1\", \"::1\"]\n[application]\n\"k\\\"ey\" = \"值\"",
      "site.toml");
  EXPECT_EQ(config.limits.queueTime, Milliseconds(500));
  EXPECT_EQ(config.endedLife, std::chrono::hours(36));
  EXPECT_EQ(config.application["k\"ey"], "值");
  const std::string printed = printConfig(config);
  EXPECT_EQ(printConfig(parseConfig(printed, "printed")), printed);
  for (const ConfigKey& key : configKeys())
    EXPECT_TRUE(holds(printed, "\n" + std::string(key.name) + " = ")) << key.name;
}

TEST(Config, ReadsAddresses) {
  EXPECT_EQ(parseEndpoint("[::1]:80").address, "::1");
  EXPECT_EQ(parseEndpoint("localhost:80").address, "127.0.0.1");
  EXPECT_EQ(parseEndpoint("0.0.0.0:0").port, 0);
  EXPECT_TRUE(parseEndpoint("[::1]:80").isLoopback());
  EXPECT_TRUE(parseEndpoint("127.1.2.3:80").isLoopback());
  EXPECT_FALSE(parseEndpoint("0.0.0.0:80").isLoopback());
}

}  // namespace
}  // namespace tarlo::host
