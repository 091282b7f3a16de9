#include "tsql/lex/keyword.h"

#include <algorithm>
#include <array>

#include "text/fold.h"

namespace tarlo::tsql {
namespace {

struct Entry {
  std::string_view word;
  Keyword keyword = Keyword::Reserved;
};

// clang-format off
constexpr Entry kEntries[] = {
    {"ADD", Keyword::Add}, {"ALL", Keyword::All}, {"ALTER", Keyword::Alter}, {"AND", Keyword::And}, {"ANY"}, {"AS", Keyword::As},
    {"ASC", Keyword::Asc}, {"AUTHORIZATION"}, {"BACKUP"}, {"BEGIN"}, {"BETWEEN", Keyword::Between},
    {"BREAK"}, {"BROWSE"}, {"BULK"}, {"BY", Keyword::By}, {"CASCADE"}, {"CASE", Keyword::Case}, {"CHECK"},
    {"CHECKPOINT"}, {"CLOSE"}, {"CLUSTERED", Keyword::Clustered}, {"COALESCE", Keyword::Coalesce},
    {"COLLATE", Keyword::Collate}, {"COLUMN"}, {"COMMIT"}, {"COMPUTE"},
    {"CONSTRAINT", Keyword::Constraint}, {"CONTAINS"}, {"CONTAINSTABLE"}, {"CONTINUE"},
    {"CONVERT", Keyword::Convert}, {"CREATE", Keyword::Create}, {"CROSS", Keyword::Cross},
    {"CURRENT"}, {"CURRENT_DATE"}, {"CURRENT_TIME"},
    {"CURRENT_TIMESTAMP", Keyword::CurrentTimestamp}, {"CURRENT_USER"}, {"CURSOR"}, {"DATABASE"},
    {"DBCC"}, {"DEALLOCATE"}, {"DECLARE", Keyword::Declare}, {"DEFAULT", Keyword::Default},
    {"DELETE", Keyword::Delete}, {"DENY"}, {"DESC", Keyword::Desc}, {"DISK"}, {"DISTINCT", Keyword::Distinct},
    {"DISTRIBUTED"}, {"DOUBLE"}, {"DROP"}, {"DUMP"}, {"ELSE", Keyword::Else},
    {"END", Keyword::End}, {"ERRLVL"}, {"ESCAPE", Keyword::Escape}, {"EXCEPT"},
    {"EXEC", Keyword::Exec}, {"EXECUTE", Keyword::Execute}, {"EXISTS", Keyword::Exists}, {"EXIT"},
    {"EXTERNAL"}, {"FETCH", Keyword::Fetch}, {"FILE"}, {"FILLFACTOR"}, {"FOR"}, {"FOREIGN"}, {"FREETEXT"},
    {"FREETEXTTABLE"}, {"FROM", Keyword::From}, {"FULL", Keyword::Full}, {"FUNCTION"}, {"GOTO"},
    {"GRANT"}, {"GROUP", Keyword::Group}, {"HAVING", Keyword::Having}, {"HOLDLOCK"},
    {"IDENTITY", Keyword::Identity}, {"IDENTITYCOL"},
    {"IDENTITY_INSERT", Keyword::IdentityInsert}, {"IF"}, {"IN", Keyword::In},
    {"INDEX", Keyword::Index}, {"INNER", Keyword::Inner}, {"INSERT", Keyword::Insert},
    {"INTERSECT"}, {"INTO", Keyword::Into}, {"IS", Keyword::Is}, {"JOIN", Keyword::Join},
    {"KEY", Keyword::Key}, {"KILL"}, {"LEFT", Keyword::Left}, {"LIKE", Keyword::Like},
    {"LINENO"}, {"LOAD"}, {"MERGE"}, {"NATIONAL"}, {"NOCHECK"},
    {"NONCLUSTERED", Keyword::Nonclustered}, {"NOT", Keyword::Not}, {"NULL", Keyword::Null},
    {"NULLIF", Keyword::Nullif}, {"OF"}, {"OFF", Keyword::Off}, {"OFFSETS"}, {"ON", Keyword::On},
    {"OPEN"}, {"OPENDATASOURCE"}, {"OPENQUERY"}, {"OPENROWSET"}, {"OPENXML"}, {"OPTION"},
    {"OR", Keyword::Or}, {"ORDER", Keyword::Order}, {"OUTER", Keyword::Outer}, {"OVER"},
    {"PERCENT"}, {"PIVOT"}, {"PLAN"}, {"PRECISION"}, {"PRIMARY", Keyword::Primary}, {"PRINT"},
    {"PROC"}, {"PROCEDURE"}, {"PUBLIC"}, {"RAISERROR"}, {"READ"}, {"READTEXT"}, {"RECONFIGURE"},
    {"REFERENCES"}, {"REPLICATION"}, {"RESTORE"}, {"RESTRICT"}, {"RETURN"}, {"REVERT"},
    {"REVOKE"}, {"RIGHT", Keyword::Right}, {"ROLLBACK"}, {"ROWCOUNT"}, {"ROWGUIDCOL"}, {"RULE"},
    {"SAVE"}, {"SCHEMA"}, {"SECURITYAUDIT"}, {"SELECT", Keyword::Select}, {"SESSION_USER"},
    {"SET", Keyword::Set}, {"SETUSER"}, {"SHUTDOWN"}, {"SOME"}, {"STATISTICS"}, {"SYSTEM_USER"},
    {"TABLE", Keyword::Table}, {"TABLESAMPLE"}, {"TEXTSIZE"}, {"THEN", Keyword::Then}, {"TO"},
    {"TOP", Keyword::Top}, {"TRAN"}, {"TRANSACTION"}, {"TRIGGER"}, {"TRUNCATE"}, {"TSEQUAL"},
    {"UNION", Keyword::Union}, {"UNIQUE", Keyword::Unique}, {"UNPIVOT"},
    {"UPDATE", Keyword::Update}, {"UPDATETEXT"}, {"USE"}, {"USER"}, {"VALUES", Keyword::Values},
    {"VARYING"}, {"VIEW"}, {"WAITFOR"}, {"WHEN", Keyword::When}, {"WHERE", Keyword::Where},
    {"WHILE"}, {"WITH", Keyword::With}, {"WRITETEXT"}};
// clang-format on

static_assert(std::is_sorted(std::begin(kEntries), std::end(kEntries),
                             [](const Entry& a, const Entry& b) { return a.word < b.word; }));

constexpr std::size_t kLongestWord = 24;

}  // namespace

Keyword keywordOf(std::string_view word) {
  if (word.size() < 2 || word.size() > kLongestWord) return Keyword::None;
  std::array<char, kLongestWord> upper;
  std::transform(word.begin(), word.end(), upper.begin(), text::raised);
  const std::string_view wanted(upper.data(), word.size());
  const auto* found =
      std::lower_bound(std::begin(kEntries), std::end(kEntries), wanted,
                       [](const Entry& entry, std::string_view w) { return entry.word < w; });
  return found != std::end(kEntries) && found->word == wanted ? found->keyword : Keyword::None;
}

}  // namespace tarlo::tsql
