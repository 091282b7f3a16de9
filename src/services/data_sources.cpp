#include "services/data_sources.h"

#include "frame/data.h"
#include "frame/helpers.h"
#include "frame/statement_scope.h"
#include "services/operations.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::services {
namespace {

using variant::spliced;

constexpr std::string_view kValueMark = "<<<<<<";
constexpr std::string_view kOptionMark = ">>>>>>";

std::string encoded(const std::string& cell) {
  return frame::attributeText(text::trim(cell));
}

}  // namespace

void OptionList::add(std::string_view label, std::string_view value) {
  text_.append(label).append(kValueMark).append(value).append(kOptionMark);
}

std::string_view OptionList::joined() const {
  return std::string_view(text_).substr(0, text_.empty() ? 0 : text_.size() - kOptionMark.size());
}

std::string comboBoxOptions(Page& page, std::string_view statement) {
  ErrorState err;
  const frame::Rows rows = err.value([&] { return frame::rows(page, statement); });
  if (rows.empty()) return {};
  std::string xml = "<?xml version = '1.0' encoding = 'gb2312'?><root>";
  for (const frame::Row row : rows) {
    err.run([&] {
      xml += text::joined({"<option><value>", encoded(row.text(0)), "</value><text>",
                           encoded(row.text(1)), "</text></option>"});
    });
  }
  return xml + "</root>";
}

std::string storedOptions(Page& page, std::string_view statement) {
  return frame::asDesigner(page, [&] { return comboBoxOptions(page, statement); });
}

Variant TarloCBODataSource(Page& page, const Variant& sSQL, Variant& sPar) {
  const frame::Rows rows = frame::rows(page, spliced(sSQL));
  if (rows.empty()) return {};
  if (sPar.isNull()) sPar = "";
  const std::string wanted = variant::toText(sPar);
  std::string source;
  std::string selected;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    // A Null value counts as "" in the first row only; a later one raises, as its text form does.
    const frame::Row row = rows[i];
    const std::string value = i == 0 ? row.text(0) : variant::toText(row.value(0));
    source.append("<").append(row.text(1)).append("<").append(value);
    if (value == wanted) selected = std::to_string(i);
  }
  return source + ">" + selected;
}

Variant GetComboBoxXMLs(Page& page, const Variant& sSQL) {
  ErrorState err;
  const std::string xml = err.value([&] { return comboBoxOptions(page, spliced(sSQL)); });
  return xml.empty() ? Variant() : Variant(xml);
}

Variant GetRadioOrCheckBoxXML(Page& page, const Variant& sSQL) {
  const frame::Rows rows = frame::rows(page, spliced(sSQL));
  if (rows.empty()) return {};
  std::string xml = "<?xml version='1.0' encoding='gb2312'?><root><part>";
  for (const frame::Row row : rows) {
    xml.append("<value>").append(row.text(0)).append("</value>");
    xml.append("<text>").append(row.text(1)).append("</text>");
  }
  return xml.append("</part></root>");
}

}  // namespace tarlo::services
