// The wire server over TLS: certificates of a moment, made with the openssl command.

#include <openssl/x509.h>
#include <sys/socket.h>

#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/asio/write.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "support/temporary_folder.h"
#include "wire_support.h"

namespace tarlo::host::testing {
namespace {

namespace asio = boost::asio;
namespace ssl = asio::ssl;
using std::chrono::milliseconds;

class TlsClient {
 public:
  explicit TlsClient(std::uint16_t port, int mostVersion = TLS1_3_VERSION)
      : stream_(io_, context_) {
    SSL_set_max_proto_version(stream_.native_handle(), mostVersion);
    stream_.next_layer().connect({asio::ip::address_v4::loopback(), port});
    timeval time{5, 0};
    ::setsockopt(stream_.next_layer().native_handle(), SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
  }
  bool shakeHands() {
    stream_.handshake(ssl::stream_base::client, error_);
    return !error_;
  }
  void send(std::string_view bytes) {
    asio::write(stream_, asio::buffer(bytes.data(), bytes.size()), error_);
  }
  // Until the other side says good-bye.
  std::string readAll() {
    std::string all, some(65536, '\0');
    for (;;) {
      const std::size_t count = stream_.read_some(asio::buffer(some), error_);
      if (count == 0) return all;
      all.append(some, 0, count);
    }
  }
  // The other side has said good-bye, rather than gone.
  bool wasGoodbye() const { return error_ == asio::error::eof; }
  std::string subject() {
    X509* certificate = SSL_get1_peer_certificate(stream_.native_handle());
    char name[200] = "";
    X509_NAME_oneline(X509_get_subject_name(certificate), name, sizeof name);
    X509_free(certificate);
    return name;
  }
  asio::ip::tcp::socket& socket() { return stream_.next_layer(); }

 private:
  asio::io_context io_;
  ssl::context context_{ssl::context::tls_client};
  ssl::stream<asio::ip::tcp::socket> stream_;
  boost::system::error_code error_;
};

class WireTlsTest : public ::testing::Test {
 protected:
  // A pair named after the subject.
  TlsFiles makePair(const std::string& name) const {
    const TlsFiles files{path(name + ".crt"), path(name + ".key")};
    const std::string command =
        "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1 -subj /CN=" +
        name + " -out " + files.certificate + " -keyout " + files.key + " 2>/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    return files;
  }
  std::string path(const std::string& file) const { return (folder_.path() / file).string(); }

