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

// One platform table: "name kind, name kind, ..."; kinds: id, i int, s text, d date, c computed
// int.
struct TableCase {
  const char* table;
  const char* columns;
};

constexpr TableCase kTables[] = {
    {"Zembra_Query_Main",
     "Query_ID id, Query_Name s, Query_Desc s, Query_Fields s, Zembra_WriteDate d, Zembra_User s, "
     "Zembra_ModiUser s, Zembra_ModiDate d, Query_Prikey s, Query_System i, Query_Dic i, "
     "Query_MainTBID i, Query_Vir s, Query_Rel s, Query_Static s, Query_Group s, "
     "Query_MultiRel i, Query_MultiRelSel s, Query_HasStatic i, Query_IsDataAlert i, "
     "Zembra_Flag i"},
    {"Zembra_Query_Ver2",
     "Zembra_ID id, Query_ID i, Query_Name s, Query_Desc s, Query_Fields s, Zembra_WriteDate d, "
     "Query_Prikey s, Query_Dic i, Query_System i, Query_HasStatic i, Query_IsDataAlert i, "
     "Zembra_Flag i, Zembra_ModiDate d, Zembra_ModiUser s, Zembra_User s, Query_MultiRelSel s, "
     "Query_MultiRel i"},
    {"Zembra_Query_Field",
     "QF_ID id, QF_Name s, QF_Desc s, QF_NameID i, QF_Field s, QF_CField s, QF_Table s, "
     "QF_CTable s, QF_Relation s, QF_FieldType i, QF_System i, Zembra_Flag i, "
     "Zembra_CreateDate d, Zembra_ModiDate d"},
    {"Zembra_Query_Type", "QF_Type_ID i, QF_Type_Name s"},
    {"Zembra_Query_Field_Ver2",
     "Zembra_ID id, QF_ID i, QF_NameID i, QF_Name s, QF_CField s, QF_FieldType i, QF_Relation s, "
     "Zembra_Flag i"},
    {"Zembra_DataDict_Table",
     "Zembra_ID id, DDT_ID c, DDT_Name s, DDT_CName s, DDT_DirID i, DDT_Status i, Zembra_Flag i"},
    {"Zembra_DataDict_Field",
     "Zembra_ID id, DDF_ID c, DDF_TableID i, DDF_Name s, DDF_CName s, DDF_Type i, Zembra_Flag i"},
    {"Zembra_DataDict_Relation",
     "Zembra_ID id, DDR_MainTableID i, DDR_MainFieldID i, DDR_RelationTableID i, "
     "DDR_RelationFieldID i, DDR_MainTableName s, DDR_MainFieldName s, DDR_RelationTableName s, "
     "DDR_RelationFieldName s, Zembra_ModiDate d, Zembra_Flag i"},
    {"Zembra_Dict_TableDir", "Zembra_ID id, TD_Name s, Zembra_Flag i, Zembra_WriteDate d"},
    {"Zembra_Dict_FieldType", "Zembra_ID id"},
    {"Zembra_OperateLog",
     "OperateLog_ID id, OperateLog_UID i, OperateLog_ModulID i, OperateLog_SQL s"},
    {"Zembra_User",
     "User_ID id, User_Name s, User_user s, User_GroupID i, User_joinGroupID s, User_RankID i, "
     "user_position i, User_DeptID i"},
    {"Zembra_Group", "Group_ID id, Group_name s, Group_Type i"},
    {"Zembra_Rank", "Rank_ID id, Rank_name s, Rank_Index i"},
    {"Zembra_Quarters", "Quarters_ID id, Quarters_name s"},
    {"Zembra_ICON", "Icon_ID id, icon_name s, icon_file s"},
    {"Zembra_Menu",
     "Menu_ID id, Menu_Name s, Menu_Href s, Menu_ParentID i, Menu_AddType i, Menu_AddValue i, "
     "Menu_Desc s, Menu_Order i"},
    {"Zembra_Permission",
     "Permission_UserID i, Permission_MenuID i, Permission_SubAction s, permission_forbid i"},
    {"Zembra_WorkFlow_Custom", "Zembra_ID id, WF_SameFlag i, WF_WorkName i"},
    {"Zembra_WorkFlow_PerDot", "Zembra_ID id, WFPS_NoName s"},
    {"Zembra_WorkFlowInstance_Main",
     "Zembra_ID id, Zembra_Flag i, WFI_InstanceID i, WFI_WorkFlowID i, WFI_WorkFlowStepID i, "
     "WFI_Status i, WFI_NeedUser i, WFI_Action i, WFI_Keeping i"},
    {"Zembra_WorkFlowInstance_Attribute", "WFIA_InstanceID i, WFIA_Name s"},
    {"Zembra_WorkFlowInstance_Handle", "Zembra_ID id, WFH_Name s"},
    {"Zembra_WFInstance_ExchangePermission",
     "EPWF_sID i, EPWF_rID i, EPWF_StartDate d, EPWF_EndDate d"},
    {"Zembra_ExchangePermission", "Exper_SID i, ExPer_RID i, ExPer_Para i"},
    {"Zembra_MyTask_Record",
     "Zembra_ID id, Zembra_Flag i, MT_UserID s, MT_Status i, MT_Topic s, MT_StartDate d, "
     "MT_PlanEndDate d"},
    {"Zembra_Temp_TarloTable",
     "TarloTable_ID id, TarloTable_SessionID s, TarloTable_SQLString s, TarloTable_SQLString2 s"},
    {"Zembra_Policy",
     "Policy_Name s, Policy_ParaA s, Policy_ParaB s, Policy_ParaC s, Policy_ParaD s, "
     "Policy_ParaE s, Policy_ParaF s"},
    {"Zembra_SubHelp", "SubHelp_ID id, SubHelp_FuncID i, SubHelp_title s, SubHelp_popup s"},
    {"Zembra_Functions", "Func_ID id, Func_MenuID i, Func_Action s"},
};

