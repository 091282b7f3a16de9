#pragma once
// The platform's own tables, as the product makes them, with the small business of dictionary.h in
// them, and a page context on it.

#include <string>

#include "frame/data.h"
#include "support/dictionary.h"
#include "support/schema_files.h"
#include "support/text.h"
#include "text/pieces.h"

namespace tarlo::testing {

class PlatformDatabase : public DatabasePage {
 public:
  PlatformDatabase() {
    for (const std::string& script : platformTables()) runScript(script);
    runScript(schemaFile("tables/90_base_rows.sql"));
    runScript(kBusinessTables);
    runScript(numbered(kDictionaryRows));
    execute("update Zembra_DataDict_Table set DDT_DirID=7");
    execute("insert into Zembra_Dict_TableDir (TD_Name) values ('Sales')");
    local().session()["usrid"] = 1;
    local().session()["usrICID"] = 101;
    local().application()["designerExtras"] = false;
  }

  void setApplication(const std::string& key, const Variant& value) {
    local().application()[key] = value;
  }
  std::string rows(std::string_view sql) { return textOf(frame::rows(page(), sql).table()); }
  // A scheme over Orders (table 10) with these definition strings; gives its id.
  std::string addScheme(const std::string& name, const std::string& columns,
                        const std::string& values) {
    execute("insert into Zembra_Query_Main (Query_Name,Query_MainTBID,Query_Prikey," + columns +
            ") values ('" + name + "',10,'100'," + values + ")");
    return rows("select max(Query_ID) from Zembra_Query_Main");
  }
  const std::string& written() { return local().written(); }

 private:
  // The rows bring their own numbers, which the platform's tables give themselves otherwise.
  static std::string numbered(std::string_view script) {
    std::string text;
    for (const std::string_view batch : text::split(script, "GO\n")) {
      const std::size_t at = batch.find("insert into ");
      if (at == std::string_view::npos) continue;
      const std::string table(batch.substr(at + 12, batch.find(' ', at + 12) - at - 12));
      text += "SET IDENTITY_INSERT " + table + " ON\nGO\n" + std::string(batch) +
              "\nGO\nSET IDENTITY_INSERT " + table + " OFF\nGO\n";
    }
    return text;
  }
};

inline std::string logTable() {
  return std::string(frame::kLogTable);
}

}  // namespace tarlo::testing
