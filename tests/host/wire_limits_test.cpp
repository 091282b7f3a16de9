// The wire server under clients and handlers that behave badly: what is thrown, who waits for whom,
// who reads nothing, and who leaves.

#include <atomic>
#include <new>
#include <thread>
#include <vector>

#include "wire_support.h"

namespace tarlo::host::testing {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr std::size_t kLargePage = 32 << 20;  // more than the system and a flushed answer keep

std::string request(std::string_view target, std::string_view headers = "") {
  return "GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\n" + std::string(headers) + "\r\n";
}

class WireLimitsTest : public ::testing::Test {
 protected:
  using Handle = std::function<void(const WireRequest&, WireResponse&)>;

  void start(Handle handle, const std::function<void(WireServer::Options&)>& adjust = {}) {
    WireServer::Options options;
    options.limits.threads = 5;
    options.limits.running = 2;
    options.limits.signIns = 1;
    options.limits.drainTime = milliseconds(3000);
    options.limits.paceTime = milliseconds(300);
    options.laneOf = [](const WireRequest& given) {
      if (given.path() == "/file") return Lane::Immediate;
      return given.path() == "/sign-in" ? Lane::SignIn : Lane::Operation;
    };
    options.visitorOf = [](const WireRequest& given) {
      return Visitor{std::string(given.header("Session")), std::string(given.header("User"))};
    };
    options.onFailure = [this](std::string_view line) { failures_.add(line); };
    options.onAccess = [this](const WireServer::Options::Access& access) {
      access_.add(std::to_string(access.status) + " " + std::string(access.target));
    };
    if (adjust) adjust(options);
    server_ = std::make_unique<WireServer>(options, std::move(handle));
    server_->start();
  }
  void TearDown() override { door_.open(); }

  std::uint16_t port() const { return server_->port(); }
  int statusOfGet(std::string_view target, std::string_view headers = "") {
    WireClient client(port());
    client.send(request(target, headers));
    return statusOf(client.readAnswer());
  }

