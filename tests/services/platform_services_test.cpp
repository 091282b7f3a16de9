// File transfer, tables and fields by name, policies.

#include <gtest/gtest.h>

#include <fstream>

#include "frame/policy.h"
#include "services/operations.h"
#include "services/page_objects.h"
#include "support/platform_database.h"

namespace tarlo::services {
namespace {

using testing::errorOf;
using testing::holds;
using testing::PlatformDatabase;
using testing::textOf;

// Counts what goes out, and stops listening after so many flushes.
class CountingResponse : public frame::Response {
 public:
  void write(std::string_view) override {}
  void clear() override {}
  void end() override { throw frame::PageEnd{}; }
  void setHeader(std::string_view name, std::string_view value) override {
    headers += std::string(name) + ": " + std::string(value) + "\n";
  }
  void binaryWrite(std::string_view bytes) override {
    sent += bytes.size();
    if (sent <= 100) text += bytes;
  }
  void flush() override { ++flushes; }
  bool isClientConnected() const override { return flushes < leavesAfter; }

  std::string headers, text;
  std::uint64_t sent = 0;
  int flushes = 0;
  int leavesAfter = 1 << 30;
};

class TransferTest : public ::testing::Test {
 protected:
  std::string file(const std::string& name, std::uint64_t size) {
    const auto path = folder_.path() / "root" / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "x";
    std::filesystem::resize_file(path, size);
    return path.string();
  }
  bool transfer(const std::string& path) {
    const Page& base = data_.page();
    Page page{base.request, response_, base.server, base.session, base.application, base.databases};
    return variant::toBoolean(TransferFile(page, Variant(path), "报表.xls"));
  }
  TransferTest() {
    std::filesystem::create_directories(folder_.path() / "root");
    data_.local().registerObject("Scripting.FileSystemObject",
                                 [this] { return makeFileSystem(folder_.path() / "root"); });
  }

  testing::TemporaryFolder folder_;
  PlatformDatabase data_;
  CountingResponse response_;
};

TEST_F(TransferTest, FlushesEverySixteenKilobytesAndBehindTheEnd) {
  struct Row {
    std::uint64_t size;
    int flushes;
  };
  for (const Row row : {Row{0, 1}, Row{1, 1}, Row{16383, 1}, Row{16384, 2}, Row{40000, 3}}) {
    response_ = {};
    EXPECT_TRUE(transfer(file("f", row.size)));
    EXPECT_EQ(response_.sent, row.size);
    EXPECT_EQ(response_.flushes, row.flushes) << row.size;
    EXPECT_EQ(response_.headers,
              "content-type: application/x-msdownload\n"
              "Content-Disposition: attachment;filename=报表.xls\ncontent-length: " +
                  std::to_string(row.size) + "\n");
  }
}

TEST_F(TransferTest, AClientThatLeavesEndsItAtTheNextLook) {
  const std::string path = file("f", 100'000);
  response_.leavesAfter = 2;
  EXPECT_FALSE(transfer(path));
  EXPECT_EQ(response_.sent, 32768U);
  response_ = {};
  response_.leavesAfter = 1;
  EXPECT_FALSE(transfer(file("small", 10)));  // behind the end too
}

TEST_F(TransferTest, AFileOfMoreThanTwoGigabytes) {
  constexpr std::uint64_t kSize = (std::uint64_t{1} << 31) + 5;
  EXPECT_TRUE(transfer(file("large", kSize)));  // without blocks on the disk
  EXPECT_EQ(response_.sent, kSize);
  EXPECT_TRUE(holds(response_.headers, "content-length: 2147483653\n"));
}

TEST_F(TransferTest, NothingOutsideTheFolderIsSent) {
  const std::string inside = file("sub/f", 10);
  std::ofstream(folder_.path() / "secret") << "s";
  std::filesystem::create_directory(folder_.path() / "root2");
  std::ofstream(folder_.path() / "root2/f") << "s";
  std::filesystem::create_symlink(folder_.path() / "secret", folder_.path() / "root/link");
  EXPECT_TRUE(transfer(inside));
  EXPECT_TRUE(transfer("sub/f"));
  const std::string root = (folder_.path() / "root").string();
  for (const std::string& path : {root + "/../secret", std::string("../secret"), root + "/link",
                                  root + "2/f", root, std::string("/etc/passwd"),
                                  std::string("none"), std::string(""), std::string("/dev/zero")}) {
    response_ = {};
    EXPECT_EQ(errorOf([&] { transfer(path); }), 53) << path;
    EXPECT_EQ(response_.headers, "") << path;
  }
  data_.local().registerObject("Scripting.FileSystemObject", [] { return makeFileSystem(""); });
  EXPECT_EQ(errorOf([&] { transfer(inside); }), 53);
}

TEST(TableIntrospection, TablesFieldsAndKeysByName) {
  PlatformDatabase data;
  Page& page = data.page();
  data.execute("update Zembra_DataDict_Table set DDT_Name='UserTb_Region' where Zembra_ID=12");
  data.execute("update Zembra_DataDict_Table set DDT_Status=1 where Zembra_ID=11");
  EXPECT_EQ(textOf(getUserTableName(page, "", true)), "Orders,Order | UserTb_Region,Area");
  EXPECT_EQ(textOf(getUserTableName(page, "", false)), "UserTb_Region,Area");
  EXPECT_EQ(textOf(getUserFieldName(page, "UserTb_Region")), "ID,Key | Name,Name");
  EXPECT_EQ(textOf(getUserFieldName(page, "Gone")), "Empty");
  EXPECT_EQ(textOf(getTableIDField(page, "Orders")), "ID");
  EXPECT_EQ(textOf(getTableIDValue(page, "Orders")), "10");
  EXPECT_EQ(textOf(getFieldIDValue(page, "Orders", "Amount")), "101");
  EXPECT_EQ(errorOf([&] { getTableIDField(page, "Gone"); }), 13);
  EXPECT_EQ(errorOf([&] { getTableIDValue(page, "Gone"); }), 13);
  EXPECT_EQ(errorOf([&] { getFieldIDValue(page, "Orders", "Gone"); }), 13);
  EXPECT_NE(errorOf([&] { getTableIDValue(page, "it's"); }), 0);
}

TEST(Policies, AnUnknownOneIsATableOfZeros) {
  PlatformDatabase data;
  Page& page = data.page();
  data.execute(
      "insert into Zembra_Policy (Policy_Name,Policy_ParaA,Policy_ParaD) values ('p','a','d'),"
      "('OEM信息','','一'+CHAR(13)+CHAR(10)+'二,三')");
  EXPECT_EQ(textOf(getPolicyInfo(page, "p")), "a,Null,Null,d,Null,Null");
  const Variant unknown = getPolicyInfo(page, "none");
  const Array& cells = unknown.array();
  EXPECT_EQ(cells.upperBound(1), 10);
  EXPECT_EQ(cells.upperBound(2), 1);
  EXPECT_EQ(textOf(cells.at(3, 0)), "0");
  EXPECT_EQ(textOf(cells.at(8, 0)), "0");
  EXPECT_TRUE(cells.at(9, 0).isEmpty());
  EXPECT_TRUE(cells.at(0, 1).isEmpty());
  const std::string pane = frame::getOEMInfoHTML(page);
  EXPECT_TRUE(holds(pane, ">一<br>二</td>")) << pane;
  data.execute("update Zembra_Policy set Policy_Name='x'");
  EXPECT_EQ(errorOf([&] { frame::getOEMInfoHTML(page); }), 5);
}

}  // namespace
}  // namespace tarlo::services
