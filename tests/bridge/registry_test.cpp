#include "bridge/registry.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/temporary_folder.h"

namespace tarlo::bridge {
namespace {

class RegistryTest : public ::testing::Test {
 protected:
  std::string file() const { return (folder_.path() / "registry").string(); }
  void write(std::string_view text) { std::ofstream(file()) << text; }
  std::string listed() const {
    std::string text;
    for (const RegisteredClass& entry : readRegistry(file())) {
      text += entry.progId + " " + entry.classId + " " + entry.library + ";";
    }
    return text;
  }

  testing::TemporaryFolder folder_;
};

TEST_F(RegistryTest, AClassHasOneLine) {
  EXPECT_EQ(listed(), "");
  addToRegistry(file(), {"A.one", "{1}", "/a.so"});
  addToRegistry(file(), {"B.two", "{2b}", "/b.so"});
  addToRegistry(file(), {"A.newer", "{1}", "/c.so"});
  EXPECT_EQ(listed(), "B.two {2b} /b.so;A.newer {1} /c.so;");
  removeFromRegistry(file(), "{2B}");
  EXPECT_EQ(listed(), "A.newer {1} /c.so;");
  removeFromRegistry(file(), "{9}");
  EXPECT_EQ(listed(), "A.newer {1} /c.so;");
}

TEST_F(RegistryTest, RemarksStayAndOtherLinesAreRefused) {
  write("# ours\n\nA.one\t{1}\t/a.so\n");
  addToRegistry(file(), {"B.two", "{2}", "/b.so"});
  EXPECT_EQ(listed(), "A.one {1} /a.so;B.two {2} /b.so;");
  for (const char* line : {"A.one {1} /a.so", "A.one\t1\t/a.so", "A.one\t{1}\ta.so", "\t{1}\t/a.so",
                           "A\t{1}\t/a.so\tmore"}) {
    write(std::string(line) + "\n");
    EXPECT_THROW(readRegistry(file()), RegistryError) << line;
  }
}

TEST_F(RegistryTest, OnlyAFileThatIsOursIsReadAndWritten) {
  write("A.one\t{1}\t/a.so\n");
  std::filesystem::permissions(file(), std::filesystem::perms::others_write,
                               std::filesystem::perm_options::add);
  EXPECT_THROW(readRegistry(file()), RegistryError);
  EXPECT_THROW(addToRegistry((folder_.path() / "none/registry").string(), {"A", "{1}", "/a.so"}),
               RegistryError);
}

}  // namespace
}  // namespace tarlo::bridge
