#include "frame/data.h"

#include <gtest/gtest.h>

#include <functional>

#include "database/error.h"
#include "frame/local_page.h"
#include "support/temporary_folder.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::frame {
namespace {

class Data : public ::testing::Test {
 protected:
  Data() {
    database::Lease connection = databases_.find(name_).borrow();
    connection->allowDdl(true);
    connection->execute(
        "create table Note(Note_ID int identity(1,1) primary key, Note_Text nvarchar(4000) null)");
    connection->execute(
        "create table Zembra_OperateLog(OperateLog_ID int identity(1,1) primary key, "
        "OperateLog_UID int, OperateLog_ModulID int, OperateLog_SQL nvarchar(4000))");
    connection->allowDdl(false);
    local_.session()["usrID"] = 7;
  }

  std::string one(std::string_view sql) {
    return variant::spliced(firstCell(page_, sql, "(no rows)"));
  }
  std::string lastLogged() {
    return one("select top 1 OperateLog_SQL from Zembra_OperateLog order by OperateLog_ID desc");
  }
  int errorOf(const std::function<void()>& step) {
    ErrorState err;
    err.run(step);
    return err.number();
  }

  testing::TemporaryFolder folder_;
  std::string name_ = "sqlite:" + (folder_.path() / "data.db").string();
  database::Registry databases_{{.create = true}};
  LocalPage local_{databases_, name_};
  Page& page_ = local_.page();
};

TEST_F(Data, RowsAreWalkedInOrderAndReadByColumn) {
  const std::string_view all = "select Note_ID,Note_Text from Note order by Note_ID";
  const Rows none = rows(page_, all);
  EXPECT_TRUE(none.empty());
  EXPECT_TRUE(none.table().isEmpty());
  EXPECT_TRUE(none.tableOrNull().isNull());
  EXPECT_EQ(errorOf([&] { none.front(); }), 13);
  execSQL(page_, "insert into Note(Note_Text) values('a')");
  execSQL(page_, "insert into Note(Note_Text) values(null)");
  std::string walked;
  for (Row row : rows(page_, all)) walked += row.text(0) + "=" + row.text(1) + ";";
  EXPECT_EQ(walked, "1=a;2=;");
  const Rows both = rows(page_, all);
  EXPECT_EQ(errorOf([&] { both[2]; }), 9);
  EXPECT_EQ(errorOf([&] { both[0].value(2); }), 9);
  const Array& table = both.table().array();  // column, then row
  EXPECT_EQ(table.upperBound(1), 1);
  EXPECT_EQ(table.at(1, 0).text(), "a");
  EXPECT_TRUE(table.at(1, 1).isNull());
  EXPECT_EQ(firstText(page_, "select Note_Text from Note where Note_ID=9"), "");
  EXPECT_EQ(variant::toInt32(firstCell(page_, "select 1 from Note where 1=0", -1)), -1);
}

TEST_F(Data, NeoIDIsAskedForByTheLastWordInItsCase) {
  EXPECT_EQ(variant::toInt32(execSQL(page_, "select 5 as NeoID")), 5);
  EXPECT_TRUE(execSQL(page_, "select 5 as neoid").isEmpty());
  EXPECT_TRUE(execSQL(page_, "select 5 as NeoID ").isEmpty());
  EXPECT_EQ(errorOf([&] { execSQL(page_, "select Note_ID from Note NeoID"); }),
            database::kNoSuchField);
}

TEST_F(Data, FieldNamesStandFromOneOn) {
  const Variant names =
      titleArray(titles(page_, "select Note_ID, Note_Text as [标题], 1 from Note where 1=0"));
  ASSERT_EQ(names.array().upperBound(), 3);
  EXPECT_TRUE(names.array().at(0).isEmpty());
  EXPECT_EQ(names.array().at(1).text(), "Note_ID");
  EXPECT_EQ(names.array().at(2).text(), "标题");
  EXPECT_EQ(names.array().at(3).text(), "");
}

TEST_F(Data, RefusalsTravelToTheCaller) {
  for (const std::string sql : {"select x from Nowhere", "selekt 1", ""}) {
    EXPECT_THROW(rows(page_, sql), database::DatabaseError);
    EXPECT_THROW(execSQL(page_, sql), database::DatabaseError);
    EXPECT_THROW(titles(page_, sql), database::DatabaseError);
    std::string logged = sql;
    EXPECT_THROW(execSQLLogged(page_, logged), database::DatabaseError);
  }
  EXPECT_EQ(one("select count(*) from Zembra_OperateLog"), "0");
  EXPECT_THROW(execSQL(page_, "create table Other(a int)"), database::DatabaseError);
}

TEST_F(Data, TheServersOwnTablesAreUnknownToPages) {
  const std::string_view read = "select Hash from Tarlo_Secret where ID=1";
  {
    database::Lease connection = databases_.find(name_).borrow();
    connection->allowDdl(true);
    connection->execute("create table Tarlo_Secret(ID int, Hash nvarchar(50))");
    connection->execute("insert into Tarlo_Secret (ID,Hash) values (1,'h')");
    EXPECT_EQ(variant::spliced(connection->open(read)->value(0)), "h");
  }
  // The translation is known by now; the connection may be the same one.
  for (const std::string& sql :
       {std::string(read),
        std::string("select Note_ID from Note where Note_Text in (select Hash "
                    "from dbo.[TARLO_secret])"),
        std::string("update Tarlo_Secret set Hash='x'"),
        std::string("insert into Note (Note_Text) select Hash from Tarlo_Secret")}) {
    EXPECT_NE(errorOf([&] { rows(page_, sql); }), 0) << sql;
    EXPECT_NE(errorOf([&] { execSQL(page_, sql); }), 0) << sql;
  }
  EXPECT_EQ(variant::spliced(databases_.find(name_).borrow()->open(read)->value(0)), "h");
}

TEST_F(Data, TheConnectionStringIsReadAtEachCall) {
  local_.application()["strConn"] = "sqlite:" + (folder_.path() / "other.db").string();
  EXPECT_THROW(rows(page_, "select Note_ID from Note"), database::DatabaseError);
  local_.application()["strConn"] = name_;
  EXPECT_EQ(one("select count(*) from Note"), "0");
  local_.application().erase("strConn");
  EXPECT_THROW(rows(page_, "select 1"), database::DatabaseError);
}

TEST_F(Data, LoggedStatementsAreRewritten) {
  std::string less = "update Note set Note_Text='x' where 1<2";
  execSQLLogged(page_, less);
  EXPECT_EQ(lastLogged(), "update Note set Note_Text='x' where 1&lt;2");
  EXPECT_EQ(less, "update Note set Note_Text='x' where 1<2");
  std::string more = "update Note set Note_Text='y' where 1>2 and Note_Text='\"'";
  execSQLLogged(page_, more);
  EXPECT_EQ(lastLogged(), "update Note set Note_Text='y' where 1＞2 and Note_Text='&quot;'");
  EXPECT_EQ(one("select OperateLog_ModulID from Zembra_OperateLog"), "127");
  EXPECT_EQ(one("select OperateLog_UID from Zembra_OperateLog"), "7");

  local_.session()["usrICID"] = 33;
  std::string identity = "select 5 as NeoID";
  EXPECT_EQ(variant::toInt32(execSQLLogged(page_, identity)), 5);
  EXPECT_EQ(one("select max(OperateLog_SQL) from Zembra_OperateLog where OperateLog_ModulID=33"),
            "select 5 as NeoID");
}

TEST_F(Data, LongStatementsAreLoggedAsABatchAndTheCallerSeesIt) {
  const std::string head = "update Note set Note_Text='' where Note_Text=N'";
  for (const std::size_t units : {2000u, 2001u}) {
    std::string filling;
    for (std::size_t i = head.size() + 1; i < units; ++i) filling += "中";
    const std::string statement = head + filling + "'";
    std::string sql = statement;
    execSQLLogged(page_, sql);
    EXPECT_EQ(sql, units == 2000 ? statement : "Batch update");
    EXPECT_EQ(lastLogged(), sql);
  }
}

TEST_F(Data, ALostLogRowLeavesTheStatementApplied) {
  local_.session().erase("usrID");  // the row's statement then lacks a value
  std::string sql = "insert into Note(Note_Text) values('kept')";
  EXPECT_NO_THROW(execSQLLogged(page_, sql));
  EXPECT_EQ(one("select Note_Text from Note"), "kept");
  EXPECT_EQ(one("select count(*) from Zembra_OperateLog"), "0");
}

}  // namespace
}  // namespace tarlo::frame
