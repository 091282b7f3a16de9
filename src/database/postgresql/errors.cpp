#include "database/postgresql/errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tarlo::database {
namespace {

struct Meaning {
  std::string_view state;  // all five characters, or the first two of a class
  int number;
  const char* description;  // "" for the server's own text; {} is the table, column or rule
  Outage outage = Outage::None;
};

// States stand before the classes that they refine.
constexpr std::array kMeanings{
    Meaning{"23505", kConstraint, "The value is there already: {}."},
    Meaning{"23502", kConstraint, "A value is missing: {}."},
    Meaning{"23", kConstraint, "A rule of the table is broken: {}."},
    Meaning{"25006", kStatementFailed, "The database can only be read.", Outage::Failing},
    Meaning{"55P03", kTimeout, "The table is locked by another statement.", Outage::Busy},
    Meaning{"40P01", kTimeout, "Two statements waited for each other; this one was ended.",
            Outage::Busy},
    Meaning{"40001", kTimeout, "Another statement changed the same rows.", Outage::Busy},
    Meaning{"57014", kTimeout, "The statement took longer than its time limit."},
    Meaning{"42501", kForbidden, "The database's login may not do this."},
    Meaning{"53100", kStatementFailed,
            "There is no room left for the database; nothing was changed.", Outage::Full},
    Meaning{"53300", kConnectionFailed, "The database server has no connection free.",
            Outage::Busy},
    Meaning{"53200", kStatementFailed, "The database server has not enough memory."},
    Meaning{"53400", kTooManyRows,
            "The statement needs more room in temporary files than it may have."},
    Meaning{"54", kStatementFailed, "The statement is more than the database server takes."},
    Meaning{"58", kStatementFailed, "The database server could not read or write its files.",
            Outage::Failing},
    Meaning{"XX", kStatementFailed, "The database server failed.", Outage::Failing},
    Meaning{"22012", kStatementFailed, "Division by zero."},
    Meaning{"22021", kStatementFailed, "A text holds what the database's encoding has not."},
    Meaning{"22P05", kStatementFailed, "A text holds what the database's encoding has not."},
    Meaning{"57P01", kConnectionFailed, "The database server is being shut down.", Outage::Gone},
    Meaning{"57P02", kConnectionFailed, "The database server has broken down.", Outage::Gone},
    Meaning{"57P03", kConnectionFailed, "The database server is starting or stopping.",
            Outage::Busy},
    Meaning{"57P04", kConnectionFailed, "The database was dropped.", Outage::Gone},
    Meaning{"57P05", kConnectionFailed, "The database server ended an idle connection.",
            Outage::Gone},
    Meaning{"08", kConnectionFailed, "The connection to the database server is broken.",
            Outage::Gone},
    Meaning{"28", kConnectionFailed, "The database server refuses the user or the password.",
            Outage::Failing},
    Meaning{"3D000", kConnectionFailed, "The database server has no database of that name.",
            Outage::Failing},
};

const Meaning* meaningOf(std::string_view state) {
  const auto* found = std::ranges::find_if(
      kMeanings, [&](const Meaning& meaning) { return state.starts_with(meaning.state); });
  return found == kMeanings.end() ? nullptr : found;
}

std::string_view field(const PGresult* result, int code) {
  const char* text = PQresultErrorField(result, code);
  return text == nullptr ? std::string_view() : std::string_view(text);
}

// The server's DETAIL shows the row's values, which do not belong into a log: names are enough.
std::string placeOf(const PGresult* result) {
  const std::string_view table = field(result, PG_DIAG_TABLE_NAME);
  const std::string_view column = field(result, PG_DIAG_COLUMN_NAME);
  const std::string_view rule = field(result, PG_DIAG_CONSTRAINT_NAME);
  const std::string_view second = column.empty() ? rule : column;
  if (table.empty() || second.empty()) return std::string(table.empty() ? second : table);
  return fmt::format("{}.{}", table, second);
}

DatabaseError made(const Meaning& meaning, std::string description, std::string_view state,
                   std::string text) {
  return DatabaseError(meaning.number, std::move(description),
                       {.engine = "postgresql",
                        .code = 0,
                        .sqlState = std::string(state),
                        .text = std::move(text),
                        .outage = meaning.outage});
}

std::string withoutLineEnd(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(" \n") + 1));
}

