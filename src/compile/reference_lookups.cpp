#include "compile/reference_lookups.h"

#include "frame/data.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

Variant lookUp(Page& page, std::string_view statement, std::string_view id,
               std::string_view tail = {}) {
  std::string text;
  text.reserve(statement.size() + id.size() + tail.size());
  text.append(statement).append(id).append(tail);
  return frame::execSQLRows(page, Variant(std::move(text)));
}

}  // namespace

std::optional<FieldNames> namesOf(const Variant& rows) {
  if (!rows.isArray()) return std::nullopt;
  const Array& cells = rows.array();
  return FieldNames{variant::spliced(cells.at(0, 0)), variant::spliced(cells.at(1, 0))};
}

void appendReference(std::string& out, const FieldNames& names) {
  out.append("[").append(names.table).append("].[").append(names.column).append("]");
}

Variant plainLookup(Page& page, std::string_view id) {
  return lookUp(page,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                "Zembra_DataDict_Field as b"
                " where a.Zembra_ID = b.DDF_TableID and b.Zembra_ID = ",
                id);
}

Variant expressionLookup(Page& page, std::string_view id) {
  return lookUp(page,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = ",
                id);
}

Variant quotedExpressionLookup(Page& page, std::string_view id) {
  return lookUp(page,
                "select a.DDT_Name,b.DDF_Name from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = '",
                id, "'");
}

Variant referenceStatement(Page& page, std::string_view id) {
  return lookUp(page,
                "select a.DDT_Name,b.DDF_Name,a.Zembra_ID from Zembra_DataDict_Table as a,"
                " Zembra_DataDict_Field as b where b.Zembra_Flag <> 0 and "
                "b.DDF_TableID = a.Zembra_ID and b.Zembra_ID = ",
                id);
}

Variant fieldStatement(Page& page, std::string_view id) {
  return lookUp(page,
                "select b.DDT_Name,a.DDF_Name,b.DDT_CName,a.DDF_CName,b.Zembra_ID"
                " from Zembra_DataDict_Field as a,Zembra_DataDict_Table as b"
                " where a.Zembra_ID = ",
                id, " and a.DDF_TableID = b.Zembra_ID");
}

}  // namespace tarlo::compile