std::string kindOf(const tsql::Column& column) {
  if (column.isGenerated) return "c";
  if (column.isIdentity) return "id";
  switch (column.type.kind) {
    case tsql::Kind::Int:
      return "i";
    case tsql::Kind::Text:
      return "s";
    case tsql::Kind::Date:
      return "d";
    default:
      return "another kind";
  }
}

std::string describe(const tsql::Table& table) {
  std::string text;
  for (const tsql::Column& column : table.columns) {
    text += (text.empty() ? "" : ", ") + column.name + " " + kindOf(column);
  }
  return text;
}

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
        line += (i == 0 ? "" : "|") + textOrEmpty(set->value(i));
      }
      all.push_back(line);
    }
    return all;
  }
  static std::string textOrEmpty(const Variant& value) {
    return value.isNull() ? std::string() : toText(value);
  }

  static inline std::unique_ptr<database::Database> base_;
  static inline std::unique_ptr<database::Database> demo_;
};

using Lines = std::vector<std::string>;

TEST_F(Schema, EveryPlatformTableHasItsColumns) {
  database::Lease lease = base_->borrow();
  for (const TableCase& row : kTables) {
    const tsql::Table* table = lease->catalogue().findTable(row.table);
    ASSERT_NE(table, nullptr) << row.table;
    EXPECT_EQ(describe(*table), row.columns) << row.table;
  }
}

// A NULL in one of these columns would drop its row from every list.
TEST_F(Schema, ColumnsThatNoInsertNamesHaveDefaults) {
  const struct {
    const char* insert;
    const char* select;
    const char* expected;
  } cases[] = {
      {"insert Zembra_Query_Main(Query_Name) values('a')",
       "select Query_System,Query_MultiRel,Query_HasStatic,Query_IsDataAlert,Zembra_Flag "
       "from Zembra_Query_Main where Query_Name='a'",
       "0|0|0|0|1"},
      {"insert Zembra_Query_Field(QF_Name) values('a')",
       "select QF_System,Zembra_Flag,DATEDIFF(day,Zembra_CreateDate,getdate()),"
       "DATEDIFF(day,Zembra_ModiDate,getdate()) from Zembra_Query_Field where QF_Name='a'",
       "0|1|0|0"},
      {"insert Zembra_Query_Field_Ver2(QF_Name) values('a')",
       "select Zembra_Flag from Zembra_Query_Field_Ver2 where QF_Name='a'", "1"},
      {"insert Zembra_DataDict_Table(DDT_Name) values('a')",
       "select DDT_Status,Zembra_Flag,DDT_ID-Zembra_ID from Zembra_DataDict_Table "
       "where DDT_Name='a'",
       "0|1|0"},
      {"insert Zembra_DataDict_Field(DDF_Name) values('a')",
       "select DDF_Type,Zembra_Flag,DDF_ID-Zembra_ID from Zembra_DataDict_Field "
       "where DDF_Name='a'",
       "0|1|0"},
      {"insert Zembra_DataDict_Relation(DDR_MainTableName) values('a')",
       "select Zembra_Flag,DATEDIFF(day,Zembra_ModiDate,getdate()) from Zembra_DataDict_Relation "
       "where DDR_MainTableName='a'",
       "1|0"},
      {"insert Zembra_Permission(Permission_SubAction) values('a')",
       "select permission_forbid from Zembra_Permission where Permission_SubAction='a'", "0"},
      {"insert Zembra_MyTask_Record(MT_Topic) values('a')",
       "select Zembra_Flag from Zembra_MyTask_Record where MT_Topic='a'", "1"},
  };
  database::Lease lease = base_->borrow();
  for (const auto& row : cases) {
    lease->execute(row.insert);
    EXPECT_EQ(rows(*lease, row.select), Lines{row.expected}) << row.insert;
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

// Statistics look for a table's name anywhere in the list of tables that they have so far.
TEST_F(Schema, NoTableNameIsPartOfAnother) {
  database::Lease lease = demo_->borrow();
  EXPECT_EQ(rows(*lease,
                 "select a.DDT_Name from Zembra_DataDict_Table a,Zembra_DataDict_Table b "
                 "where a.Zembra_ID<>b.Zembra_ID and CHARINDEX(a.DDT_Name,b.DDT_Name)>0"),
            Lines{});
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

// Grouping reads field ids as 16-bit numbers.
TEST_F(Schema, DemoFieldIdsAreSmall) {
  database::Lease lease = demo_->borrow();
  EXPECT_EQ(rows(*lease, "select Zembra_ID from Zembra_DataDict_Field where Zembra_ID>32767"),
            Lines{});
}

}  // namespace
}  // namespace tarlo
