#pragma once
// Ctrl-C and its relatives while a file is being built: they wait, so that what is half made can be
// removed first. A handler would need global state; a blocked signal keeps itself.

#include <csignal>

namespace tarlo::app {

// From construction to destruction SIGINT, SIGTERM and SIGHUP wait. One that came meanwhile ends
// the process at the destruction, as it would have done at once.
class InterruptionDelay {
 public:
  InterruptionDelay();
  ~InterruptionDelay();
  InterruptionDelay(const InterruptionDelay&) = delete;
  InterruptionDelay& operator=(const InterruptionDelay&) = delete;

 private:
  sigset_t before_;
};

// Throws CommandError (kFailed) when one of them is waiting. Long work asks between its steps.
void endWhenInterrupted();

}  // namespace tarlo::app
