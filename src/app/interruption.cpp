#include "app/interruption.h"

#include <array>

#include "app/exit_code.h"

namespace tarlo::app {
namespace {

constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};

}  // namespace

InterruptionDelay::InterruptionDelay() {
  sigset_t delayed;
  sigemptyset(&delayed);
  for (const int signal : kSignals) sigaddset(&delayed, signal);
  pthread_sigmask(SIG_BLOCK, &delayed, &before_);
}

InterruptionDelay::~InterruptionDelay() {
  pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void endWhenInterrupted() {
  sigset_t waiting;
  sigemptyset(&waiting);
  sigpending(&waiting);
  for (const int signal : kSignals) {
    if (sigismember(&waiting, signal) == 1) throw CommandError(kFailed, "interrupted");
  }
}

}  // namespace tarlo::app
