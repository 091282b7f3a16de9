// How a PostgreSQL connection runs statements together: each is a transaction of its own, all go
// out before the first answer is read.

#include <algorithm>

#include "database/postgresql/connection.h"
#include "variant/error_state.h"

namespace tarlo::database {

// Before anything is sent: what translating asks of the server must not come between. A statement
// that is refused is left out.
std::vector<PostgresqlConnection::Together> PostgresqlConnection::translateTogether(
    std::span<const std::string_view> statements) {
  std::vector<Together> together;
  ErrorState refusals;
  for (std::size_t i = 0; i < statements.size(); ++i) {
    refusals.run([&] {
      Asked asked{statements[i], {}};
      TranslationPtr translation = translationOf(asked);
      const tsql::Translation& made = translation->translation;
      const bool isOneRead = made.steps.size() == 1 && made.procedure.empty() &&
                             made.steps[0].role == tsql::StepRole::Rows;
      if (!isOneRead) return;
      std::vector<Ready> steps = bindSteps(made, asked, false);
      together.push_back({i, std::move(translation), std::move(steps)});
    });
  }
  return together;
}

std::vector<std::unique_ptr<Recordset>> PostgresqlConnection::openAll(
    std::span<const std::string_view> statements) {
  std::vector<std::unique_ptr<Recordset>> all(statements.size());
  for (std::size_t begin = 0; begin < statements.size() && !inTransaction_;
       begin += kMostTogether) {
    beginCall();
    const auto some = statements.subspan(begin, std::min(kMostTogether, statements.size() - begin));
    const std::vector<Together> together = translateTogether(some);
    if (together.empty()) continue;
    ready();
    startExchange(false);
    if (!sent_.empty()) {
      sync();
      receive(false);
    }
    for (const Together& each : together) {
      sendCheck(*each.translation);
      sendStep(each.translation, each.steps[0], true);
      sync();
    }
    for (const Together& each : together) {
      Answer answer = receive(false, Until::Sync);
      if (answer.error) continue;
      all[begin + each.index] = std::make_unique<PostgresqlRecordset>(
          *this, each.translation, std::move(answer.rows), false);
    }
  }
  // What was not sent, and what failed: it fails again, with its own error, or meets the tables as
  // they are now.
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!all[i]) all[i] = open(statements[i]);
  }
  return all;
}

}  // namespace tarlo::database
