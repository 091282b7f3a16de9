#pragma once
// How fast a client takes what is sent to it: by what its system has acknowledged, since what the
// own system has taken says nothing about a client that does not read.

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace tarlo::host {

class Pace {
 public:
  using Clock = std::chrono::steady_clock;

  Pace(std::size_t leastBytesPerSecond, std::chrono::milliseconds window)
      : least_(leastBytesPerSecond), window_(window) {}

  // Something begins to be sent that the client has to take.
  void begin(int socket);
  // True when the client took too little in the window that ends now. Asked earlier than at its end
  // it says false.
  bool isTooSlow(int socket);
  std::chrono::milliseconds window() const { return window_; }

 private:
  const std::size_t least_;
  const std::chrono::milliseconds window_;
  Clock::time_point since_;
  std::uint64_t taken_ = 0;  // at `since_`
};

}  // namespace tarlo::host
