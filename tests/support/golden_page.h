#pragma once
// Pages against files that hold them as they go out, line ends included. TARLO_REWRITE_GOLDEN=1
// writes the expectations anew.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace tarlo::testing {

inline void expectGolden(const std::string& name, const std::string& page) {
  const std::string path = std::string(TARLO_TEST_DATA "/golden/") + name;
  if (std::getenv("TARLO_REWRITE_GOLDEN") != nullptr) {
    std::ofstream(path, std::ios::binary) << page;
  }
  std::ifstream file(path, std::ios::binary);
  std::stringstream expected;
  expected << file.rdbuf();
  EXPECT_EQ(page, expected.str()) << name;
}

}  // namespace tarlo::testing
