#include "database/sqlite/errors.h"

#include <array>
#include <string>
#include <string_view>

#include <fmt/format.h>

namespace tarlo::database {
namespace {

struct Meaning {
  int code;  // primary or extended
  int number;
  const char* sqlState;
  const char* description;  // "" for SQLite's own text
  Outage outage = Outage::None;
};

// Extended codes stand before the primary ones that they refine.
constexpr std::array kMeanings{
    Meaning{SQLITE_CONSTRAINT_UNIQUE, kConstraint, "23000", "The value is there already: {}."},
    Meaning{SQLITE_CONSTRAINT_PRIMARYKEY, kConstraint, "23000", "The key is there already: {}."},
    Meaning{SQLITE_CONSTRAINT_ROWID, kConstraint, "23000", "The key is there already: {}."},
    Meaning{SQLITE_CONSTRAINT_NOTNULL, kConstraint, "23000", "A value is missing: {}."},
    Meaning{SQLITE_CONSTRAINT, kConstraint, "23000", "A rule of the table is broken: {}."},
    Meaning{SQLITE_BUSY, kTimeout, "HYT00",
            "The database is locked by another program or request; waiting for it took too long.",
            Outage::Busy},
    Meaning{SQLITE_LOCKED, kTimeout, "HYT00", "The table is locked by another statement.",
            Outage::Busy},
    Meaning{SQLITE_INTERRUPT, kTimeout, "HYT00", "The statement took longer than its time limit."},
    Meaning{SQLITE_AUTH, kForbidden, "42501",
            "The statement touches a table that is not allowed here."},
    Meaning{kTemporaryFilesFull, kTooManyRows, "54000",
            "The statement needs more room in temporary files than it may have."},
    Meaning{SQLITE_FULL, kStatementFailed, "53100",
            "There is no room left for the database; nothing was changed.", Outage::Full},
    Meaning{SQLITE_READONLY, kStatementFailed, "25006", "The database can only be read.",
            Outage::Failing},
    Meaning{SQLITE_CORRUPT, kConnectionFailed, "08006", "The database file is damaged.",
            Outage::Failing},
    Meaning{SQLITE_NOTADB, kConnectionFailed, "08001", "The file is not a database.",
            Outage::Failing},
    Meaning{SQLITE_CANTOPEN, kConnectionFailed, "08001", "The database file cannot be opened.",
            Outage::Failing},
    Meaning{SQLITE_PERM, kConnectionFailed, "08001", "The database file may not be used.",
            Outage::Failing},
    Meaning{SQLITE_IOERR, kConnectionFailed, "08006",
            "Reading or writing the database file failed; nothing was changed.", Outage::Failing},
    Meaning{SQLITE_PROTOCOL, kTimeout, "HYT00",
            "The database is locked by another program or request; waiting for it took too long.",
            Outage::Busy},
    Meaning{SQLITE_NOMEM, kStatementFailed, "HY001", "There is not enough memory."},
    Meaning{SQLITE_TOOBIG, kStatementFailed, "22001", "A text is longer than the database takes."},
};

Meaning meaningOf(int code, SqliteCall call) {
  for (const Meaning& meaning : kMeanings) {
    if (meaning.code == code) return meaning;
  }
  for (const Meaning& meaning : kMeanings) {
    if (meaning.code == (code & 0xFF)) return meaning;
  }
  switch (call) {
    case SqliteCall::Open:
      return {code, kConnectionFailed, "08001", ""};
    case SqliteCall::Prepare:
      return {code, kStatementFailed, "42000", ""};
    case SqliteCall::Run:
      break;
  }
  // Errors of the values met on the way: a text that is no number, a division by zero.
  return {code, kStatementFailed, "22000", ""};
}

// "UNIQUE constraint failed: T.a, T.b" names the columns behind the colon.
std::string_view detailOf(std::string_view text) {
  const std::size_t colon = text.find(": ");
  return colon == std::string_view::npos ? text : text.substr(colon + 2);
}

}  // namespace

DatabaseError sqliteError(sqlite3* handle, int code, SqliteCall call) {
  std::string text = sqlite3_errmsg(handle);
  const Meaning meaning = meaningOf(code, call);
  const std::string_view pattern = meaning.description;
  std::string description =
      pattern.empty() ? text : fmt::format(fmt::runtime(pattern), detailOf(text));
  return DatabaseError(meaning.number, std::move(description),
                       {.engine = "sqlite",
                        .code = code,
                        .sqlState = meaning.sqlState,
                        .text = std::move(text),
                        .outage = meaning.outage});
}

bool losesConnection(int code) {
  switch (code & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      return true;
    default:
      return false;
  }
}

}  // namespace tarlo::database
