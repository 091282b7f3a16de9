#pragma once
// A server for one test alone, which may be taken down: tools/with_postgresql starts it again.

#include <memory>
#include <string>

namespace tarlo::database::test {

class PrivateServer {
 public:
  explicit PrivateServer(const std::string& connections = "20");
  ~PrivateServer();
  PrivateServer(const PrivateServer&) = delete;
  PrivateServer& operator=(const PrivateServer&) = delete;

  const std::string& connection() const { return connection_; }
  // To the server itself: SIGINT ends it, SIGQUIT makes it break down.
  void signal(int number) const;
  // To all its processes.
  void signalSessions(int number) const;
  void waitUntilUp() const;

 private:
  int serverProcess() const;

  int process_ = 0;  // of with_postgresql
  int keep_ = -1;    // as long as it is open the server runs
  std::string connection_;
  std::string folder_;
  mutable int before_ = 0;  // the server that was signalled
};

}  // namespace tarlo::database::test
