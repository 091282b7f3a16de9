// Another program changes the tables while translations and prepared statements of ours are kept:
// the next statement must be right, on every connection.

#include "engines.h"
#include "support.h"
#include "tsql/print/sqlite_types.h"

namespace tarlo::database::test {
namespace {

class SchemaChange : public OnEveryEngine {
 protected:
  SchemaChange() {
    other->run("PRAGMA journal_mode=WAL");
    other->run("CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, N INTEGER, Name TEXT)");
    other->run("INSERT INTO T (N, Name) VALUES (10, 'a')");
    database = home_.open();
  }
  const std::unique_ptr<Other> other = home_.other();
  std::unique_ptr<Database> database;
};

TARLO_ON_EVERY_ENGINE(SchemaChange);

TEST_P(SchemaChange, ReadsFollow) {
  Lease leases[] = {database->borrow(), database->borrow()};
  constexpr const char* kAll = "select * from T where N>5";
  const auto expectBoth = [&](const char* rows) {
    for (Lease& lease : leases) EXPECT_EQ(ask(*lease, kAll), rows);
  };
  expectBoth("i1,i10,ta");
  other->run("ALTER TABLE T ADD COLUMN Extra INTEGER DEFAULT 3");
  expectBoth("i1,i10,ta,i3");
  // The same name with another kind.
  other->run("DROP TABLE T;CREATE TABLE T (N TEXT);INSERT INTO T VALUES ('7')");
  expectBoth("t7");
  other->run("ALTER TABLE T RENAME TO Gone");
  for (Lease& lease : leases) {
    EXPECT_EQ(errorOf([&] { ask(*lease, kAll); }).native().engine, "tsql");
  }
  other->run("ALTER TABLE Gone RENAME TO T");
  expectBoth("t7");
}

TEST_P(SchemaChange, WritesFollow) {
  auto lease = database->borrow();
  constexpr const char* kWrite = "update T set N='08' where ID=1";
  lease->execute(kWrite);
  EXPECT_EQ(ask(*lease, "select N from T"), "i8");
  other->run(
      "DROP TABLE T;CREATE TABLE T (ID INTEGER PRIMARY KEY, N TEXT);"
      "INSERT INTO T VALUES (1, 'old')");
  lease->execute(kWrite);
  EXPECT_EQ(ask(*lease, "select N from T"), "t08");
  other->run("ALTER TABLE T RENAME COLUMN N TO M");
  EXPECT_EQ(errorOf([&] { lease->execute(kWrite); }).native().engine, "tsql");
  EXPECT_EQ(ask(*lease, "select M from T"), "t08");
}

TEST_P(SchemaChange, ATranslationOfAnotherConnectionIsNotTrustedBlindly) {
  auto first = database->borrow();
  auto second = database->borrow();
  EXPECT_EQ(ask(*second, "select count(*) from T"), "i1");
  EXPECT_EQ(ask(*first, "select * from T"), "i1,i10,ta");
  other->run("ALTER TABLE T DROP COLUMN Name");
  // The second connection has never prepared this text, but finds its translation.
  EXPECT_EQ(ask(*second, "select * from T"), "i1,i10");
  EXPECT_EQ(ask(*first, "select * from T"), "i1,i10");
}

TEST_P(SchemaChange, RolledBackTablesAreForgotten) {
  auto lease = database->borrow();
  lease->allowDdl(true);
  {
    const Connection::Transaction left(*lease);
    lease->execute("create table Later (A int)");
    EXPECT_EQ(ask(*lease, "select A from Later"), "");
  }
  errorOf([&] { lease->execute("select A from Later"); });
  other->run("CREATE TABLE Later (B INTEGER)");
  errorOf([&] { lease->execute("select A from Later"); });
  EXPECT_EQ(ask(*lease, "select B from Later"), "");
}

// What other engines have is in their own tests.
TEST_P(SchemaChange, TheCatalogueReadsWhatIsThere) {
  if (!isSqlite()) GTEST_SKIP() << "of SQLite";
  other->run(
      "CREATE TABLE K (b VARCHAR(20) NOT NULL, a DECIMAL(9,3), c DATETIME, "
      "g INTEGER AS (a * 2), PRIMARY KEY (c, b)) WITHOUT ROWID");
  other->run("CREATE VIEW V AS SELECT ID, N + 1 AS M FROM T");
  auto lease = database->borrow();
  // Columns with what they are, then the key's columns and whether rows can be told by their rowid.
  const auto described = [&](std::string_view name) {
    const tsql::Table* table = lease->catalogue().findTable(name);
    if (!table) return std::string("none");
    std::string text = table->name + ":";
    for (const tsql::Column& column : table->columns) {
      text += " " + column.name + "=" + tsql::declaredType(column.type);
      if (column.isIdentity) text += " identity";
      if (column.isGenerated) text += " generated";
      if (!column.isNullable) text += " not null";
    }
    text += " key";
    for (const std::size_t index : table->key) text += " " + std::to_string(index);
    return text + (table->hasRowid ? " rowid" : "");
  };
  EXPECT_EQ(described("k"),
            "K: b=TEXT(20) not null a=REAL(9,3) c=DATETIME TEXT not null g=INTEGER generated"
            " key 2 0");
  EXPECT_EQ(described("T"), "T: ID=INTEGER identity N=INTEGER Name=TEXT key 0 rowid");
  EXPECT_EQ(described("v"), "V: ID=INTEGER M=TEXT key");
  for (const char* absent : {"sqlite_master", "sqlite_sequence", "none", "", "T'"}) {
    EXPECT_EQ(described(absent), "none") << absent;
  }
}

}  // namespace
}  // namespace tarlo::database::test
