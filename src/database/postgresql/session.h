#pragma once
// The conversation with a server: commands are queued and sent together, results come in their
// order, and waiting for them ends with the deadline. A statement is ended by asking the server to
// cancel it; a server that does not answer that loses the connection.

#include <memory>
#include <span>
#include <string>

#include "database/deadline.h"
#include "database/error.h"
#include "database/postgresql/handle.h"

namespace tarlo::database {

class PostgresqlSession {
 public:
  // The handle is in pipeline mode and does not block; the deadline outlives the session.
  PostgresqlSession(PostgresqlHandle handle, Deadline& deadline)
      : handle_(std::move(handle)), deadline_(deadline) {}
  ~PostgresqlSession();
  PostgresqlSession(const PostgresqlSession&) = delete;
  PostgresqlSession& operator=(const PostgresqlSession&) = delete;

  // Queue a command. Commands up to a sync() are one transaction, unless one is open already.
  void prepare(const std::string& name, const std::string& text, std::span<const Oid> types);
  void run(const std::string& name, std::span<const char* const> values);
  void query(const std::string& text, std::span<const char* const> values = {});
  void sync();
  // The command whose results come next gives them row by row.
  void oneByOne() { PQsetSingleRowMode(handle_.get()); }

  // The next result of the command at the front; nothing at its end. Of a sync there is one result
  // and no end. Throws DatabaseError when the connection is lost, and never for a statement.
  PostgresqlResult next();

  // Whether a result is there, or comes within the time.
  bool hasResult(std::chrono::milliseconds within);
  // Asks the server to end what it is doing; what it still sends must be read.
  void cancel();
  // Whether the statement was cancelled for the deadline since the last settle().
  bool wasEnded() const { return isEnded_; }
  // Everything sent has been answered: the next exchange may begin. Throws when a cancel is still
  // under way and does not come to its end.
  void settle();

  // Whether the server has hung up, found without asking it anything.
  bool isDead();
  bool isLost() const { return isLost_; }
  void lose() { isLost_ = true; }
  // Gives the server its place back.
  void hangUp() {
    isLost_ = true;
    handle_.reset();
  }
  bool isInTransaction() const;
  bool isTransactionFailed() const { return PQtransactionStatus(handle_.get()) == PQTRANS_INERROR; }
  PGconn* handle() const { return handle_.get(); }

 private:
  class Canceller;
  using Clock = Deadline::Clock;

  void check(int sent);
  void wait();
  [[noreturn]] void breakOff(std::string text);
  std::string errorText() const;

  PostgresqlHandle handle_;
  Deadline& deadline_;
  std::shared_ptr<Canceller> canceller_;
  Clock::time_point giveUp_;
  bool isEnded_ = false;
  bool isLost_ = false;
};

}  // namespace tarlo::database
