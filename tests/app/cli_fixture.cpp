#include "app/cli_fixture.h"

#include <fstream>
#include <sstream>

#include "app/cli.h"

namespace tarlo::app {

namespace fs = std::filesystem;

CliResult cli(const std::vector<std::string>& arguments) {
  std::vector<const char*> pointers = {"tarloquery"};
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  std::ostringstream out, err;
  const int exitCode = run(pointers, out, err);
  return {exitCode, out.str(), err.str()};
}

void CliTest::SetUp() {
  std::string pattern = (fs::temp_directory_path() / "cli_test_XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
}

void CliTest::TearDown() {
  std::error_code ignored;
  fs::remove_all(folder_, ignored);
}

void CliTest::write(const std::string& name, const std::string& text) const {
  std::ofstream(path(name), std::ios::binary) << text;
}

std::vector<std::string> CliTest::files() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder_))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tarlo::app
