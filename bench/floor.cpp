#include "floor.h"

#include <stdexcept>

#include "dictionary.h"

namespace tarlo::bench {

FloorStatement::FloorStatement(sqlite3* handle, const std::string& sql) {
  if (sqlite3_prepare_v2(handle, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK) {
    throw std::runtime_error(std::string(sqlite3_errmsg(handle)) + ": " + sql);
  }
}

std::vector<std::vector<std::string>> FloorStatement::rows(int number) {
  std::vector<std::vector<std::string>> result;
  for (int i = sqlite3_bind_parameter_count(statement_); i > 0; --i)
    sqlite3_bind_int(statement_, i, number);
  while (sqlite3_step(statement_) == SQLITE_ROW) {
    auto& row = result.emplace_back();
    const int columns = sqlite3_column_count(statement_);
    row.reserve(static_cast<std::size_t>(columns));
    for (int i = 0; i < columns; ++i) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, i));
      row.emplace_back(text ? text : "");
    }
  }
  sqlite3_reset(statement_);
  return result;
}

std::string fieldNameSql() {
  return "SELECT t.DDT_Name,t.DDT_CName,f.DDF_Name,f.DDF_CName,"
         "CASE WHEN f.DDF_Type IN (1,10,11,12,13,14) THEN 1 ELSE 0 END,t.Zembra_ID,"
         "CASE WHEN f.DDF_Type=1 THEN 1 ELSE 0 END "
         "FROM Zembra_DataDict_Table t,Zembra_DataDict_Field f "
         "WHERE f.Zembra_Flag=1 AND t.Zembra_Flag=1 AND t.Zembra_ID=f.DDF_TableID AND "
         "f.Zembra_ID=?1";
}

std::string tableNameSql() {
  return "SELECT DDT_Name,DDT_CName FROM Zembra_DataDict_Table WHERE Zembra_Flag=1 AND "
         "Zembra_ID=?1";
}

std::string fieldIdsSql() {
  return "SELECT Zembra_ID FROM Zembra_DataDict_Field WHERE Zembra_Flag=1 AND DDF_TableID=?1";
}

namespace {

std::string directRelationsSql() {
  const std::string chosen = std::string(" AND Zembra_ID IN (") + kRelations + ")";
  return "SELECT "
         "DDR_RelationTableID,DDR_RelationFieldID,DDR_MainFieldID,DDR_RelationTableID,DDR_"
         "RelationFieldID,0 "
         "FROM Zembra_DataDict_Relation WHERE DDR_MainTableID=?1" +
         chosen +
         " UNION SELECT "
         "DDR_MainTableID,DDR_MainFieldID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID,0 "
         "FROM Zembra_DataDict_Relation WHERE DDR_RelationTableID=?1" +
         chosen + " ORDER BY 1,2,3,4,5,6";
}

std::string farRelationsSql() {
  return std::string(
             "SELECT DDR_RelationTableID,DDR_RelationFieldID,DDR_MainTableID,DDR_MainFieldID "
             "FROM Zembra_DataDict_Relation WHERE DDR_MainTableID<>?1 AND DDR_RelationTableID<>?1 "
             "AND Zembra_ID IN (") +
         kRelations + ")";
}

}  // namespace

std::string joinedSql() {
  const std::string ends = std::string(
                               "SELECT ?1 UNION SELECT DDR_MainTableID FROM "
                               "Zembra_DataDict_Relation WHERE Zembra_ID IN (") +
                           kRelations +
                           ") UNION SELECT DDR_RelationTableID FROM Zembra_DataDict_Relation WHERE "
                           "Zembra_ID IN (" +
                           kRelations + ")";
  return "SELECT t.Zembra_ID,t.DDT_Name,t.DDT_CName,f.Zembra_ID,f.DDF_Name,f.DDF_CName "
         "FROM Zembra_DataDict_Table t JOIN Zembra_DataDict_Field f ON f.DDF_TableID=t.Zembra_ID "
         "WHERE t.Zembra_Flag=1 AND f.Zembra_Flag=1 AND t.Zembra_ID IN (" +
         ends + ")";
}

CompileFloor::CompileFloor(sqlite3* handle)
    : fieldName_(handle, fieldNameSql()),
      tableName_(handle, tableNameSql()),
      fieldIds_(handle, fieldIdsSql()),
      farRelations_(handle, farRelationsSql()),
      directRelations_(handle, directRelationsSql()) {}

int CompileFloor::run() {
  int lookUps = 3;
  tableName_.rows(1);
  farRelations_.rows(1);
  const auto oneTable = [&](int table) {
    tableName_.rows(table);
    lookUps += 2;
    for (const auto& field : fieldIds_.rows(table)) {
      fieldName_.rows(std::stoi(field[0]));
      ++lookUps;
    }
  };
  for (const auto& row : directRelations_.rows(1)) {
    fieldName_.rows(std::stoi(row[1]));
    fieldName_.rows(std::stoi(row[2]));
    lookUps += 2;
    oneTable(std::stoi(row[0]));
  }
  oneTable(1);
  return lookUps;
}

}  // namespace tarlo::bench
