#include "host/wire/gate.h"

#include <boost/asio/as_tuple.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/this_coro.hpp>
#include <boost/asio/use_awaitable.hpp>

namespace tarlo::host {

namespace asio = boost::asio;

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
  co_await waiter->timer.async_wait(asio::as_tuple(asio::use_awaitable));
  const std::lock_guard lock(mutex_);
  if (!waiter->admitted) std::erase(waiting_, waiter);
  co_return waiter->admitted;
}

void Gate::leave() {
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
  asio::post(waiter->timer.get_executor(),
             [waiter] { waiter->timer.expires_at(asio::steady_timer::time_point::min()); });
}

}  // namespace tarlo::host
