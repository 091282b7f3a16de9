#include "host/site/boundary.h"

#include <algorithm>

#include "database/error.h"
#include "host/api/api.h"
#include "host/site/log_text.h"
#include "host/site/notice.h"
#include "variant/convert.h"

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

// What the number of an error means to whoever asked.
struct Meaning {
  int number;
  const Notice& notice;
  std::string_view code;     // in the JSON interface
  std::string_view message;  // the same
};
constexpr Meaning kMeanings[] = {
    {static_cast<int>(ErrorNumber::PermissionDenied), kNotGranted, "forbidden",
     "The user has no permission for this."},
    {database::kForbidden, kNotGranted, "forbidden", "The statement reads what it may not."},
    {database::kTooManyRows, kTooLarge, "too_large", "The result is too large."},
    {database::kNoRoomForRows, kBusy, "busy", "The server holds as many rows as it may."},
    {database::kTimeout, kTooSlow, "too_slow", "The statement took too long."},
};

const Meaning* meaningOf(int number) {
  const auto* found = std::ranges::find(kMeanings, number, &Meaning::number);
  return found == std::end(kMeanings) ? nullptr : found;
}

// What it means that the database could not take a statement.
constexpr Meaning kBusyNow = {0, kBusy, "busy", "The database is in use by somebody else."};
constexpr Meaning kUnavailable = {0, kNotSaved, "unavailable",
                                  "The database cannot be used now; nothing was saved."};

constexpr Meaning kInDoubt = {0, kPerhapsSaved, "in_doubt",
                              "The connection to the database broke before it answered; look "
                              "whether the change was saved before you send it again."};

const Meaning* meaningOf(database::Outage outage) {
  if (outage == database::Outage::None) return nullptr;
  if (outage == database::Outage::Unknown) return &kInDoubt;
  return outage == database::Outage::Busy ? &kBusyNow : &kUnavailable;
}

std::string lineOf(const database::DatabaseError& error) {
  const auto& native = error.native();
  return fmt::format("error {}, {}: {}; {} code {}, state {}: {}; statement {}", error.number(),
                     logText(error.source()), logText(error.description()), native.engine,
                     native.code, native.sqlState, logText(native.text), logText(native.statement));
}

ApiError apiError(const Meaning& meaning) {
  return {meaning.notice.status, meaning.code, std::string(meaning.message)};
}

void answerMeaning(Visit& visit, const Meaning& meaning) {
  if (!isApiPath(visit.path)) return writeNotice(visit, meaning.notice);
  visit.response.reset();
  writeApiError(visit, apiError(meaning));
}

const Meaning* meaningOf(const database::DatabaseError& error) {
  const Meaning* outage = meaningOf(error.native().outage);
  return outage == nullptr ? meaningOf(error.number()) : outage;
}

// An operation that goes on after errors may say that it saved what the database did not take, or
// that a statement is wrong which only took too long.
void checkFailure(Visit& visit, spdlog::logger& log) {
  const auto& error = visit.refusals.failure();
  if (!error) return;
  if (!RefusalLine::mustBeTold(*error)) {
    log.info("{} {} goes on after a statement failed: {}", visit.wire.id, logText(visit.what),
             lineOf(*error));
    return;
  }
  log.error("{} {} failed: {}", visit.wire.id, logText(visit.what), lineOf(*error));
  if (visit.response.isFlushed() || visit.response.isTyped()) return;
  answerMeaning(visit, *meaningOf(*error));
}

// An operation that goes on after errors may have left out the rows that were too many: what it
// has written is not the answer then. One that says so itself (in JSON, in a file) has set its
// type.
void checkExcess(Visit& visit, spdlog::logger& log) {
  using Excess = database::RowBudget::Excess;
  const Excess excess = visit.rowBudget.excess();
  if (excess == Excess::None || visit.response.isFlushed() || visit.response.isTyped()) return;
  const bool isOwn = excess == Excess::Operation;
  refuse(visit, log, isOwn ? kTooLarge : kBusy,
         isOwn ? "more rows than an operation may hold" : "more rows than all operations may hold");
}

// Gives the meaning of what was thrown, nothing for a failure.
const Meaning* report(const Visit& visit, spdlog::logger& log) {
  const auto line = [&](std::string_view detail) {
    log.error("{} {} failed: {}", visit.wire.id, logText(visit.what), detail);
  };
  try {
    throw;
  } catch (const database::DatabaseError& error) {
    line(lineOf(error));
    return meaningOf(error);
  } catch (const RuntimeError& error) {
    if (error.number() == static_cast<int>(ErrorNumber::PermissionDenied)) {
      log.warn("{} {} refused: user {}, {}", visit.wire.id, logText(visit.what),
               logText(variant::spliced(visit.session.get("usrID"))), logText(error.description()));
      return meaningOf(error.number());
    }
    line(fmt::format("error {}, {}: {}", error.number(), logText(error.source()),
                     logText(error.description())));
    return meaningOf(error.number());
  } catch (const std::exception& error) {
    line(logText(error.what()));
  } catch (...) {
    line("an exception of an unknown kind");
  }
  return nullptr;
}

// An operation that went on after the database did not take a statement may have written that all
// was saved; what it wrote is worth nothing then, also when it raises another error in the end.
bool isTrue(const Visit& visit, const Meaning* raised) {
  const bool isOutage = raised == &kBusyNow || raised == &kUnavailable;
  const bool isTold = isOutage || (raised != nullptr && raised->number == database::kTimeout);
  return visit.refusals.mustBeToldCount() <= (isTold ? 1U : 0U);
}

// The page text that an operation has written before it raised stays.
void answerFailure(Visit& visit, const Meaning* meaning) {
  if (!visit.response.isFlushed()) {
    if (isApiPath(visit.path)) {
      visit.response.reset();
      writeApiError(visit, meaning == nullptr ? internalFailure() : apiError(*meaning));
    } else {
      const Notice& notice = meaning == nullptr ? kFailure : meaning->notice;
      isTrue(visit, meaning) ? writeNoticeBehind(visit, notice) : writeNotice(visit, notice);
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
    checkExcess(visit, log);
    checkFailure(visit, log);
    visit.response.finish();
  } catch (...) {
    try {
      answerFailure(visit, report(visit, log));
    } catch (...) {
      answerBarely(visit);
    }
  }
}

}  // namespace tarlo::host
