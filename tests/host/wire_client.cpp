#include "wire_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

namespace tarlo::host::testing {

WireClient::WireClient(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    ::close(socket_);
    throw std::runtime_error("no connection");
  }
}

WireClient::~WireClient() {
  if (socket_ >= 0) ::close(socket_);
}

bool WireClient::send(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

void WireClient::shutdownSend() {
  ::shutdown(socket_, SHUT_WR);
}

bool WireClient::readSome(std::string& into, double seconds) {
  pollfd wait{socket_, POLLIN, 0};
  if (::poll(&wait, 1, static_cast<int>(seconds * 1000)) <= 0) return false;
  char bytes[65536];
  const ssize_t got = ::recv(socket_, bytes, sizeof bytes, 0);
  if (got <= 0) return false;
  into.append(bytes, static_cast<std::size_t>(got));
  return true;
}

std::string WireClient::readAll(double seconds) {
  std::string all = std::move(buffered_);
  buffered_.clear();
  while (readSome(all, seconds)) {
  }
  return all;
}

std::string WireClient::readAnswer(double seconds) {
  constexpr std::string_view kLength = "Content-Length: ";
  for (;;) {
    const auto head = buffered_.find("\r\n\r\n");
    if (head != std::string::npos) {
      const auto at = buffered_.find(kLength);
      const std::size_t length =
          at < head ? std::strtoul(buffered_.c_str() + at + kLength.size(), nullptr, 10) : 0;
      if (buffered_.size() >= head + 4 + length) {
        std::string answer = buffered_.substr(0, head + 4 + length);
        buffered_.erase(0, answer.size());
        return answer;
      }
    }
    if (!readSome(buffered_, seconds)) return {};
  }
}

bool WireClient::isClosed(double seconds) {
  pollfd wait{socket_, POLLIN, 0};
  if (::poll(&wait, 1, static_cast<int>(seconds * 1000)) <= 0) return false;
  char byte;
  return ::recv(socket_, &byte, 1, MSG_PEEK) <= 0;
}

std::string exchange(std::uint16_t port, std::string_view bytes) {
  WireClient client(port);
  client.send(bytes);
  return client.readAll();
}

int statusOf(std::string_view answer) {
  return answer.starts_with("HTTP/1.1 ") ? std::atoi(answer.data() + 9) : 0;
}

}  // namespace tarlo::host::testing
