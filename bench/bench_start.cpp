// Cold start: the binary from its start to the end of its first compiled scheme on the demo
// database, and the most memory that it held. Needs the path of the binary in TARLO_BINARY; without
// it, the one beside this program's folder.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::string binary() {
  if (const char* path = std::getenv("TARLO_BINARY")) return path;
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path() /
          "tarloquery")
      .string();
}

// Runs the binary with the arguments, its output thrown away. Gives its peak resident memory in
// KiB.
long runBinary(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), binary());
  std::vector<char*> pointers;
  for (auto& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failed = posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (failed != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    throw std::runtime_error("the binary failed: " + arguments[0] + " " + arguments[1]);
  }
  return usage.ru_maxrss;
}

class DemoDatabase {
 public:
  DemoDatabase() { runBinary({"init", "--demo", "--database", connectionString()}); }
  ~DemoDatabase() { std::filesystem::remove_all(folder_); }
  std::string connectionString() const { return "sqlite:" + (folder_ / "demo.db").string(); }

 private:
  std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() / ("tarlo-bench-start-" + std::to_string(getpid()));
};

void startFloor(benchmark::State& state) {
  for (auto _ : state) runBinary({"--version"});
}
BENCHMARK(startFloor)->Unit(benchmark::kMillisecond)->UseRealTime();

void startToFirstScheme(benchmark::State& state) {
  static const DemoDatabase demo;
  long peak = 0;
  for (auto _ : state) peak = runBinary({"compile", "1", "--database", demo.connectionString()});
  state.counters["peakKiB"] = static_cast<double>(peak);
}
BENCHMARK(startToFirstScheme)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
