#include "private_server.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "engines.h"

namespace tarlo::database::test {

using namespace std::chrono_literals;

PrivateServer::PrivateServer(const std::string& connections) {
  int in[2], out[2];
  if (pipe2(in, O_CLOEXEC) != 0 || pipe2(out, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  process_ = fork();
  if (process_ == 0) {
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    setenv("TARLO_POSTGRESQL_CONNECTIONS", connections.c_str(), 1);
    execl(TARLO_TEST_DATA "/../../tools/with_postgresql", "with_postgresql", "sh", "-c",
          "echo \"$TARLO_POSTGRESQL\"; cat >/dev/null", nullptr);
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  keep_ = in[1];
  for (char c = 0; read(out[0], &c, 1) == 1 && c != '\n';) connection_ += c;
  close(out[0]);
  if (connection_.empty()) throw std::runtime_error("tools/with_postgresql starts no server");
  folder_ = connection_.substr(connection_.find("host=") + 5);
}

PrivateServer::~PrivateServer() {
  close(keep_);
  waitpid(process_, nullptr, 0);
}

int PrivateServer::serverProcess() const {
  std::ifstream file(folder_ + "/data/postmaster.pid");
  int process = 0;
  file >> process;
  return process;
}

void PrivateServer::signal(int number) const {
  before_ = serverProcess();
  if (before_ > 0) kill(before_, number);
}

void PrivateServer::signalSessions(int number) const {
  const int server = serverProcess();
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    std::ifstream file(entry.path() / "stat");
    std::string process, name, state;
    int parent = 0;
    if (!(file >> process >> name >> state >> parent) || parent != server || server <= 0) continue;
    kill(std::atoi(process.c_str()), number);
  }
}

void PrivateServer::waitUntilUp() const {
  for (int tries = 0; tries < 300; ++tries) {
    if (serverProcess() != before_ && Server(connection_).isUp()) return;
    std::this_thread::sleep_for(50ms);
  }
  throw std::runtime_error("the server does not come back");
}

}  // namespace tarlo::database::test