// What the server said while a connection was made: "FATAL:  28P01: ...", in any language.
std::string_view stateIn(std::string_view text) {
  constexpr std::size_t kLength = 5;
  for (std::size_t at = text.find(":  "); at != std::string_view::npos;
       at = text.find(":  ", at + 1)) {
    const std::string_view state = text.substr(at + 3, kLength);
    const bool isState = state.size() == kLength && std::ranges::all_of(state, [](char c) {
                           return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z');
                         });
    if (isState && text.substr(at + 3 + kLength).starts_with(": ")) return state;
  }
  return {};
}

// Where the server gave no state, or libpq itself refused, there are only words.
struct Words {
  std::string_view part;
  std::string_view state;
  const char* description;
};
constexpr std::array kConnectWords{
    Words{"could not translate host name", "08001", "The database server's name is not known."},
    Words{"no password supplied", "28P01", nullptr},
    Words{"password authentication failed", "28P01", nullptr},
    Words{"no pg_hba.conf entry", "28000", nullptr},
    Words{"role \"", "28000", nullptr},
    Words{"database \"", "3D000", nullptr},
    Words{"too many clients", "53300", nullptr},
    Words{"remaining connection slots", "53300", nullptr},
    Words{"too many connections", "53300", nullptr},
    Words{"starting up", "57P03", nullptr},
    Words{"shutting down", "57P03", nullptr},
    Words{"in recovery", "57P03", nullptr},
    Words{"not yet accepting connections", "57P03", nullptr},
    Words{"certificate", "08001", "The database server's certificate was not accepted."},
    Words{"SSL", "08001", "The database server and this program agree on no encryption."},
    Words{"session is read-only", "25006", "The database can only be read."},
    Words{"timeout expired", "08001", "The database server does not answer."},
};

}  // namespace

std::string_view sqlStateOf(const PGresult* result) {
  return field(result, PG_DIAG_SQLSTATE);
}

DatabaseError postgresqlError(const PGresult* result) {
  std::string text(field(result, PG_DIAG_MESSAGE_PRIMARY));
  if (text.empty()) text = withoutLineEnd(PQresultErrorMessage(result));
  std::string_view state = sqlStateOf(result);
  const Meaning* meaning = meaningOf(state);
  if (meaning == nullptr) {
    const Meaning plain{"", kStatementFailed, ""};
    std::string description = text;
    return made(plain, std::move(description), state.empty() ? "HY000" : state, std::move(text));
  }
  std::string description = fmt::format(fmt::runtime(meaning->description), placeOf(result));
  return made(*meaning, std::move(description), state, std::move(text));
}

DatabaseError connectError(PGconn* handle) {
  std::string text = handle == nullptr ? "out of memory" : withoutLineEnd(PQerrorMessage(handle));
  if (const Meaning* meaning = meaningOf(stateIn(text)); meaning != nullptr) {
    Meaning refused = *meaning;
    refused.number = kConnectionFailed;
    const std::string state(stateIn(text));
    return made(refused, refused.description, state, std::move(text));
  }
  const auto* words = std::ranges::find_if(
      kConnectWords, [&](const Words& each) { return text.find(each.part) != std::string::npos; });
  const Meaning unreachable{"08001", kConnectionFailed, "The database server cannot be reached.",
                            Outage::Gone};
  if (words == kConnectWords.end()) {
    return made(unreachable, unreachable.description, unreachable.state, std::move(text));
  }
  const Meaning* known = words->description == nullptr ? meaningOf(words->state) : nullptr;
  Meaning meaning = known == nullptr ? unreachable : *known;
  if (words->description != nullptr) meaning.description = words->description;
  meaning.number = kConnectionFailed;
  return made(meaning, meaning.description, words->state, std::move(text));
}

DatabaseError lostError(std::string text) {
  const Meaning& broken = *meaningOf("08006");
  return made(broken, broken.description, "08006", std::move(text));
}

DatabaseError unknownOutcome(std::string text) {
  const Meaning unknown{"08007", kOutcomeUnknown, "", Outage::Unknown};
  return made(unknown,
              "The connection to the database server broke before it answered; whether the change "
              "was saved is not known.",
              unknown.state, std::move(text));
}

bool losesConnection(std::string_view sqlState) {
  return sqlState.starts_with("08") || sqlState.starts_with("57P");
}

bool isSchemaTrouble(std::string_view sqlState) {
  // Unknown names, operators that do not fit, columns of other types; and "cached plan must not
  // change result type".
  return sqlState.starts_with("42") || sqlState == "0A000";
}

}  // namespace tarlo::database
