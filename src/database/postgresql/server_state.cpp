#include "database/postgresql/server_state.h"

namespace tarlo::database {
namespace {

Trouble troubleOf(const DatabaseError& error) {
  switch (error.native().outage) {
    case Outage::Full:
      return Trouble::Full;
    case Outage::Gone:
    case Outage::Unknown:
      return Trouble::NoAnswer;
    case Outage::Failing:
      return error.native().sqlState == "25006" ? Trouble::NotWritable : Trouble::NoAnswer;
    case Outage::Busy:
      return error.number() == kConnectionFailed ? Trouble::NoAnswer : Trouble::None;
    case Outage::None:
      break;
  }
  return Trouble::None;
}

}  // namespace

void ServerState::note(const DatabaseError& error) {
  const Trouble trouble = troubleOf(error);
  if (trouble == Trouble::None) return;
  const std::lock_guard lock(mutex_);
  health_ = {trouble, error.description() + " " + error.native().text};
  since_ = std::chrono::steady_clock::now();
  isTroubled_ = true;
}

void ServerState::clear(bool wrote) {
  const std::lock_guard lock(mutex_);
  if (!wrote && health_.trouble != Trouble::NoAnswer) return;
  health_ = {};
  isTroubled_ = false;
}

Health ServerState::health() const {
  const std::lock_guard lock(mutex_);
  if (std::chrono::steady_clock::now() - since_ > kRemembered) return {};
  return health_;
}

}  // namespace tarlo::database
