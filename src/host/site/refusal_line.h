#pragma once
// A statement that was refused for what it touches, as a line of the log: with the request, the
// user and the operation, since nobody else is told by what the operation makes of it. And the
// statements that failed in another way, for the request's end.

#include <spdlog/logger.h>

#include <optional>

#include "database/statement_context.h"

namespace tarlo::host {

class Visit;

class RefusalLine : public database::RefusalLog {
 public:
  // Both outlive it.
  RefusalLine(const Visit& visit, spdlog::logger& log) : visit_(visit), log_(log) {}
  void refused(std::string_view statement, std::string_view reason) noexcept override;
  void failed(const database::DatabaseError& error) noexcept override;

  // The first failure of a statement that mattered; one that an answer must tell comes before those
  // of which the operation knows better: an outage, or a statement that took too long.
  const std::optional<database::DatabaseError>& failure() const { return failure_; }
  static bool mustBeTold(const database::DatabaseError& error);

 private:
  const Visit& visit_;
  spdlog::logger& log_;
  std::optional<database::DatabaseError> failure_;
};

}  // namespace tarlo::host