  void start(const std::function<void(WireServer::Options&)>& adjust = {}) {
    WireServer::Options options;
    options.tls = makePair("first");
    options.limits.paceTime = milliseconds(300);
    options.onFailure = [this](std::string_view line) { failures_.add(line); };
    if (adjust) adjust(options);
    files_ = options.tls;
    server_ = std::make_unique<WireServer>(
        options, [this](const WireRequest& request, WireResponse& response) {
          if (request.path() == "/wait") {
            while (response.isClientConnected()) std::this_thread::sleep_for(milliseconds(20));
            failures_.add("left");
          }
          if (request.path() == "/flush") {
            for (int i = 0; i < 400 && response.flush(std::string(32768, 'x')); ++i) continue;
            return;
          }
          response.send(request.path() == "/large" ? std::string(3'000'000, 'y')
                        : request.isSecure         ? "secure"
                                                   : "plain");
        });
    server_->start();
  }
  std::string get(std::string_view target) {
    TlsClient client(server_->port());
    EXPECT_TRUE(client.shakeHands());
    client.send("GET " + std::string(target) + " HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
    std::string answer = client.readAll();
    EXPECT_TRUE(client.wasGoodbye()) << target;
    return answer;
  }

  tarlo::testing::TemporaryFolder folder_;
  TlsFiles files_;
  Lines failures_;
  std::unique_ptr<WireServer> server_;
};

TEST_F(WireTlsTest, AnswersOverTls) {
  start();
  const std::string answer = get("/");
  EXPECT_TRUE(answer.ends_with("\r\n\r\nsecure")) << answer;
  EXPECT_TRUE(holds(answer, "\r\nStrict-Transport-Security: max-age=31536000\r\n"));
  const auto bodyOf = [](const std::string& whole) {
    return whole.substr(whole.find("\r\n\r\n") + 4);
  };
  EXPECT_TRUE(bodyOf(get("/large")) == std::string(3'000'000, 'y'));
  const std::string flushed = bodyOf(get("/flush"));
  EXPECT_EQ(std::ranges::count(flushed, 'x'), 400 * 32768);
  EXPECT_TRUE(flushed.ends_with("\r\n0\r\n\r\n"));
  // A refusal is an answer as well; the requests of one connection are answered in turn.
  TlsClient client(server_->port());
  ASSERT_TRUE(client.shakeHands());
  client.send("GET /1 HTTP/1.1\r\nHost: a\r\n\r\nGET /2 HTTP/1.1\r\n\r\n");
  const std::string both = client.readAll();
  EXPECT_TRUE(holds(both, "secureHTTP/1.1 400 ")) << both;
}

TEST_F(WireTlsTest, RefusesOldVersionsAndOtherProtocols) {
  start([](WireServer::Options& options) { options.limits.headerTime = milliseconds(300); });
  EXPECT_FALSE(TlsClient(server_->port(), TLS1_1_VERSION).shakeHands());
  EXPECT_TRUE(TlsClient(server_->port(), TLS1_2_VERSION).shakeHands());
  WireClient plain(server_->port()), silent(server_->port());
  plain.send("GET / HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_EQ(statusOf(plain.readAll()), 0);
  EXPECT_TRUE(silent.isClosed(2));
  EXPECT_TRUE(get("/").ends_with("secure"));
}

TEST_F(WireTlsTest, NoticesClientsThatLeaveOrDoNotRead) {
  start();
  {
    TlsClient client(server_->port());
    ASSERT_TRUE(client.shakeHands());
    client.send("GET /wait HTTP/1.1\r\nHost: a\r\n\r\n");
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(failures_.text(), "");
  }
  EXPECT_TRUE(failures_.await("left", milliseconds(1000)));
  TlsClient silent(server_->port());
  ASSERT_TRUE(silent.shakeHands());
  silent.send("GET /flush HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_TRUE(failures_.await("bytes a second")) << failures_.text();
}

TEST_F(WireTlsTest, ReadsItsFilesAgain) {
  start();
  const auto subject = [this](TlsClient& client) {
    EXPECT_TRUE(client.shakeHands());
    return client.subject();
  };
  TlsClient old(server_->port());
  EXPECT_EQ(subject(old), "/CN=first");
  const TlsFiles second = makePair("second");
  const auto overwrite = std::filesystem::copy_options::overwrite_existing;
  std::filesystem::copy_file(second.certificate, files_.certificate, overwrite);
  // Half of a new pair is none: the old one stays.
  EXPECT_THROW(server_->reloadTls(), TlsError);
  TlsClient between(server_->port());
  EXPECT_EQ(subject(between), "/CN=first");
  std::filesystem::copy_file(second.key, files_.key, overwrite);
  server_->reloadTls();
  TlsClient fresh(server_->port());
  EXPECT_EQ(subject(fresh), "/CN=second");
  old.send("GET / HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n");
  EXPECT_TRUE(old.readAll().ends_with("secure"));
}

TEST_F(WireTlsTest, SaysWhichFileIsFaulty) {
  const TlsFiles first = makePair("one"), second = makePair("two");
  std::ofstream(path("empty")).close();
  std::ofstream(path("text")) << "no certificate\n";
  const std::pair<TlsFiles, std::string> rows[] = {
      {{path("none"), first.key}, "tls.certificate: " + path("none") + ": cannot be read"},
      {{first.certificate, path("none")}, "tls.key: " + path("none") + ": cannot be read"},
      {{path("empty"), first.key}, "tls.certificate: " + path("empty") + ": cannot be read"},
      {{path("text"), first.key}, "tls.certificate: " + path("text") + ": no usable certificate"},
      {{first.certificate, path("text")}, "tls.key: " + path("text") + ": no usable key"},
      {{first.certificate, second.key},
       "tls.key: " + second.key + ": is not the key of " + first.certificate},
      {{first.certificate, ""}, "tls.certificate needs tls.key"}};
  for (const auto& [files, expected] : rows) {
    std::string said = "taken";
    try {
      loadTls(files);
    } catch (const TlsError& error) {
      said = error.what();
    }
    EXPECT_TRUE(said.starts_with(expected)) << said;
  }
  EXPECT_EQ(loadTls({}), nullptr);
}

}  // namespace
}  // namespace tarlo::host::testing
