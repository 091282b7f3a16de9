#pragma once
// One physical connection to a database server or file. Statements are T-SQL; what the engine gets
// is the translation's business. Not thread-safe: one thread at a time uses a connection; the pool
// hands them out.

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "database/error.h"
#include "database/recordset.h"
#include "database/statement_context.h"
#include "tsql/catalogue.h"
#include "tsql/translation.h"

namespace tarlo::database {

class Connection {
 public:
  virtual ~Connection() = default;

  // Runs the statement until its first row is there, and reads no more; that is enough for a
  // conversion error of the first row to show. Writes are done when it returns, each its own commit
  // unless a transaction is open. Throws DatabaseError; a refused statement has changed nothing.
  virtual void execute(std::string_view sql) = 0;

  // Runs the statement and gives its rows. A statement without rows gives a recordset without
  // fields, at its end, except an INSERT into a table with an identity column: it gives one row
  // with the new identity, so that a caller who expects a key from an insert finds it.
  virtual std::unique_ptr<Recordset> open(std::string_view sql) = 0;

  // The rows of several statements that do not depend on each other, in their order. An engine with
  // a server sends what only reads together, kMostTogether at a time, and reads all rows into
  // memory; the others run after them as by open(). Throws as open() does.
  virtual std::vector<std::unique_ptr<Recordset>> openAll(
      std::span<const std::string_view> statements);
  static constexpr std::size_t kMostTogether = 64;

  // The engine's text of the statement, one line a step, for people.
  virtual std::string explainTranslation(std::string_view sql) = 0;

  // What the statement is made of, from the catalogue as it is now. Valid until the next call on
  // this connection.
  virtual tsql::Catalogue& catalogue() = 0;

  // Makes everything until commit() one unit. Leaving without commit() rolls back.
  class Transaction {
   public:
    explicit Transaction(Connection& connection) : connection_(connection) { connection_.begin(); }
    ~Transaction() {
      if (!done_) connection_.rollback();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit() {
      connection_.commit();
      done_ = true;
    }

   private:
    Connection& connection_;
    bool done_ = false;
  };

  // CREATE TABLE and CREATE INDEX are refused unless allowed; data procedures never allow them.
  virtual void allowDdl(bool allowed) = 0;
  // For whom the statements run from here on: what they may touch and cost. The context outlives
  // the loan; nothing, as after the borrowing, allows everything. Data procedures always give one.
  virtual void setContext(const StatementContext* context) = 0;
  // Longest run of one call; 0 = no limit. 30 s when the connection is made, an ADO command's own
  // default.
  virtual void setCommandTimeout(std::chrono::milliseconds timeout) = 0;

 protected:
  friend class Transaction;
  virtual void begin() = 0;
  virtual void commit() = 0;
  virtual void rollback() noexcept = 0;
};

// A procedure that EXEC may call on engines without stored procedures: gets the input arguments,
// gives the value of the one OUT argument. Runs on the connection's thread.
using Procedure = std::function<Variant(std::span<const Variant> arguments)>;

}  // namespace tarlo::database
