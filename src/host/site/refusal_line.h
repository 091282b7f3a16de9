#pragma once
// A statement that was refused for what it touches, as a line of the log: with the request, the
// user and the operation, since nobody else is told by what the operation makes of it.

#include <spdlog/logger.h>

#include "database/statement_context.h"

namespace tarlo::host {

class Visit;

class RefusalLine : public database::RefusalLog {
 public:
  // Both outlive it.
  RefusalLine(const Visit& visit, spdlog::logger& log) : visit_(visit), log_(log) {}
  void refused(std::string_view statement, std::string_view reason) noexcept override;

 private:
  const Visit& visit_;
  spdlog::logger& log_;
};

}  // namespace tarlo::host