  Door door_;
  Lines failures_, access_;
  std::unique_ptr<WireServer> server_;
};

TEST_F(WireLimitsTest, WhatIsThrownEndsOneConnectionOnly) {
  start(
      [](const WireRequest& given, WireResponse& response) {
        if (given.path() == "/std") throw std::runtime_error("out of paper");
        if (given.path() == "/int") throw 7;
        if (given.path() == "/memory") throw std::bad_alloc();
        if (given.path() == "/flushed") {
          response.flush("half");
          throw std::runtime_error("cut");
        }
        response.send("fine");
      },
      [this](WireServer::Options& options) {
        options.laneOf = [](const WireRequest& given) {
          if (given.path() == "/lane") throw std::runtime_error("no lane");
          return Lane::Operation;
        };
        options.onAccess = [this](const WireServer::Options::Access& access) {
          if (access.target == "/access") throw std::runtime_error("no room for the line");
          access_.add(std::to_string(access.status) + " " + std::string(access.target));
        };
      });
  for (const char* target : {"/std", "/int", "/memory"})
    EXPECT_EQ(statusOfGet(target), 500) << target;
  const std::string cut = exchange(port(), request("/flushed"));
  EXPECT_TRUE(cut.ends_with("4\r\nhalf\r\n")) << cut;
  EXPECT_EQ(statusOfGet("/lane"), 0);
  statusOfGet("/access");
  for (const char* line : {"failed: out of paper", "of an unknown kind", "no memory", "failed: cut",
                           "failed: no lane", "failed: no room for the line"})
    EXPECT_TRUE(failures_.await(line)) << line << " in " << failures_.text();
  // Every place is free again, more often than there are places.
  for (int i = 0; i < 5; ++i) EXPECT_EQ(statusOfGet("/after"), 200);
}

TEST_F(WireLimitsTest, RefusedClientsSeeTheAnswer) {
  start([](const WireRequest&, WireResponse& response) { response.send("fine"); },
        [](WireServer::Options& options) { options.limits.bodyBytes = 1000; });
  const std::string trailer = "X: " + std::string(605'000, 'x') + "\r\n\r\n";
  // All of it is sent before the answer is read, as browsers do.
  const std::pair<std::string, int> rows[] = {
      {"POST /trailer HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n" + trailer,
       431},
      {"GET /header HTTP/1.1\r\nHost: a\r\n" + trailer, 431},
      {"POST /body HTTP/1.1\r\nHost: a\r\nContent-Length: 9000000\r\n\r\n" +
           std::string(9'000'000, 'x'),
       413},
      {"GET /version HTTP/3.0\r\nHost: a\r\n\r\n", 505},
      {"POST /coding HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: gzip\r\n\r\n" +
           std::string(300'000, 'x'),
       501}};
  for (const auto& [sent, status] : rows) {
    WireClient client(port());
    EXPECT_TRUE(client.send(sent)) << status;
    const std::string answer = client.readAll();
    EXPECT_EQ(statusOf(answer), status) << answer;
    EXPECT_TRUE(holds(answer, "Connection: close"));
  }
  for (const char* line : {"431 /trailer", "431 /header", "413 /body", "505 -", "501 /coding"})
    EXPECT_TRUE(access_.await(line)) << line << " in " << access_.text();
}

TEST_F(WireLimitsTest, FilesAndSignInsDoNotWaitForOperations) {
  start([this](const WireRequest& given, WireResponse& response) {
    if (given.query() == "door") door_.pass();
    response.send("fine");
  });
  std::vector<WireClient> held;
  for (const char* target : {"/a?door", "/b?door", "/sign-in?door"}) {
    held.emplace_back(port());
    held.back().send(request(target));
  }
  ASSERT_TRUE(door_.awaitWaiting(3));
  EXPECT_EQ(statusOfGet("/file"), 200);
  WireClient operation(port()), signIn(port());
  operation.send(request("/c"));
  signIn.send(request("/sign-in"));
  EXPECT_EQ(operation.readAnswer(0.2), "");
  EXPECT_EQ(signIn.readAnswer(0.2), "");
  EXPECT_EQ(statusOfGet("/file"), 200);
  door_.open();
  for (WireClient* client : {&operation, &signIn}) EXPECT_EQ(statusOf(client->readAnswer()), 200);
  for (WireClient& client : held) EXPECT_EQ(statusOf(client.readAnswer()), 200);
}

TEST_F(WireLimitsTest, OneVisitorDoesNotTakeEveryPlace) {
  start(
      [this](const WireRequest& given, WireResponse& response) {
        if (given.query() == "door") door_.pass();
        response.send("fine");
      },
      [](WireServer::Options& options) {
        options.limits.threads = 8;
        options.limits.running = 5;
        options.limits.operationsPerSession = 2;
        options.limits.operationsPerUser = 3;
      });
  std::vector<WireClient> held;
  for (const char* session : {"1", "1", "2"}) {
    held.emplace_back(port());
    held.back().send(request("/a?door", "Session: " + std::string(session) + "\r\nUser: u\r\n"));
  }
  ASSERT_TRUE(door_.awaitWaiting(3));
  WireClient client(port());
  client.send(request("/b", "Session: 1\r\nUser: u\r\n"));
  const std::string refused = client.readAnswer();
  EXPECT_EQ(statusOf(refused), 429);
  EXPECT_TRUE(holds(refused, "Retry-After: "));
  EXPECT_TRUE(failures_.await("user \"u\" has too many operations"));
  EXPECT_EQ(statusOfGet("/b", "Session: 3\r\nUser: u\r\n"), 429);
  EXPECT_EQ(statusOfGet("/b", "Session: 4\r\nUser: other\r\n"), 200);
  EXPECT_EQ(statusOfGet("/b"), 200);
  EXPECT_EQ(statusOfGet("/file", "Session: 1\r\nUser: u\r\n"), 200);
  door_.open();
  for (WireClient& each : held) EXPECT_EQ(statusOf(each.readAnswer()), 200);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(statusOfGet("/b", "Session: 1\r\nUser: u\r\n"), 200);
}

TEST_F(WireLimitsTest, ClientsThatReadNothingHoldNoPlace) {
  std::atomic<int> flushed{0};
  start(
      [&](const WireRequest& given, WireResponse& response) {
        if (given.path() == "/kept") response.send(std::string(kLargePage, 'x'));
        if (given.path() == "/flushed") {
          for (std::size_t sent = 0; sent < kLargePage && response.flush(std::string(65536, 'x'));)
            sent += 65536;
        }
        if (given.path() == "/preview") {
          for (int i = 0; i < 80; ++i) response.flush(std::string(65536, 'x'));
          ++flushed;
        }
        response.send("fine");
      },
      [](WireServer::Options& options) {
        options.limits.running = 1;
        options.limits.paceTime = milliseconds(2000);
      });
  // A page of some megabytes is out of the operation's way, read or not.
  std::vector<WireClient> silent;
  for (int i = 1; i <= 3; ++i) {
    silent.emplace_back(port());
    silent.back().send(request("/preview"));
    for (int tries = 0; tries < 250 && flushed < i; ++tries)
      std::this_thread::sleep_for(milliseconds(20));
    EXPECT_EQ(flushed, i);
    EXPECT_EQ(failures_.text(), "");
    EXPECT_EQ(statusOfGet("/after"), 200);
  }
  // A larger one holds its place, until its client is dropped for not reading.
  for (const char* target : {"/kept", "/flushed"}) {
    silent.emplace_back(port());
    silent.back().send(request(target));
    EXPECT_EQ(statusOfGet("/after"), 200);
  }
  EXPECT_TRUE(failures_.await("it takes less than 1024 bytes a second")) << failures_.text();
  EXPECT_TRUE(access_.await("200 /kept"));
  EXPECT_TRUE(access_.await("200 /flushed"));
}

TEST_F(WireLimitsTest, AClientThatReadsSlowlyGetsAll) {
  start(
      [&](const WireRequest& given, WireResponse& response) {
        const std::string piece(65536, 'x');
        if (given.path() == "/kept") response.send(std::string(kLargePage, 'x'));
        for (std::size_t sent = 0; sent < kLargePage && response.flush(piece);)
          sent += piece.size();
      },
      [](WireServer::Options& options) {
        options.limits.leastWriteBytesPerSecond = 1 << 20;
        options.limits.paceTime = milliseconds(400);
      });
  for (const char* target : {"/kept", "/flushed"}) {
    WireClient client(port());
    client.send(request(target, "Connection: close\r\n"));
    std::size_t total = 0;
    // About ten megabytes a second.
    for (std::string some; client.readOnce(some); some.clear()) {
      total += some.size();
      std::this_thread::sleep_for(milliseconds(some.size() / 10'000));
    }
    EXPECT_GE(total, kLargePage) << target << failures_.text();
  }
  EXPECT_EQ(failures_.text(), "");
}

TEST_F(WireLimitsTest, ACloseIsNoticedWhileTheHandlerRuns) {
  std::atomic<bool> noticed{false};
  start([&](const WireRequest& given, WireResponse& response) {
    const auto end = Clock::now() + milliseconds(given.path() == "/stays" ? 300 : 5000);
    while (response.isClientConnected() && Clock::now() < end)
      std::this_thread::sleep_for(milliseconds(20));
    noticed = !response.isClientConnected();
    response.send(noticed ? "gone" : "there");
    door_.pass();
  });
  {
    // A request that was sent ahead is no close.
    WireClient client(port());
    client.send(request("/stays") + request("/next"));
    ASSERT_TRUE(door_.awaitWaiting(1));
    EXPECT_FALSE(noticed);
  }
  door_.open();
  {
    WireClient client(port());
    client.send(request("/leaves") + request("/next"));
    std::this_thread::sleep_for(milliseconds(200));
  }
  const auto closed = Clock::now();
  EXPECT_TRUE(access_.await("200 /leaves"));
  EXPECT_LT(Clock::now() - closed, milliseconds(1000));
  EXPECT_TRUE(noticed);
}

TEST_F(WireLimitsTest, ConnectionsBeyondTheLimitAreTold) {
  start([](const WireRequest&, WireResponse& response) { response.send("fine"); },
        [](WireServer::Options& options) { options.limits.connections = 1; });
  auto first = std::make_unique<WireClient>(port());
  first->send(request("/"));
  EXPECT_EQ(statusOf(first->readAnswer()), 200);
  // Though it has sent a request that nobody reads, and whether it waits or not.
  for (int i = 0; i < 3; ++i) {
    WireClient client(port());
    client.send(request("/" + std::string(5000, 'x')));
    std::this_thread::sleep_for(milliseconds(50));
    const std::string answer = client.readAll();
    EXPECT_EQ(statusOf(answer), 503);
    EXPECT_TRUE(holds(answer, "Retry-After: "));
  }
  first.reset();
  int status = 0;
  for (int tries = 0; tries < 50 && status != 200; ++tries) {
    std::this_thread::sleep_for(milliseconds(20));
    status = statusOfGet("/");
  }
  EXPECT_EQ(status, 200);
}

}  // namespace
}  // namespace tarlo::host::testing
