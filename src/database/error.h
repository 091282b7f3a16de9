#pragma once
// A failed database call. Users never see its text; the log does.

#include <string>
#include <string_view>

#include "tsql/error.h"
#include "variant/runtime_error.h"

namespace tarlo::database {

// Numbers follow ADO: a refused or failing statement, a lost or unopenable database, a time-out.
inline constexpr int kStatementFailed = -2147217900;   // 0x80040E14
inline constexpr int kConnectionFailed = -2147467259;  // 0x80004005
inline constexpr int kTimeout = -2147217871;           // 0x80040E31
inline constexpr int kConstraint = -2147217873;        // 0x80040E2F
inline constexpr int kForbidden = -2147217911;         // 0x80040E09, permission denied
inline constexpr int kCancelled = -2147217842;         // 0x80040E4E: nobody waits for the rows
// Rows beyond what one operation may hold, and beyond what all of them together may.
inline constexpr int kTooManyRows = -2147217883;    // 0x80040E25, row limit exceeded
inline constexpr int kNoRoomForRows = -2147024882;  // 0x8007000E, out of memory
// 0x8004D016, the transaction is in doubt: the connection broke before the server answered a
// commit, or a write that is its own. It is done or not done; who sends it again must look first.
inline constexpr int kOutcomeUnknown = -2147168234;
inline constexpr int kNoSuchField = 3265;  // item not found in the collection

// Why a database could not take a statement that is right in itself. But for Unknown it was not
// done; sent again later it may be.
enum class Outage {
  None,
  Busy,     // locked by somebody else for too long, or no connection free
  Full,     // no room on the disk
  Gone,     // what was opened is no longer in its place
  Failing,  // reading or writing fails, or is not allowed
  Unknown   // it may have been done: see kOutcomeUnknown
};

class DatabaseError : public RuntimeError {
 public:
  struct Native {
    // "sqlite" or "postgresql"; "tsql" for a statement that the front end refused; "pool" when no
    // connection was free; "" for a connection string that names no known engine.
    std::string engine;
    int code = 0;          // the engine's own (extended) code, 0 where there is none
    std::string sqlState;  // five characters; "42000" for a refused statement
    std::string text;      // the engine's own message
    // What was being run, at most kMaxStatementBytes of it; "" for a failure outside a statement.
    // While rows are read it is the engine's text with its values.
    std::string statement = {};
    Outage outage = Outage::None;
  };
  static constexpr std::size_t kMaxStatementBytes = 4000;

  DatabaseError(int number, std::string description, Native native)
      : RuntimeError(number, std::move(description), "database"), native_(std::move(native)) {}

  const Native& native() const { return native_; }
  // Cuts between characters.
  void setStatement(std::string_view statement);

 private:
  Native native_;
};

// What the front end refused, as a database error: its message with the position, state 42000.
DatabaseError refusedStatement(const tsql::StatementError& error);

}  // namespace tarlo::database
