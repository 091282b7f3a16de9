// The scripts that make the platform's tables and the demo business, run into a database in memory.

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "database/database.h"
#include "database/script.h"
#include "embedded_schema.h"
#include "variant/convert.h"

namespace tarlo {
namespace {

using database::Connection;

class Schema : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    base_ = database::openDatabase("sqlite::memory:", {.create = true, .maxConnections = 1});
    run(*base_, "tables/");
    demo_ = database::openDatabase("sqlite::memory:", {.create = true, .maxConnections = 1});
    run(*demo_, "tables/");
    run(*demo_, "demo/");
  }
  static void TearDownTestSuite() {
    base_.reset();
    demo_.reset();
  }

  static void run(database::Database& target, std::string_view folder) {
    std::map<std::string_view, std::string_view> scripts;
    for (const auto& file : embedded::schema::files()) {
      if (file.name.starts_with(folder)) scripts.emplace(file.name, file.text);
    }
    ASSERT_FALSE(scripts.empty());
    database::Lease lease = target.borrow();
    lease->allowDdl(true);
    Connection::Transaction transaction(*lease);
    for (const auto& [name, text] : scripts) {
      SCOPED_TRACE(name);
      ASSERT_NO_THROW(database::runScript(*lease, text));
    }
    transaction.commit();
  }

  // The rows of the statement, cells joined by "|", NULL as "".
  static std::vector<std::string> rows(Connection& connection, std::string_view sql) {
    std::vector<std::string> all;
    for (auto set = connection.open(sql); !set->atEnd(); set->moveNext()) {
      std::string line;
      for (std::size_t i = 0; i < set->fieldCount(); ++i) {
        const Variant value = set->value(i);
        line += (i == 0 ? "" : "|") + (value.isNull() ? std::string() : toText(value));
      }
      all.push_back(line);
    }
    return all;
  }

  static inline std::unique_ptr<database::Database> base_;
  static inline std::unique_ptr<database::Database> demo_;
};

using Lines = std::vector<std::string>;

// A NULL in one of these columns would drop its row from every list.
TEST_F(Schema, ColumnsThatNoInsertNamesHaveDefaults) {
  // Table, the one column that is given, the others and what they hold.
  const std::tuple<std::string, std::string, std::string, std::string> cases[] = {
      {"Zembra_Query_Main", "Query_Name",
       "Query_System,Query_MultiRel,Query_HasStatic,Query_IsDataAlert,Zembra_Flag", "0|0|0|0|1"},
      {"Zembra_Query_Field", "QF_Name",
       "QF_System,Zembra_Flag,DATEDIFF(day,Zembra_CreateDate,getdate()),"
       "DATEDIFF(day,Zembra_ModiDate,getdate())",
       "0|1|0|0"},
      {"Zembra_Query_Field_Ver2", "QF_Name", "Zembra_Flag", "1"},
      {"Zembra_DataDict_Table", "DDT_Name", "DDT_Status,Zembra_Flag,DDT_ID-Zembra_ID", "0|1|0"},
      {"Zembra_DataDict_Field", "DDF_Name", "DDF_Type,Zembra_Flag,DDF_ID-Zembra_ID", "0|1|0"},
      {"Zembra_DataDict_Relation", "DDR_MainTableName",
       "Zembra_Flag,DATEDIFF(day,Zembra_ModiDate,getdate())", "1|0"},
      {"Zembra_Permission", "Permission_SubAction", "permission_forbid", "0"},
      {"Zembra_MyTask_Record", "MT_Topic", "Zembra_Flag", "1"}};
  database::Lease lease = base_->borrow();
  for (const auto& [table, given, others, expected] : cases) {
    lease->execute("insert " + table + "(" + given + ") values('a')");
    EXPECT_EQ(rows(*lease, "select " + others + " from " + table + " where " + given + "='a'"),
              Lines{expected})
        << table;
  }
}

TEST_F(Schema, AnInstallationHasTheFixedRows) {
  database::Lease lease = base_->borrow();
  EXPECT_EQ(rows(*lease, "select QF_Type_ID from Zembra_Query_Type"), (Lines{"1", "2", "3"}));
  EXPECT_EQ(rows(*lease, "select Zembra_ID from Zembra_Dict_FieldType"), (Lines{"3", "5", "7"}));
}

