#include "services/data_sources.h"

#include <string>

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::services {
namespace {

using variant::spliced;

std::string encoded(Page& page, const Variant& cell) {
  return spliced(frame::replaceChar(page, text::trim(spliced(cell))));
}

std::string optionsXml(Page& page, const Array& cells) {
  std::string xml = "<?xml version = '1.0' encoding = 'gb2312'?><root>";
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    xml.append("<option><value>").append(encoded(page, cells.at(0, row)));
    xml.append("</value><text>").append(encoded(page, cells.at(1, row)));
    xml.append("</text></option>");
  }
  return xml.append("</root>");
}

}  // namespace

Variant TarloCBODataSource(Page& page, const Variant& sSQL, Variant& sPar) {
  const Variant rows = frame::execSQLRows(page, sSQL);
  if (!rows.isArray()) return {};
  if (sPar.isNull()) sPar = "";
  const std::string wanted = variant::toText(sPar);
  const Array& cells = rows.array();
  std::string source;
  std::string selected;
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    // A Null value counts as "" in the first row only; a later one raises, as its text form does.
    const Variant& cell = cells.at(0, row);
    const std::string value = row == 0 ? spliced(cell) : variant::toText(cell);
    source.append("<").append(spliced(cells.at(1, row))).append("<").append(value);
    if (value == wanted) selected = std::to_string(row);
  }
  return source + ">" + selected;
}

Variant GetComboBoxXMLs(Page& page, const Variant& sSQL) {
  ErrorState err;
  const Variant rows = err.value([&] { return frame::execSQLRows(page, sSQL); });
  return rows.isArray() ? Variant(optionsXml(page, rows.array())) : Variant();
}

std::string comboBoxOptions(Page& page, const std::string& statement) {
  return variant::spliced(GetComboBoxXMLs(page, Variant(statement)));
}

std::string storedOptions(Page& page, const std::string& statement) {
  return frame::asDesigner(page, [&] { return comboBoxOptions(page, statement); });
}

Variant GetRadioOrCheckBoxXML(Page& page, const Variant& sSQL) {
  const Variant rows = frame::execSQLRows(page, sSQL);
  if (!rows.isArray()) return {};
  const Array& cells = rows.array();
  std::string xml = "<?xml version='1.0' encoding='gb2312'?><root><part>";
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    xml.append("<value>").append(spliced(cells.at(0, row))).append("</value>");
    xml.append("<text>").append(spliced(cells.at(1, row))).append("</text>");
  }
  return xml.append("</part></root>");
}

}  // namespace tarlo::services
