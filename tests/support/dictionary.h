#pragma once
// A database file with the dictionary of a small business, its data and the scheme tables, and a
// page context on it. Ids are fixed, so that tests can name them.

#include <string>
#include <string_view>

#include "support/database_page.h"
#include "support/errors.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::testing {

// The keys are plain numbers here, not identities, since the rows bring their own.
inline constexpr std::string_view kDictionaryTables = R"sql(
CREATE TABLE Zembra_DataDict_Table (Zembra_ID int, DDT_Name nvarchar(128),
  DDT_CName nvarchar(128), DDT_DirID int, DDT_Status int DEFAULT 0, Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Zembra_DataDict_Field (Zembra_ID int, DDF_TableID int,
  DDF_Name nvarchar(128), DDF_CName nvarchar(128), DDF_Type int DEFAULT 0,
  Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Zembra_DataDict_Relation (Zembra_ID int, DDR_MainTableID int,
  DDR_MainFieldID int, DDR_RelationTableID int, DDR_RelationFieldID int, Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Zembra_Query_Main (Query_ID int, Query_Name nvarchar(200),
  Query_Desc nvarchar(max), Query_Fields nvarchar(max), Query_MainTBID int,
  Query_Vir nvarchar(max), Query_Rel nvarchar(max), Query_Static nvarchar(max),
  Query_Group nvarchar(2000), Query_MultiRelSel nvarchar(2000), Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Zembra_Query_Field_Ver2 (Zembra_ID int, QF_ID int, QF_NameID int)
GO
)sql";

inline constexpr std::string_view kBusinessTables = R"sql(
CREATE TABLE Orders (ID int, Amount decimal(18,2), CustID int, ShipTo int,
  Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Customer (ID int, City nvarchar(50), RegionID int,
  Zembra_Flag int DEFAULT 1)
GO
CREATE TABLE Region (ID int, Name nvarchar(50), Zembra_Flag int DEFAULT 1)
GO
insert into Orders (ID,Amount,CustID,ShipTo) values (1,600,1,2),(2,400,1,1),(3,900,2,1)
GO
insert into Customer (ID,City,RegionID) values (1,'Paris',1),(2,'Lyon',2)
GO
insert into Region (ID,Name) values (1,'North'),(2,'South')
GO
)sql";

inline constexpr std::string_view kDictionaryRows = R"sql(
insert into Zembra_DataDict_Table (Zembra_ID,DDT_Name,DDT_CName) values
  (10,'Orders','Order'),(11,'Customer','Client'),(12,'Region','Area')
GO
insert into Zembra_DataDict_Field (Zembra_ID,DDF_TableID,DDF_Name,DDF_CName,DDF_Type) values
  (100,10,'ID','Key',1),(101,10,'Amount','Sum',3),(102,10,'CustID','Cust',2),
  (103,10,'ShipTo','Ship',2),(110,11,'ID','Key',1),(111,11,'City','Town',4),
  (120,12,'ID','Key',1),(121,12,'Name','Name',4)
GO
insert into Zembra_DataDict_Relation (Zembra_ID,DDR_MainTableID,DDR_MainFieldID,
  DDR_RelationTableID,DDR_RelationFieldID) values
  (5,10,102,11,110),(6,10,103,11,110),(7,11,110,12,120)
GO
)sql";

class DictionaryDatabase : public DatabasePage {
 public:
  DictionaryDatabase() {
    for (std::string_view script : {kDictionaryTables, kBusinessTables, kDictionaryRows}) {
      runScript(script);
    }
  }

  // Adds a live field of an ordinary kind.
  void addField(int id, int table, std::string_view name, std::string_view display) {
    execute(
        "insert into Zembra_DataDict_Field (Zembra_ID,DDF_TableID,DDF_Name,DDF_CName) values (" +
        std::to_string(id) + "," + std::to_string(table) + ",'" + std::string(name) + "','" +
        std::string(display) + "')");
  }
  void addTable(int id, std::string_view name, std::string_view display) {
    execute("insert into Zembra_DataDict_Table (Zembra_ID,DDT_Name,DDT_CName) values (" +
            std::to_string(id) + ",'" + std::string(name) + "','" + std::string(display) + "')");
  }
  void addRelation(int id, int mainTable, int mainField, int relationTable, int relationField) {
    execute(
        "insert into Zembra_DataDict_Relation (Zembra_ID,DDR_MainTableID,DDR_MainFieldID,"
        "DDR_RelationTableID,DDR_RelationFieldID) values (" +
        std::to_string(id) + "," + std::to_string(mainTable) + "," + std::to_string(mainField) +
        "," + std::to_string(relationTable) + "," + std::to_string(relationField) + ")");
  }
  // Marks a dictionary row as deleted; `what` is Table, Field or Relation.
  void remove(std::string_view what, int id) {
    execute("update Zembra_DataDict_" + std::string(what) +
            " set Zembra_Flag=0 where Zembra_ID=" + std::to_string(id));
  }
};

// A rows table on one line: cells joined by ",", rows by " | "; "Null" and "Empty" for these.
inline std::string textOf(const Variant& value) {
  if (value.isNull()) return "Null";
  if (value.isEmpty()) return "Empty";
  if (!value.isArray()) return variant::toText(value);
  const Array& cells = value.array();
  std::string text;
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    if (row > 0) text += " | ";
    for (std::ptrdiff_t column = 0; column <= cells.upperBound(1); ++column) {
      if (column > 0) text += ",";
      text += cells.at(column, row).isNull() ? "Null" : variant::toText(cells.at(column, row));
    }
  }
  return text;
}

}  // namespace tarlo::testing
