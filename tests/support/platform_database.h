#pragma once
// The platform's own tables, as the product makes them, with the small business of dictionary.h in
// them, and a page context on it.

#include <fstream>
#include <sstream>
#include <string>

#include "frame/operate_log.h"
#include "support/dictionary.h"
#include "variant/text.h"

namespace tarlo::testing {

class PlatformDatabase {
 public:
  PlatformDatabase()
      : connectionString_("sqlite:" + (folder_.path() / "wizard.db").string()),
        page_(databases_, connectionString_) {
    database::OpenOptions options;
    options.create = true;
    const auto database = database::openDatabase(connectionString_, options);
    auto connection = database->borrow();
    connection->allowDdl(true);
    for (const char* name : {"10_schemes.sql", "20_dictionary.sql", "30_organisation.sql",
                             "40_workflow.sql", "50_services.sql", "90_base_rows.sql"}) {
      std::ifstream file(std::string(TARLO_TEST_DATA) + "/../../schema/tables/" + name);
      std::stringstream text;
      text << file.rdbuf();
      database::runScript(*connection, text.str());
    }
    database::runScript(*connection, kBusinessTables);
    database::runScript(*connection, numbered(kDictionaryRows));
    connection->execute("update Zembra_DataDict_Table set DDT_DirID=7");
    connection->execute("insert into Zembra_Dict_TableDir (TD_Name) values ('Sales')");
    page_.session()["usrid"] = 1;
    page_.session()["usrICID"] = 101;
    page_.application()["designerExtras"] = false;
  }

  Page& page() { return page_.page(); }
  void ask(std::string_view key, const Variant& value) {
    page_.request()[std::string(key)] = value;
  }
  void setApplication(const std::string& key, const Variant& value) {
    page_.application()[key] = value;
  }
  void execute(std::string_view sql) { frame::execSQL(page(), Variant(sql)); }
  std::string rows(std::string_view sql) {
    return textOf(frame::execSQLRows(page(), Variant(sql)));
  }
  // A scheme over Orders (table 10) with these definition strings; gives its id.
  std::string addScheme(const std::string& name, const std::string& columns,
                        const std::string& values) {
    execute("insert into Zembra_Query_Main (Query_Name,Query_MainTBID,Query_Prikey," + columns +
            ") values ('" + name + "',10,'100'," + values + ")");
    return rows("select max(Query_ID) from Zembra_Query_Main");
  }
  const std::string& written() const { return page_.written(); }
  template <class Step>
  std::string writtenBy(Step&& step) {
    const std::size_t before = page_.written().size();
    step();
    return page_.written().substr(before);
  }

 protected:
  frame::LocalPage& local() { return page_; }

 private:
  // The rows bring their own numbers, which the platform's tables give themselves otherwise.
  static std::string numbered(std::string_view script) {
    std::string text;
    for (const std::string_view batch : variant::split(script, "GO\n")) {
      const std::size_t at = batch.find("insert into ");
      if (at == std::string_view::npos) continue;
      const std::string table(batch.substr(at + 12, batch.find(' ', at + 12) - at - 12));
      text += "SET IDENTITY_INSERT " + table + " ON\nGO\n" + std::string(batch) +
              "\nGO\nSET IDENTITY_INSERT " + table + " OFF\nGO\n";
    }
    return text;
  }

  TemporaryFolder folder_;
  std::string connectionString_;
  database::Registry databases_;
  frame::LocalPage page_;
};

inline std::string logTable() {
  return std::string(frame::kLogTable);
}

inline bool holds(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

// The text between two marks, the first of them included; "" when one is missing.
inline std::string between(const std::string& text, std::string_view from, std::string_view to) {
  const std::size_t begin = text.find(from);
  if (begin == std::string::npos) return "";
  const std::size_t end = text.find(to, begin + from.size());
  return end == std::string::npos ? "" : text.substr(begin, end - begin);
}

}  // namespace tarlo::testing
