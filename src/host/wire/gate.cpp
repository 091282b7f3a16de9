#include "host/wire/gate.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <exception>
#include <utility>

namespace tarlo::host {

namespace asio = boost::asio;

// A wait that an exception ends gives back its place, in the queue or behind the gate.
class Gate::Leaver {
 public:
  Leaver(Gate& gate, std::shared_ptr<Waiter> waiter) : gate_(gate), waiter_(std::move(waiter)) {}
  ~Leaver() {
    if (waiter_ != nullptr && finish()) gate_.leave();
  }
  Leaver(const Leaver&) = delete;
  Leaver& operator=(const Leaver&) = delete;

  // Leaves the queue; true when the place is the caller's.
  bool finish() {
    const std::lock_guard lock(gate_.mutex_);
    const std::shared_ptr<Waiter> waiter = std::move(waiter_);
    if (!waiter->admitted) std::erase(gate_.waiting_, waiter);
    return waiter->admitted;
  }

 private:
  Gate& gate_;
  std::shared_ptr<Waiter> waiter_;
};

asio::awaitable<bool> Gate::enter() {
  const asio::any_io_executor executor = co_await asio::this_coro::executor;
  std::shared_ptr<Waiter> waiter;
  {
    const std::lock_guard lock(mutex_);
    if (free_ > 0) {
      --free_;
      co_return true;
    }
    if (waiting_.size() >= queued_) co_return false;
    waiter = std::make_shared<Waiter>(executor);
    waiter->timer.expires_after(queueTime_);
    waiting_.push_back(waiter);
  }
  Leaver leaver(*this, waiter);
  co_await waiter->timer.async_wait(asio::as_tuple(asio::use_awaitable));
  co_return leaver.finish();
}

void Gate::leave() noexcept {
  const std::lock_guard lock(mutex_);
  if (waiting_.empty()) {
    ++free_;
    return;
  }
  // The place goes to the longest waiter directly, so that nobody overtakes it. Its timer is
  // cancelled on its own executor; a wait that has not begun yet by then is woken by the timer's
  // past expiry.
  auto waiter = std::move(waiting_.front());
  waiting_.pop_front();
  waiter->admitted = true;
  try {
    asio::post(waiter->timer.get_executor(),
               [waiter] { waiter->timer.expires_at(asio::steady_timer::time_point::min()); });
  } catch (const std::exception&) {
    // No memory for the message: it finds its place when its time to wait is over.
  }
}

}  // namespace tarlo::host
