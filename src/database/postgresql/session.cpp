#include "database/postgresql/session.h"

#include <poll.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "database/postgresql/errors.h"

namespace tarlo::database {
namespace {

using namespace std::chrono_literals;

// How long a server may take to end a statement that it was asked to end.
constexpr auto kPatience = 3s;

int millisecondsUntil(Deadline::Clock::time_point end, Deadline::Clock::time_point now) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - now);
  return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

}  // namespace

// libpq asks for a cancel over a connection of its own and waits for the server to close it, for as
// long as that takes; so it does so on a thread of its own, which a dead server keeps.
class PostgresqlSession::Canceller {
 public:
  explicit Canceller(PGconn* handle) : cancel_(PQgetCancel(handle)) {}
  ~Canceller() { PQfreeCancel(cancel_); }
  Canceller(const Canceller&) = delete;
  Canceller& operator=(const Canceller&) = delete;

  static std::shared_ptr<Canceller> start(PGconn* handle) {
    auto canceller = std::make_shared<Canceller>(handle);
    std::thread([canceller] {
      char error[256];
      if (canceller->cancel_ != nullptr) PQcancel(canceller->cancel_, error, sizeof error);
      canceller->isDone_ = true;
    }).detach();
    return canceller;
  }
  bool isDone() const { return isDone_; }

 private:
  PGcancel* cancel_;
  std::atomic<bool> isDone_{false};
};

PostgresqlSession::~PostgresqlSession() = default;

std::string PostgresqlSession::errorText() const {
  const std::string_view text = PQerrorMessage(handle_.get());
  return std::string(text.substr(0, text.find_last_not_of(" \n") + 1));
}

void PostgresqlSession::breakOff(std::string text) {
  isLost_ = true;
  throw lostError(std::move(text));
}

void PostgresqlSession::check(int sent) {
  if (sent != 1) breakOff(errorText());
}

void PostgresqlSession::prepare(const std::string& name, const std::string& text,
                                std::span<const Oid> types) {
  check(PQsendPrepare(handle_.get(), name.c_str(), text.c_str(), static_cast<int>(types.size()),
                      types.data()));
}

void PostgresqlSession::run(const std::string& name, std::span<const char* const> values) {
  check(PQsendQueryPrepared(handle_.get(), name.c_str(), static_cast<int>(values.size()),
                            values.data(), nullptr, nullptr, 0));
}

void PostgresqlSession::query(const std::string& text, std::span<const char* const> values) {
  check(PQsendQueryParams(handle_.get(), text.c_str(), static_cast<int>(values.size()), nullptr,
                          values.data(), nullptr, nullptr, 0));
}

void PostgresqlSession::sync() {
  check(PQpipelineSync(handle_.get()));
}

void PostgresqlSession::cancel() {
  if (canceller_) return;
  canceller_ = Canceller::start(handle_.get());
  giveUp_ = Clock::now() + kPatience;
}

void PostgresqlSession::wait() {
  const auto now = Clock::now();
  if (!canceller_ && deadline_.isOver(now)) {
    isEnded_ = true;
    cancel();
  }
  if (canceller_ && now >= giveUp_) breakOff("The server does not end a cancelled statement.");
  const auto until = canceller_ ? giveUp_ : deadline_.nextLook(now);
  const int left = PQflush(handle_.get());
  if (left < 0) breakOff(errorText());
  pollfd socket{PQsocket(handle_.get()), static_cast<short>(left > 0 ? POLLIN | POLLOUT : POLLIN),
                0};
  if (poll(&socket, 1, millisecondsUntil(until, now)) > 0 && (socket.revents & ~POLLOUT) != 0 &&
      PQconsumeInput(handle_.get()) != 1) {
    breakOff(errorText());
  }
}

PostgresqlResult PostgresqlSession::next() {
  if (PQflush(handle_.get()) < 0) breakOff(errorText());
  while (PQisBusy(handle_.get()) != 0) wait();
  PostgresqlResult result(PQgetResult(handle_.get()));
  if (PQstatus(handle_.get()) == CONNECTION_BAD) {
    isLost_ = true;
    // The server's last words, if it had some.
    if (!result || sqlStateOf(result.get()).empty()) throw lostError(errorText());
  }
  return result;
}

bool PostgresqlSession::hasResult(std::chrono::milliseconds within) {
  if (PQisBusy(handle_.get()) == 0) return true;
  pollfd socket{PQsocket(handle_.get()), POLLIN, 0};
  if (poll(&socket, 1, static_cast<int>(within.count())) <= 0) return false;
  if (PQconsumeInput(handle_.get()) != 1) breakOff(errorText());
  return PQisBusy(handle_.get()) == 0;
}

void PostgresqlSession::settle() {
  // A cancel that arrives late would end the next statement.
  while (canceller_ && !canceller_->isDone()) {
    if (Clock::now() >= giveUp_) breakOff("The server does not answer a request to cancel.");
    std::this_thread::sleep_for(1ms);
  }
  canceller_.reset();
  isEnded_ = false;
}

bool PostgresqlSession::isDead() {
  if (isLost_ || PQstatus(handle_.get()) == CONNECTION_BAD) return true;
  pollfd socket{PQsocket(handle_.get()), POLLIN, 0};
  if (poll(&socket, 1, 0) <= 0) return false;
  // Something came unasked: a notice, or the end.
  if (PQconsumeInput(handle_.get()) == 1) {
    // What a server says before it hangs up comes with the hanging up.
    const bool hasMore = poll(&socket, 1, 0) > 0;
    if (!hasMore || PQconsumeInput(handle_.get()) == 1) return false;
  }
  isLost_ = true;
  return true;
}

bool PostgresqlSession::isInTransaction() const {
  const auto status = PQtransactionStatus(handle_.get());
  return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

}  // namespace tarlo::database
