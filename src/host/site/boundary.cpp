#include "host/site/boundary.h"

#include "database/error.h"
#include "host/api/api.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"

namespace tarlo::host {

namespace {

// The end of a page that was called for is no failure: what stands written is the page. A refusal
// is an answer as well.
void runToItsEnd(Visit& visit, spdlog::logger& log, const std::function<void()>& work) {
  try {
    work();
  } catch (const frame::PageEnd&) {
  } catch (const ApiError& error) {
    log.info("{} {} refused: {}", visit.wire.id, logText(visit.what), error.code);
    if (!visit.response.isFlushed()) writeApiError(visit, error);
  }
}

void report(const Visit& visit, spdlog::logger& log) {
  const auto line = [&](std::string_view detail) {
    log.error("{} {} failed: {}", visit.wire.id, logText(visit.what), detail);
  };
  try {
    throw;
  } catch (const database::DatabaseError& error) {
    const auto& native = error.native();
    line(fmt::format("error {}, {}: {}; {} code {}, state {}: {}; statement {}", error.number(),
                     logText(error.source()), logText(error.description()), native.engine,
                     native.code, native.sqlState, logText(native.text),
                     logText(native.statement)));
  } catch (const RuntimeError& error) {
    line(fmt::format("error {}, {}: {}", error.number(), logText(error.source()),
                     logText(error.description())));
  } catch (const std::exception& error) {
    line(logText(error.what()));
  } catch (...) {
    line("an exception of an unknown kind");
  }
}

void answerFailure(Visit& visit) {
  if (!visit.response.isFlushed()) {
    if (isApiPath(visit.path)) {
      visit.response.reset();
      writeApiError(visit, internalFailure());
    } else {
      writeNotice(visit, kFailure);
    }
  }
  visit.response.finish();
}

// A failure of the failure page, such as no memory at all: a status without a page.
void answerBarely(Visit& visit) noexcept {
  try {
    visit.out.setStatus(500);
    visit.out.send("");
  } catch (...) {
  }
}

}  // namespace

void runWithin(Visit& visit, spdlog::logger& log, const std::function<void()>& work) noexcept {
  try {
    runToItsEnd(visit, log, work);
    visit.response.finish();
  } catch (...) {
    try {
      report(visit, log);
      answerFailure(visit);
    } catch (...) {
      answerBarely(visit);
    }
  }
}

}  // namespace tarlo::host
