#include "database/pool.h"

#include "text/fold.h"

namespace tarlo::database {

// A place in the pool that is being filled; free again when the connection could not be made.
class PooledDatabase::Slot {
 public:
  explicit Slot(PooledDatabase& pool) : pool_(pool) {}
  ~Slot() {
    if (filled_) return;
    const std::lock_guard lock(pool_.mutex_);
    --pool_.made_;
    pool_.freed_.notify_one();
  }
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;
  void fill() { filled_ = true; }

 private:
  PooledDatabase& pool_;
  bool filled_ = false;
};

Lease PooledDatabase::borrow() {
  {
    std::unique_lock lock(mutex_);
    const auto free = [this] { return !idle_.empty() || made_ < options_.maxConnections; };
    if (!free() && !freed_.wait_for(lock, options_.borrowTimeout, free)) {
      throw DatabaseError(
          kTimeout, "All connections to the database are in use.",
          {.engine = "pool", .code = 0, .sqlState = "08004", .text = "", .outage = Outage::Busy});
    }
    if (!idle_.empty()) {
      // The one used last: its caches are the warmest.
      std::unique_ptr<PooledConnection> connection = std::move(idle_.back());
      idle_.pop_back();
      return Lease(*this, std::move(connection));
    }
    ++made_;
    idle_.reserve(made_);  // so that giving back cannot fail
  }
  Slot slot(*this);
  std::unique_ptr<PooledConnection> connection = connect();
  slot.fill();
  return Lease(*this, std::move(connection));
}

void PooledDatabase::giveBack(std::unique_ptr<Connection> connection) noexcept {
  // Only connections that connect() made are lent.
  std::unique_ptr<PooledConnection> pooled(static_cast<PooledConnection*>(connection.release()));
  pooled->reset();
  const bool lost = pooled->isLost();
  if (lost) pooled.reset();
  const std::lock_guard lock(mutex_);
  if (lost) {
    --made_;
  } else {
    idle_.push_back(std::move(pooled));
  }
  freed_.notify_one();
}

void PooledDatabase::addProcedure(std::string name, Procedure procedure) {
  procedures_.byFoldedName[text::foldedName(name)] = std::move(procedure);
}

}  // namespace tarlo::database
