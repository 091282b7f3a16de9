#pragma once
// Runs the command line in process, in a folder of its own.

#include <gtest/gtest.h>
#include <unistd.h>
#include <filesystem>
#include <string>
#include <vector>

namespace tarlo::app {

struct CliResult {
  int exitCode = -1;
  std::string out, err;
};

// Arguments without the program's name.
CliResult cli(const std::vector<std::string>& arguments);

class CliTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  std::string path(const std::string& name) const { return (folder_ / name).string(); }
  std::string connection(const std::string& name) const { return "sqlite:" + path(name); }
  void write(const std::string& name, const std::string& text) const;
  // The names of the files in the folder.
  std::vector<std::string> files() const;

  std::filesystem::path folder_;
};

}  // namespace tarlo::app
