#pragma once
// A statement that was refused for what it touches, as a line of the log: with the request, the
// user and the operation, since nobody else is told by what the operation makes of it. And the
// first one that the database could not take, for the request's end.

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

  // Nothing when the database took every statement that mattered.
  const std::optional<database::DatabaseError>& outage() const { return outage_; }

 private:
  const Visit& visit_;
  spdlog::logger& log_;
  std::optional<database::DatabaseError> outage_;
};

}  // namespace tarlo::host
