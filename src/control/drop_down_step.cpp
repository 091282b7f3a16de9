#include "control/field_wizard.h"
#include "control/filter_area.h"
#include "embedded_control_pages.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "services/data_sources.h"
#include "variant/array.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

// Column `column` of the rows; nothing when there are none.
std::vector<std::string> columnOf(const Variant& rows, std::ptrdiff_t column) {
  std::vector<std::string> values;
  if (!rows.isArray()) return values;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    values.push_back(spliced(cells.at(column, row)));
  }
  return values;
}

// The main table itself, then every field by which a selected relation leaves it. A field whose id
// ends an earlier one's (12 behind 112) counts as seen: kept as it is.
std::string relatingFields(Page& page, const std::vector<std::string>& fields) {
  services::OptionList options;
  options.add("方案主表", "-1");
  std::string seen;
  for (const std::string& field : fields) {
    const std::string entry = field + ",";
    if (seen.find(entry) != std::string::npos) continue;
    seen += entry;
    const Variant row = metadata::getFieldName_Query(page, Variant(field));
    if (row.isArray()) options.add(spliced(row.array().at(3, 0)), field);
  }
  return std::string(options.joined());
}

std::string fieldsOf(Page& page, const std::vector<std::string>& tables) {
  services::OptionList options;
  for (const std::string& table : tables) {
    const Variant ids = metadata::getAllFieldID_Query(page, Variant(table));
    for (const std::string& id : columnOf(ids, 0)) {
      const Variant row = metadata::getFieldName_Query(page, Variant(id));
      if (!row.isArray()) continue;
      const auto cell = [&](std::ptrdiff_t column) { return spliced(row.array().at(column, 0)); };
      options.add(cell(1) + "." + cell(3), "[" + cell(0) + "].[" + cell(2) + "]");
    }
  }
  return std::string(options.joined());
}

struct Offer {
  std::string relations;  // the scheme's selected ones
  std::string relating;
  std::string fields;
};

// Whichever relating field is chosen, the fields of every related table are offered.
Offer offerOf(Page& page, const Variant& scheme, const std::string& chosen) {
  const Variant table = metadata::KeyField2TableID(page, scheme, false);
  Offer offer;
  ErrorState err;
  offer.relations =
      spliced(err.value([&] { return metadata::GetQuerySelRel(page, scheme, false); }));
  const Variant related = metadata::getRelationTable_Query(page, table, Variant(offer.relations));
  offer.relating = relatingFields(page, columnOf(related, 2));
  std::vector<std::string> tables = {spliced(table)};
  if (!chosen.empty() && chosen != "-1" && related.isArray()) tables = columnOf(related, 0);
  offer.fields = fieldsOf(page, tables);
  return offer;
}

}  // namespace

Variant addSearchDlg_UsrField2_1(Page& page, const Variant& id) {
  static const Template functions(embedded::control_pages::find("drop_down_functions.js"));
  static const Template form(embedded::control_pages::find("drop_down_fields.html"));
  static const Template step(embedded::control_pages::find("drop_down_step.html"));
  const std::string chosen = spliced(page.request.value("relfield"));
  const Offer offer = offerOf(page, id, chosen);
  const std::string markup = form.fill({{"relations", offer.relations},
                                        {"chosen", chosen},
                                        {"relating", offer.relating},
                                        {"fields", offer.fields},
                                        {"filter", filterArea("200", offer.fields)},
                                        {"scheme", spliced(id)}});
  const std::string script = filterScript(FirstRow::AsDrawn);
  step.write(page.response,
             {{"functions", functions.fill()}, {"form", markup}, {"filter", script}});
  return {};
}

}  // namespace tarlo::control
