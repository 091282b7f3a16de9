#pragma once
// A dictionary to measure on: 1000 tables of 30 fields, table 1 related to the tables 2 to 10, in a
// database file of its own that goes with the object.

#include <filesystem>
#include <memory>
#include <string>

#include "database/database.h"
#include "frame/local_page.h"

struct sqlite3;

namespace tarlo::bench {

inline constexpr int kTables = 1000;
inline constexpr int kFieldsPerTable = 30;
inline constexpr const char* kRelations = "1,2,3,4,5,6,7,8,9";

class Dictionary {
 public:
  // With `businessTables` the 1000 tables exist physically too, so the file's schema is large.
  explicit Dictionary(bool businessTables);
  ~Dictionary();
  Dictionary(const Dictionary&) = delete;
  Dictionary& operator=(const Dictionary&) = delete;

  const std::string& file() const { return file_; }
  Page& page() { return page_->page(); }
  database::Registry& databases() { return databases_; }
  std::string connectionString() const { return "sqlite:" + file_; }

 private:
  std::string file_;
  database::Registry databases_;
  std::unique_ptr<frame::LocalPage> page_;
};

// A raw handle with the settings that connections use, for the floors. The caller closes it.
sqlite3* openRaw(const std::string& file);

}  // namespace tarlo::bench
