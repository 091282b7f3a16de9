#include "host/wire/pace.h"

#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace tarlo::host {

namespace {

// Bytes that the other side's system has acknowledged since the connection began.
std::uint64_t acknowledged(int socket) {
  tcp_info info{};
  socklen_t size = sizeof info;
  if (::getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size) != 0) return 0;
  return info.tcpi_bytes_acked;
}

}  // namespace

void Pace::begin(int socket) {
  since_ = Clock::now();
  taken_ = acknowledged(socket);
}

bool Pace::isTooSlow(int socket) {
  const auto now = Clock::now();
  const std::chrono::duration<double> passed = now - since_;
  if (passed < window_) return false;
  const std::uint64_t taken = acknowledged(socket);
  const double least = static_cast<double>(least_) * passed.count();
  const bool isSlow = static_cast<double>(taken - taken_) < least;
  since_ = now;
  taken_ = taken;
  return isSlow;
}

}  // namespace tarlo::host
