#pragma once
// What the database tests share: a folder of their own, a foreign user of the same file, and rows
// as text.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <string>

#include "database/database.h"
#include "support/temporary_folder.h"
#include "variant/convert.h"

namespace tarlo::database::test {

class TempFolder : public testing::TemporaryFolder {
 public:
  std::string file(const std::string& name = "test.db") const { return (path() / name).string(); }
};

// Another program that has the file open.
class Foreigner {
 public:
  explicit Foreigner(const std::string& file) {
    EXPECT_EQ(sqlite3_open(file.c_str(), &handle_), SQLITE_OK);
    sqlite3_busy_timeout(handle_, 5000);
  }
  ~Foreigner() { sqlite3_close(handle_); }
  Foreigner(const Foreigner&) = delete;
  Foreigner& operator=(const Foreigner&) = delete;

  void run(const std::string& sql) {
    EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sql << ": " << sqlite3_errmsg(handle_);
  }
  // That column of all rows.
  std::string column(const std::string& sql, int index) {
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << sql << ": " << sqlite3_errmsg(handle_);
    std::string all;
    while (sqlite3_step(statement) == SQLITE_ROW) {
      all += reinterpret_cast<const char*>(sqlite3_column_text(statement, index));
    }
    sqlite3_finalize(statement);
    return all;
  }

 private:
  sqlite3* handle_ = nullptr;
};

// "i1" for an integer, "I" for one of 64 bits, "f" double, "n" decimal, "t" text, "d" date.
inline std::string cellText(const Variant& value) {
  using enum variant::State;
  for (const auto& [state, letter] :
       {std::pair{Int32, 'i'}, std::pair{Int64, 'I'}, std::pair{Double, 'f'},
        std::pair{Decimal, 'n'}, std::pair{Text, 't'}, std::pair{Date, 'd'}}) {
    if (value.state() == state) return letter + variant::toText(value);
  }
  return value.isNull() ? "null" : "?";
}

// Cells parted by ",", rows by "|".
inline std::string rowsText(Recordset& rows) {
  std::string text;
  for (; !rows.atEnd(); rows.moveNext()) {
    if (!text.empty()) text += '|';
    for (std::size_t i = 0; i < rows.fieldCount(); ++i) {
      if (i > 0) text += ',';
      text += cellText(rows.value(i));
    }
  }
  return text;
}

inline std::string ask(Connection& connection, std::string_view sql) {
  return rowsText(*connection.open(sql));
}

inline void executeAll(Connection& connection, std::initializer_list<std::string> statements) {
  for (const std::string& sql : statements) connection.execute(sql);
}

// The error of a call; fails the test when there is none.
template <class Call>
DatabaseError errorOf(Call&& call) {
  try {
    call();
  } catch (const DatabaseError& error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return DatabaseError(0, "", {});
}

}  // namespace tarlo::database::test
