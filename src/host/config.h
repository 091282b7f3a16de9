#pragma once
// The configuration: one TOML file, every key with a default, an unknown key an error. `tarloquery
// config` prints the effective one, with what each key means.

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/wire/limits.h"

namespace tarlo::host {

using Milliseconds = std::chrono::milliseconds;

struct Config {
  std::string listen = "127.0.0.1:8080";
  std::string database = "sqlite:data/tarlo.db";
  std::string charset = "gb2312";
  bool designerExtras = true;
  std::string virtualWebKeyWord;
  std::string startPage = "/";
  std::map<std::string, std::string> application;  // further Application values

  std::string tlsCertificate, tlsKey;  // both "" = plain HTTP

  WireLimits limits;
  std::chrono::milliseconds operationTime{
      60'000};  // beyond it a slow operation is reported in the log

  std::chrono::milliseconds sessionIdle{30 * 60'000};
  std::size_t sessions = 20'000;
  std::chrono::milliseconds sessionCheck{5'000};
  bool secureCookie = false;

  std::size_t signInAttempts = 8;  // failures of one user or address within the window
  std::chrono::milliseconds signInWindow{10 * 60'000};
  std::chrono::milliseconds linkLife{10 * 60'000};

  std::string mailServer;  // "" = none
  std::string mailUser;
  std::string mailPassword;
  Milliseconds mailTime{30'000};
  std::string mailSender;
  std::string mailTelephone;
  std::string mailComplaintsTelephone;
  std::string mailCompany;

  std::vector<std::string> readableTables;  // beside those of the dictionary
  std::vector<std::string> administrators;  // sign-in names
  std::size_t rowBytes = 64u << 20;
  std::size_t rowBytesInAll = 512u << 20;
  std::size_t temporaryBytes = 128u << 20;
  std::size_t temporaryBytesInAll = 512u << 20;
  Milliseconds statementTime{30'000};

  std::size_t diskReserve = 64u << 20;

  Milliseconds housekeepingPause{10 * 60'000};             // 0 = no housekeeping
  Milliseconds drawnGridLife{2 * std::chrono::hours(24)};  // 0 = for ever; so the next
  Milliseconds operationLogLife{0};
  Milliseconds endedLife{7 * std::chrono::hours(24)};  // of links and tokens that have ended

  bool statementsByUrl = false;
  bool designersOnly = true;
  std::string registry;  // "" = no classes of other libraries

  std::string transferFolder;  // "" = no file is sent

  std::string trustedHeader;                  // "" = off
  std::vector<std::string> trustedAddresses;  // of the proxies that may send it

  std::string logFile;  // "" = standard error
  std::string logLevel = "info";
  std::string accessLog;  // "" = with the other lines
};

// A message for people: the file, the line where it is known, the key and what was expected.
class ConfigError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reads a file over the defaults. Throws ConfigError.
Config loadConfig(const std::string& file);
// The same from text; `name` stands for the file in messages.
Config parseConfig(std::string_view text, std::string_view name);
// As TOML, each key under a comment that says what it means; parseConfig of it gives the same
// configuration.
std::string printConfig(const Config& config);

struct Endpoint {
  std::string address;
  std::uint16_t port = 0;
  // Reached from this machine only.
  bool isLoopback() const;
};
// "HOST:PORT", "[::1]:8080"; HOST is an address of this machine or "localhost". Throws ConfigError;
// `name` stands for where the text comes from.
Endpoint parseEndpoint(std::string_view text, std::string_view name = "listen");

}  // namespace tarlo::host
