// The scheme list over HTTP beside a constant page of the same size on the same server, at 64
// connections that stay open: requests a second (items_per_second) and the 99th percentile of the
// time for one, in milliseconds.

#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <spdlog/logger.h>
#include <spdlog/sinks/null_sink.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/cli.h"
#include "host/site/site.h"
#include "host/site/static_files.h"
#include "host/wire/server.h"

namespace tarlo::bench {
namespace {

constexpr int kConnections = 64;
constexpr const char* kList = "/TarloQuery.Zembra?action=ctrlSearch";

std::string command(std::vector<std::string> words) {
  words.insert(words.begin(), "tarloquery");
  std::vector<const char*> arguments;
  for (const auto& word : words) arguments.push_back(word.c_str());
  std::ostringstream out, err;
  if (app::run(arguments, out, err) != 0) throw std::runtime_error(err.str());
  return out.str();
}

// One connection that stays open.
class Client {
 public:
  explicit Client(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
      throw std::runtime_error("no connection");
    }
  }
  ~Client() { ::close(socket_); }
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  // Head and body of the answer.
  const std::string& get(const std::string& request) {
    if (::send(socket_, request.data(), request.size(), MSG_NOSIGNAL) < 0) {
      throw std::runtime_error("the request could not be sent");
    }
    answer_.clear();
    std::size_t wanted = std::string::npos;
    while (answer_.size() < wanted) {
      char room[65536];
      const ssize_t got = ::recv(socket_, room, sizeof room, 0);
      if (got <= 0) throw std::runtime_error("the connection was closed");
      answer_.append(room, static_cast<std::size_t>(got));
      const auto end = answer_.find("\r\n\r\n");
      if (wanted != std::string::npos || end == std::string::npos) continue;
      const auto length = answer_.find("Content-Length: ");
      wanted = end + 4 + (length < end ? std::stoul(answer_.substr(length + 16)) : 0);
    }
    return answer_;
  }

 private:
  int socket_;
  std::string answer_;
};

std::string requestFor(std::string_view target, std::string_view cookie) {
  return fmt::format(
      "GET {} HTTP/1.1\r\nHost: 127.0.0.1\r\nReferer: http://127.0.0.1/\r\nCookie: {}\r\n\r\n",
      target, cookie);
}

// The product on a demo database, and a handler in front of it that answers one address with a
// constant page.
class Server {
 public:
  Server() {
    std::filesystem::create_directories(folder_);
    config_.database = "sqlite:" + (folder_ / "demo.db").string();
    command({"init", "--demo", "--database", config_.database});
    site_ = std::make_unique<host::Site>(config_, databases_, host::embeddedFiles(), log_);
    host::WireServer::Options options;
    options.limits = config_.limits;
    // All connections belong to one user here.
    options.limits.operationsPerSession = options.limits.operationsPerUser = 100'000;
    options.laneOf = [this](const auto& request) { return site_->laneOf(request); };
    options.visitorOf = [this](const auto& request) { return site_->visitorOf(request); };
    wire_ =
        std::make_unique<host::WireServer>(options, [this](const auto& request, auto& response) {
          if (request.target == "/constant") {
            response.addHeader("Content-Type", "text/html; charset=gb2312");
            response.send(constant_);
          } else {
            site_->handle(request, response);
          }
        });
    wire_->start();
    signIn();
  }
  ~Server() {
    wire_->stop();
    std::filesystem::remove_all(folder_);
  }

  std::uint16_t port() const { return wire_->port(); }
  std::string request(std::string_view target) const { return requestFor(target, cookie_); }

 private:
  void signIn() {
    const std::string printed = command({"sign-in-link", "admin", "--database", config_.database});
    const auto at = printed.find("/sign-in?link=");
    const std::string link = printed.substr(at, printed.find_first_of(" \r\n", at) - at);
    Client client(port());
    const std::string answer = client.get(requestFor(link, ""));
    const auto cookie = answer.find("TARLOSESSION=");
    if (cookie == std::string::npos) throw std::runtime_error("not signed in:\n" + answer);
    cookie_ = answer.substr(cookie, answer.find(';', cookie) - cookie);
    const std::string list = client.get(request(kList));
    if (list.find("SearchTable") == std::string::npos)
      throw std::runtime_error("no list:\n" + list);
    constant_ = list.substr(list.find("\r\n\r\n") + 4);
  }

  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("tarlo-bench-host-" + std::to_string(getpid()));
  host::Config config_;
  database::Registry databases_;
  std::shared_ptr<spdlog::logger> log_ =
      std::make_shared<spdlog::logger>("bench", std::make_shared<spdlog::sinks::null_sink_mt>());
  std::unique_ptr<host::Site> site_;
  std::unique_ptr<host::WireServer> wire_;
  std::string cookie_;
  std::string constant_;
};

Server& server() {
  static Server instance;
  return instance;
}

std::mutex timesMutex;
std::vector<double> times;  // of all connections of one run, in milliseconds

void load(benchmark::State& state, const char* target) {
  const std::string request = server().request(target);
  Client client(server().port());
  std::vector<double> own;
  std::size_t bytes = 0;
  for (auto _ : state) {
    const auto begin = std::chrono::steady_clock::now();
    bytes = client.get(request).size();
    own.push_back(
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
            .count());
  }
  state.SetItemsProcessed(state.iterations());
  const std::lock_guard lock(timesMutex);
  times.insert(times.end(), own.begin(), own.end());
  if (times.size() < static_cast<std::size_t>(state.iterations()) * kConnections) return;
  std::sort(times.begin(), times.end());
  state.counters["p99_ms"] = times[times.size() * 99 / 100];
  state.counters["bytes"] = static_cast<double>(bytes);
  times.clear();
}

void constantPage(benchmark::State& state) {
  load(state, "/constant");
}
BENCHMARK(constantPage)->Threads(kConnections)->UseRealTime()->Iterations(200);

void schemeList(benchmark::State& state) {
  load(state, kList);
}
BENCHMARK(schemeList)->Threads(kConnections)->UseRealTime()->Iterations(200);

}  // namespace
}  // namespace tarlo::bench

BENCHMARK_MAIN();
