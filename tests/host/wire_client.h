#pragma once
// A client that sends what it is told, byte for byte, and waits a bounded time for the answer.

#include <cstdint>
#include <string>
#include <string_view>

namespace tarlo::host::testing {

class WireClient {
 public:
  // Connects to 127.0.0.1; throws std::runtime_error when it cannot.
  explicit WireClient(std::uint16_t port);
  ~WireClient();
  WireClient(WireClient&& other) noexcept : socket_(other.socket_) { other.socket_ = -1; }
  WireClient& operator=(WireClient&&) = delete;

  bool send(std::string_view bytes);
  void shutdownSend();
  // What comes until the other side closes, or until nothing came for `seconds`.
  std::string readAll(double seconds = 5);
  // One answer with its Content-Length body; "" when the connection ends first.
  std::string readAnswer(double seconds = 5);
  // True when the other side has closed within the time.
  bool isClosed(double seconds = 5);

  // What comes next, whatever it is; false when nothing does.
  bool readOnce(std::string& into, double seconds = 5) { return readSome(into, seconds); }

 private:
  bool readSome(std::string& into, double seconds);

  int socket_;
  std::string buffered_;
};

// Opens a connection, sends, and reads until the close.
std::string exchange(std::uint16_t port, std::string_view bytes);

// The number in the status line, 0 for anything else.
int statusOf(std::string_view answer);

}  // namespace tarlo::host::testing
