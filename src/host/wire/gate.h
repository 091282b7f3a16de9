#pragma once
// How many requests of a kind run at a time. Operations block their thread, so a flood of them
// would leave no thread for files and health checks; the gate lets a fixed number through and keeps
// a bounded queue of the others, first come first served.

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/asio/steady_timer.hpp>
#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>

namespace tarlo::host {

class Gate {
 public:
  Gate(std::size_t running, std::size_t queued, std::chrono::milliseconds queueTime)
      : free_(running), queued_(queued), queueTime_(queueTime) {}

  // True when the caller may run, at once or after its turn came; it must call leave(). False when
  // the queue is full or the wait took too long.
  boost::asio::awaitable<bool> enter();
  void leave() noexcept;

 private:
  struct Waiter {
    explicit Waiter(const boost::asio::any_io_executor& executor) : timer(executor) {}
    boost::asio::steady_timer timer;  // touched on its executor only
    bool admitted = false;            // guarded by the gate's mutex
  };
  class Leaver;

  std::mutex mutex_;
  std::size_t free_;
  const std::size_t queued_;
  const std::chrono::milliseconds queueTime_;
  std::deque<std::shared_ptr<Waiter>> waiting_;
};

}  // namespace tarlo::host
