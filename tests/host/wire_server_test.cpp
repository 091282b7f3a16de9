// The wire server over real sockets: what clients do wrong, and what must go on working meanwhile.

#include <sys/resource.h>

#include <atomic>
#include <thread>
#include <vector>

#include "host/wire/server.h"
#include "wire_support.h"

namespace tarlo::host::testing {
namespace {

using std::chrono::milliseconds;

class WireServerTest : public ::testing::Test {
 protected:
  void start(const std::function<void(WireLimits&)>& adjust = {}) {
    WireServer::Options options;
    options.limits.threads = 4;
    options.limits.running = 2;
    options.limits.drainTime = milliseconds(3000);
    if (adjust) adjust(options.limits);
    options.laneOf = [](const WireRequest& request) {
      return request.path() == "/urgent" ? Lane::Immediate : Lane::Operation;
    };
    server_ = std::make_unique<WireServer>(
        options,
        [this](const WireRequest& request, WireResponse& response) { handle(request, response); });
    server_->start();
  }
  void TearDown() override { door_.open(); }

  void handle(const WireRequest& request, WireResponse& response) {
    ++handled_;
    if (request.path() == "/door") door_.pass();
    if (request.path() == "/flush") {
      response.flush("one ");
      response.flush("two");
      return;
    }
    if (request.path() == "/declared") {
      response.addHeader("content-length", "8");
      response.flush("one ");
      response.flush(request.query().empty() ? "four and more" : "");
      return;
    }
    if (request.path() == "/large") {
      while (response.flush(std::string(65536, 'x'))) {
      }
      ++givenUp_;
      return;
    }
    response.send(request.method + " " + request.target + " " + request.body);
  }

