#include "host/upkeep/readiness.h"

#include <fmt/format.h>

#include "database/schema_version.h"
#include "host/site/log_text.h"
#include "variant/error_state.h"

namespace tarlo::host {

using database::Health;
using database::Trouble;

std::string_view wordOf(Trouble trouble) {
  switch (trouble) {
    case Trouble::None:
      return "";
    case Trouble::Missing:
      return "database-missing";
    case Trouble::Replaced:
      return "database-replaced";
    case Trouble::NoAnswer:
      return "database-no-answer";
    case Trouble::Locked:
      return "database-locked";
    case Trouble::Full:
      return "disk-full";
    case Trouble::NotWritable:
      return "database-not-writable";
    case Trouble::OldSchema:
      return "schema-old";
    case Trouble::NewSchema:
      return "schema-new";
  }
  return "unknown";
}

Readiness::Readiness(std::string connection, database::Registry& databases, std::uint64_t reserve,
                     std::shared_ptr<spdlog::logger> log, std::function<Clock::time_point()> now)
    : connection_(std::move(connection)),
      databases_(databases),
      reserve_(reserve),
      log_(std::move(log)),
      now_(std::move(now)) {}

std::string_view Readiness::reason() const {
  const std::lock_guard lock(mutex_);
  return last_ ? wordOf(*last_) : "starting";
}

void Readiness::look() {
  remember(found());
}

Health Readiness::found() {
  ErrorState err;
  Health health;
  err.run([&] {
    health = databases_.find(connection_).health(reserve_);
    if (health.trouble == Trouble::None) health = asked();
  });
  if (err.failed()) return {Trouble::NoAnswer, std::string(err.description())};
  return health;
}

Health Readiness::asked() {
  if (own_ == nullptr) {
    own_ = database::openDatabase(connection_, {.maxConnections = 1,
                                                .busyTimeout = std::chrono::milliseconds(200),
                                                .commandTimeout = std::chrono::seconds(5)});
  }
  database::Lease connection = own_->borrow();
  const int version = database::storedSchema(*connection).version;
  if (version != database::kSchemaVersion) {
    return {version < database::kSchemaVersion ? Trouble::OldSchema : Trouble::NewSchema,
            fmt::format("The database holds version {} of the tables, this program works with {}.",
                        version, database::kSchemaVersion)};
  }
  return own_->isReadOnly() ? Health() : lockedBy(*connection);
}

// A transaction that writes nothing: it costs the disk nothing, and meets whoever holds the lock.
Health Readiness::lockedBy(database::Connection& connection) {
  ErrorState err;
  err.run([&] { const database::Connection::Transaction trial(connection); });
  if (!err.failed()) {
    lockedSince_.reset();
    return {};
  }
  if (err.number() != database::kTimeout) {
    return {Trouble::NoAnswer, std::string(err.description())};
  }
  if (!lockedSince_) lockedSince_ = now_();
  const bool isLong = now_() - *lockedSince_ >= kPatience;
  return isLong ? Health{Trouble::Locked, std::string(err.description())} : Health();
}

void Readiness::remember(const Health& health) {
  {
    const std::lock_guard lock(mutex_);
    if (last_ == health.trouble) return;
    const bool isFirst = !last_;
    last_ = health.trouble;
    if (isFirst && health.trouble == Trouble::None) return;
  }
  if (health.trouble == Trouble::None) {
    log_->info("ready again");
    return;
  }
  log_->error("not ready, {}: {}", wordOf(health.trouble), logText(health.detail));
  if (health.trouble == Trouble::Missing || health.trouble == Trouble::Replaced) {
    log_->error(
        "nothing is saved until the file is back in its place; to work with another file, "
        "restart the server");
  }
}

}  // namespace tarlo::host