TEST_F(Schema, TheDictionaryAgreesWithTheTables) {
  database::Lease lease = demo_->borrow();
  std::map<std::string, std::string> keyOf;
  for (const std::string& name : rows(*lease, "select DDT_Name from Zembra_DataDict_Table")) {
    const tsql::Table* table = lease->catalogue().findTable(name);
    ASSERT_NE(table, nullptr) << name;
    EXPECT_GE(table->find("Zembra_Flag"), 0) << name;
    std::set<std::string> columns;
    for (const tsql::Column& column : table->columns) {
      columns.insert(column.name);
      if (column.isIdentity) keyOf[name] = column.name;
    }
    const Lines fields = rows(*lease,
                              "select f.DDF_Name from Zembra_DataDict_Field f,"
                              "Zembra_DataDict_Table t where f.DDF_TableID=t.Zembra_ID "
                              "and t.DDT_Name='" +
                                  name + "'");
    EXPECT_GE(fields.size(), 3U) << name;
    for (const std::string& field : fields) EXPECT_TRUE(columns.contains(field)) << name << field;
  }
  EXPECT_GE(keyOf.size(), 25U);
  Lines keys;
  for (const auto& [table, key] : keyOf) keys.push_back(table + "|" + key);
  EXPECT_EQ(rows(*lease,
                 "select t.DDT_Name,f.DDF_Name from Zembra_DataDict_Table t,Zembra_DataDict_Field f"
                 " where f.DDF_TableID=t.Zembra_ID and f.DDF_Type=1 order by t.DDT_Name"),
            keys);
}

TEST_F(Schema, RelationsJoinLiveFieldsOfTheirTables) {
  database::Lease lease = demo_->borrow();
  const std::string live =
      "select count(*) from Zembra_DataDict_Relation r,Zembra_DataDict_Field m,"
      "Zembra_DataDict_Field f where m.Zembra_ID=r.DDR_MainFieldID and "
      "m.DDF_TableID=r.DDR_MainTableID and f.Zembra_ID=r.DDR_RelationFieldID and "
      "f.DDF_TableID=r.DDR_RelationTableID and m.Zembra_Flag=1 and f.Zembra_Flag=1";
  EXPECT_EQ(rows(*lease, live), rows(*lease, "select count(*) from Zembra_DataDict_Relation"));
}

// Every value that a relation's main end holds is a key at its other end.
TEST_F(Schema, DemoRowsReferToRowsThatAreThere) {
  database::Lease lease = demo_->borrow();
  const Lines relations = rows(*lease,
                               "select a.DDT_Name,m.DDF_Name,b.DDT_Name,f.DDF_Name "
                               "from Zembra_DataDict_Relation r,Zembra_DataDict_Table a,"
                               "Zembra_DataDict_Field m,Zembra_DataDict_Table b,"
                               "Zembra_DataDict_Field f where a.Zembra_ID=r.DDR_MainTableID and "
                               "m.Zembra_ID=r.DDR_MainFieldID and "
                               "b.Zembra_ID=r.DDR_RelationTableID and "
                               "f.Zembra_ID=r.DDR_RelationFieldID");
  ASSERT_FALSE(relations.empty());
  for (const std::string& relation : relations) {
    std::string part[4];
    std::istringstream parts(relation);
    for (std::string& text : part) std::getline(parts, text, '|');
    EXPECT_EQ(rows(*lease, "select count(*) from " + part[0] + " where not " + part[1] +
                               " is null and not " + part[1] + " in (select " + part[3] + " from " +
                               part[2] + ")"),
              Lines{"0"})
        << relation;
  }
}

TEST_F(Schema, TheDemoHoldsNothingThatCompilationTakesForSomethingElse) {
  database::Lease lease = demo_->borrow();
  for (const char* none :
       {// Statistics look for a table's name anywhere in the list of tables that they have so far.
        "select a.DDT_Name from Zembra_DataDict_Table a,Zembra_DataDict_Table b "
        "where a.Zembra_ID<>b.Zembra_ID and CHARINDEX(a.DDT_Name,b.DDT_Name)>0",
        // Grouping reads field ids as 16-bit numbers.
        "select Zembra_ID from Zembra_DataDict_Field where Zembra_ID>32767"})
    EXPECT_EQ(rows(*lease, none), Lines{});
}

}  // namespace
}  // namespace tarlo
