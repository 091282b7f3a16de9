#pragma once
// The engines that a suite runs on, an empty database of one for each test, and another program
// that uses the same database.

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <memory>
#include <string>
#include <vector>

#include "database/database.h"
#include "support/temporary_folder.h"

namespace tarlo::database::test {

enum class Engine { Sqlite, Postgresql };

// All, or what TARLO_ENGINES names ("sqlite", "postgresql").
std::vector<Engine> engines();
std::string nameOf(const ::testing::TestParamInfo<Engine>& info);

// Another program, in the engine's own words. Where SQLite and PostgreSQL differ, it is given
// SQLite's: a table's AUTOINCREMENT key becomes PostgreSQL's, a PRAGMA is not for it.
class Other {
 public:
  virtual ~Other() = default;
  virtual void run(const std::string& sql) = 0;
};

class TestDatabase {
 public:
  // Throws where the engine's server is not there.
  explicit TestDatabase(Engine engine);
  const std::string& connection() const { return connection_; }
  std::unique_ptr<Database> open(OpenOptions options = {}) const;
  std::unique_ptr<Other> other() const;
  // Of SQLite.
  std::string file() const { return connection_.substr(std::string("sqlite:").size()); }
  Engine engine() const { return engine_; }

 private:
  Engine engine_;
  std::unique_ptr<testing::TemporaryFolder> folder_;  // of SQLite
  std::string connection_;
};

// A suite of tests that hold on every engine. `database` is empty when a test begins.
class OnEveryEngine : public ::testing::TestWithParam<Engine> {
 protected:
  bool isSqlite() const { return GetParam() == Engine::Sqlite; }
  const TestDatabase home_{GetParam()};
};

// The answer of a server to one statement, for tests that look behind the product.
class Server {
 public:
  explicit Server(const std::string& connection) : handle_(PQconnectdb(connection.c_str())) {}
  ~Server() { PQfinish(handle_); }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;
  bool isUp() const { return PQstatus(handle_) == CONNECTION_OK; }
  // The first field of the first row, "" when there is none; a failing statement fails the test.
  std::string ask(const std::string& sql);

 private:
  PGconn* handle_;
};

// What tools/with_postgresql gives to the program. Throws where it is not set.
std::string serverConnection();
// The same server, another database.
std::string withDatabase(const std::string& connection, const std::string& name);

}  // namespace tarlo::database::test

#define TARLO_ON_EVERY_ENGINE(suite) \
  INSTANTIATE_TEST_SUITE_P(, suite, ::testing::ValuesIn(engines()), nameOf)
