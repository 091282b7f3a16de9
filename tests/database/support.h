#pragma once
// What the database tests share: a folder of their own, a foreign user of the same file, and rows
// as text.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <string>

#include "database/database.h"
#include "variant/convert.h"

namespace tarlo::database::test {

class TempFolder {
 public:
  TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tarlo-db-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
  }
  ~TempFolder() { std::filesystem::remove_all(folder_); }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string file(const std::string& name = "test.db") const { return (folder_ / name).string(); }
  const std::filesystem::path& path() const { return folder_; }

 private:
  std::filesystem::path folder_;
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

 private:
  sqlite3* handle_ = nullptr;
};

// "i1" for an integer, "I" for one of 64 bits, "f" double, "n" decimal, "t" text, "d" date.
inline std::string cellText(const Variant& value) {
  switch (value.state()) {
    case variant::State::Null:
      return "null";
    case variant::State::Int32:
      return "i" + variant::toText(value);
    case variant::State::Int64:
      return "I" + variant::toText(value);
    case variant::State::Double:
      return "f" + variant::toText(value);
    case variant::State::Decimal:
      return "n" + variant::toText(value);
    case variant::State::Date:
      return "d" + variant::toText(value);
    case variant::State::Text:
      return "t" + value.text();
    default:
      return "?";
  }
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