  std::uint16_t port() const { return server_->port(); }
  std::string get(std::string_view target) {
    return exchange(
        port(), "GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
  }

  Door door_;
  std::atomic<int> handled_{0}, givenUp_{0};
  std::unique_ptr<WireServer> server_;
};

TEST_F(WireServerTest, AnswersEveryForm) {
  start();
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"GET /a?v=a|[b]{c}%h HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n", "HTTP/1.1 200",
       "GET /a?v=a|[b]{c}%h "},
      {"POST /p HTTP/1.1\r\nHost: a\r\nContent-Length: 5\r\nConnection: close\r\n\r\nhello",
       "HTTP/1.1 200", "POST /p hello"},
      {"POST /p HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n"
       "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n",
       "HTTP/1.1 200", "POST /p abcde"},
      {"GET /flush HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n", "HTTP/1.1 200",
       "4\r\none \r\n3\r\ntwo\r\n0\r\n\r\n"},
      // A promised length is kept: what is beyond it does not go out.
      {"GET /declared HTTP/1.1\r\nHost: a\r\n\r\nGET /a HTTP/1.1\r\nHost: a\r\nConnection: "
       "close\r\n\r\n",
       "HTTP/1.1 200 OK\r\nContent-Length: 8\r\nContent-Security-Policy: default-src "
       "'none'\r\n\r\none fourHTTP/1.1 200 OK",
       "GET /a "},
      {"GET /declared?short HTTP/1.1\r\nHost: a\r\n\r\n", "HTTP/1.1 200", "\r\n\r\none "},
      {"GET /flush HTTP/1.0\r\n\r\n", "HTTP/1.1 200", "\r\n\r\none two"},
      {"HEAD /h HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n", "HTTP/1.1 200",
       "Content-Length: 8\r\nContent-Security-Policy: default-src 'none'\r\nConnection: "
       "close\r\n\r\n"},
  };
  for (const auto& [sent, status, ending] : rows) {
    const std::string answer = exchange(port(), sent);
    EXPECT_TRUE(answer.starts_with(status)) << sent << answer;
    EXPECT_TRUE(answer.ends_with(ending)) << sent << answer;
  }
}

// What is refused and as what is the parser's; here that its answer goes out and its bounds are
// set.
TEST_F(WireServerTest, RefusesWhatItCannotRead) {
  start([](WireLimits& limits) {
    limits.headerBytes = 2048;
    limits.bodyBytes = 1000;
  });
  EXPECT_EQ(statusOf(exchange(port(), "GARBAGE\r\n\r\n")), 400);
  EXPECT_EQ(statusOf(get("/" + std::string(4000, 'x'))), 431);
  EXPECT_EQ(
      statusOf(exchange(port(), "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1001\r\n\r\n")),
      413);
  EXPECT_EQ(handled_, 0);
  EXPECT_EQ(statusOf(get("/after")), 200);
}

TEST_F(WireServerTest, SurvivesAMessageCutAtEveryByte) {
  start();
  const std::string whole =
      "POST /p?a=1 HTTP/1.1\r\nHost: a\r\nContent-Type: text/plain\r\nContent-Length: 10\r\n\r\n"
      "0123456789";
  for (std::size_t cut = 0; cut < whole.size(); ++cut) {
    WireClient client(port());
    client.send(std::string_view(whole).substr(0, cut));
    client.shutdownSend();
    const std::string answer = client.readAll();
    EXPECT_TRUE(answer.empty() || statusOf(answer) == 400) << cut << ": " << answer;
  }
  EXPECT_EQ(handled_, 0);
  // The same message in two pieces is complete.
  for (std::size_t cut = 1; cut < whole.size(); cut += 7) {
    WireClient client(port());
    client.send(std::string_view(whole).substr(0, cut));
    client.send(std::string_view(whole).substr(cut));
    EXPECT_TRUE(client.readAnswer().ends_with("POST /p?a=1 0123456789")) << cut;
  }
}

TEST_F(WireServerTest, KeepsAConnectionAndItsOrder) {
  start();
  WireClient client(port());
  client.send(
      "GET /1 HTTP/1.1\r\nHost: a\r\n\r\nGET /2 HTTP/1.1\r\nHost: a\r\n\r\n"
      "GET /3 HTTP/1.1\r\nHost: a\r\n\r\n");
  for (const char* target : {"/1 ", "/2 ", "/3 "})
    EXPECT_TRUE(client.readAnswer().ends_with(std::string("GET ") + target));
  client.send("GET /4 HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
  EXPECT_TRUE(client.readAnswer().ends_with("GET /4 "));
  EXPECT_TRUE(client.isClosed());
}

TEST_F(WireServerTest, DropsSlowAndIdleClients) {
  start([](WireLimits& limits) {
    limits.headerTime = limits.bodyTime = limits.idleTime = milliseconds(200);
  });
  for (const char* begun :
       {"", "GET /a HT", "POST /a HTTP/1.1\r\nHost: a\r\nContent-Length: 9\r\n\r\nab"}) {
    WireClient client(port());
    client.send(begun);
    EXPECT_TRUE(client.isClosed()) << begun;
  }
  EXPECT_EQ(handled_, 0);
}

TEST_F(WireServerTest, GivesUpOnAClientThatDoesNotRead) {
  start([](WireLimits& limits) { limits.writeTime = milliseconds(200); });
  WireClient client(port());
  client.send("GET /large HTTP/1.1\r\nHost: a\r\n\r\n");
  for (int i = 0; i < 100 && givenUp_ == 0; ++i) std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(givenUp_, 1);
}

TEST_F(WireServerTest, SurvivesClientsThatLeaveEarly) {
  start();
  for (int i = 0; i < 20; ++i) {
    WireClient client(port());
    client.send("GET /large HTTP/1.1\r\nHost: a\r\n\r\n");
    client.readAnswer(0);
  }
  EXPECT_EQ(statusOf(get("/after")), 200);
}

TEST_F(WireServerTest, AnswersBusyWhenTheQueueIsFull) {
  start([](WireLimits& limits) { limits.queued = 1; });
  std::vector<WireClient> held;
  for (int i = 0; i < 2; ++i) {
    held.emplace_back(port());
    held.back().send("GET /door HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
  }
  ASSERT_TRUE(door_.awaitWaiting(2));
  // Of the next two one may wait and one is sent away; urgent requests pass both.
  WireClient third(port()), fourth(port());
  for (WireClient* client : {&third, &fourth})
    client->send("GET /next HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
  EXPECT_EQ(statusOf(get("/urgent")), 200);
  const std::string early = third.isClosed(0.3) ? "" : third.readAnswer(0.5);
  const std::string refused = early.empty() ? fourth.readAnswer() : early;
  EXPECT_EQ(statusOf(refused), 503);
  EXPECT_TRUE(holds(refused, "Retry-After: "));
  door_.open();
  EXPECT_EQ(statusOf((early.empty() ? third : fourth).readAnswer()), 200);
  for (WireClient& client : held) EXPECT_EQ(statusOf(client.readAnswer()), 200);
}

TEST_F(WireServerTest, AnswersAmongAThousandIdleConnections) {
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, 4096);
  setrlimit(RLIMIT_NOFILE, &limit);
  if (limit.rlim_cur < 2200) GTEST_SKIP() << "the system allows too few open files";
  start();
  std::vector<WireClient> idle;
  for (int i = 0; i < 1000; ++i) {
    idle.emplace_back(port());
    if (i % 2 == 0) idle.back().send("GET /half HTTP/1.1\r\n");
  }
  EXPECT_EQ(statusOf(get("/a")), 200);
  idle.back().send("GET /b HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_EQ(statusOf(idle.back().readAnswer()), 200);
}

TEST_F(WireServerTest, FinishesWhatRunsWhenItStops) {
  start();
  WireClient running(port()), idle(port());
  running.send("GET /door HTTP/1.1\r\nHost: a\r\n\r\n");
  ASSERT_TRUE(door_.awaitWaiting(1));
  const std::uint16_t old = port();
  std::thread stopping([this] { server_->stop(); });
  std::this_thread::sleep_for(milliseconds(100));
  door_.open();
  EXPECT_TRUE(running.readAnswer().ends_with("GET /door "));
  stopping.join();
  server_.reset();
  EXPECT_TRUE(idle.isClosed());
  EXPECT_THROW(WireClient{old}, std::runtime_error);
}

TEST_F(WireServerTest, SaysWhenItsAddressIsTaken) {
  start();
  WireServer::Options options;
  options.port = port();
  EXPECT_THROW(WireServer(options, [](const WireRequest&, WireResponse&) {}), std::system_error);
}

}  // namespace
}  // namespace tarlo::host::testing
