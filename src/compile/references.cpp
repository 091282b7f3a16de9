#include "compile/references.h"

#include "compile/grammar.h"
#include "frame/data.h"
#include "text/pieces.h"

namespace tarlo::compile {
namespace {

// Which fields a look-up finds. Tables are found whatever their state.
enum class Finds { All, Kept };

std::optional<Reference> lookUp(DictionaryReader& dictionary, Finds finds,
                                std::string_view statement, std::string_view id,
                                std::string_view tail = {}) {
  if (const auto loaded = dictionary.fieldState(id)) {
    const auto& field = *loaded;
    if (!field || (finds == Finds::Kept && !field->isKept)) return std::nullopt;
    return Reference{field->names.table, field->names.column, field->names.tableId};
  }
  const frame::Rows rows = frame::rows(dictionary.page(), text::joined({statement, id, tail}));
  if (rows.empty()) return std::nullopt;
  const frame::Row row = rows.front();
  return Reference{row.text(0), row.text(1), row.columns() > 2 ? row.text(2) : ""};
}

}  // namespace

void appendReference(std::string& out, const Reference& reference) {
  out.append("[").append(reference.table).append("].[").append(reference.column).append("]");
}

std::optional<Reference> tokenReference(DictionaryReader& dictionary, std::string_view id) {
  return lookUp(dictionary, Finds::All,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                "Zembra_DataDict_Field as b"
                " where a.Zembra_ID = b.DDF_TableID and b.Zembra_ID = ",
                id);
}

std::optional<Reference> expressionReference(DictionaryReader& dictionary, std::string_view id) {
  return lookUp(dictionary, Finds::Kept,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = ",
                id);
}

std::optional<Reference> quotedExpressionReference(DictionaryReader& dictionary,
                                                   std::string_view id) {
  return lookUp(dictionary, Finds::Kept,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = '",
                id, "'");
}

std::optional<Reference> includedReference(DictionaryReader& dictionary, std::string_view id) {
  return lookUp(dictionary, Finds::Kept,
                "select a.DDT_Name,b.DDF_Name,a.Zembra_ID from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = ",
                id);
}

std::optional<StatisticsField> statisticsField(DictionaryReader& dictionary, std::string_view id) {
  if (const auto loaded = dictionary.fieldState(id)) {
    const auto& field = *loaded;
    if (!field) return std::nullopt;
    const metadata::FieldNames& names = field->names;
    return StatisticsField{
        {names.table, names.column, names.tableId}, names.tableDisplay, names.display};
  }
  const frame::Rows rows =
      frame::rows(dictionary.page(),
                  text::joined({"select b.DDT_Name,a.DDF_Name,b.DDT_CName,a.DDF_CName,b.Zembra_ID"
                                " from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b"
                                " where a.Zembra_ID = ",
                                id, " and a.DDF_TableID = b.Zembra_ID"}));
  if (rows.empty()) return std::nullopt;
  const frame::Row row = rows.front();
  return StatisticsField{{row.text(0), row.text(1), row.text(4)}, row.text(2), row.text(3)};
}

void appendExpression(std::string& out, std::string_view expression, BlankTokens blanks,
                      const ResolveReference& resolve) {
  for (const ExpressionToken& token : expressionTokens(expression)) {
    if (blanks == BlankTokens::Drop && text::trim(token.text).empty()) continue;
    if (!token.reference) {
      out += token.text;
      continue;
    }
    if (const auto found = resolve(*token.reference)) {
      out += token.literal;
      appendReference(out, *found);
    }
  }
}

}  // namespace tarlo::compile
