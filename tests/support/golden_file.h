#pragma once
// Files of statements and of what is expected of them, so that tests of several folders read the
// same ones.

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tarlo::testing {

inline std::vector<std::string> fileLines(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) {
    if (!line.starts_with('#')) lines.push_back(line);
  }
  return lines;
}

// Entries of one line or several, parted by lines that hold only GO. Lines that begin with # and
// empty entries are skipped; blanks within an entry stay.
inline std::vector<std::string> goldenEntries(const std::string& path) {
  std::vector<std::string> entries(1);
  for (const std::string& line : fileLines(path)) {
    if (line == "GO") {
      entries.emplace_back();
    } else if (!line.empty() || !entries.back().empty()) {
      if (!entries.back().empty()) entries.back() += '\n';
      entries.back() += line;
    }
  }
  std::erase(entries, "");
  return entries;
}

// One entry a line.
inline std::vector<std::string> goldenLines(const std::string& path) {
  std::vector<std::string> lines = fileLines(path);
  std::erase(lines, "");
  return lines;
}

}  // namespace tarlo::testing
