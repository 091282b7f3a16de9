#pragma once
// A database as a pool of connections; an engine adds how one is made. What all connections of a
// database share lives here as well: the translations and the procedures.

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "database/database.h"
#include "database/procedures.h"
#include "database/translation_cache.h"

namespace tarlo::database {

class PooledConnection : public Connection {
 public:
  // Whether it failed so that it must not be used again: damaged file, failed reads or writes.
  virtual bool isLost() const = 0;
  // As new: open transaction rolled back, IDENTITY_INSERT off, no DDL, the default time-out.
  virtual void reset() noexcept = 0;
};

class PooledDatabase : public Database {
 public:
  explicit PooledDatabase(const OpenOptions& options) : options_(options) {}

  Lease borrow() override;
  void addProcedure(std::string name, Procedure procedure) override;

 protected:
  // Throws DatabaseError. Called without any lock held.
  virtual std::unique_ptr<PooledConnection> connect() = 0;
  void giveBack(std::unique_ptr<Connection> connection) noexcept override;
  // Ends the connections that nobody has borrowed: for engines whose connections use what goes
  // before this object does.
  void closeIdle() noexcept { idle_.clear(); }

  OpenOptions options_;
  ProcedureTable procedures_;
  TranslationCache translations_;

 private:
  class Slot;

  std::mutex mutex_;
  std::condition_variable freed_;
  std::size_t made_ = 0;  // borrowed, idle or about to be made
  // Last, since connections refer to the procedures and the translations.
  std::vector<std::unique_ptr<PooledConnection>> idle_;
};

}  // namespace tarlo::database
