// The second step of a user's drop-down.

#include "control/operations.h"
#include "control/posted_control.h"
#include "control/wizard_parts.h"
#include "embedded_control_pages.h"
#include "frame/page_text.h"
#include "metadata/reader.h"
#include "metadata/stored_schemes.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/convert.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using frame::PageText;
using metadata::DictionaryReader;
using metadata::Path;

// The main table itself, then every field by which a selected relation leaves it. A field whose id
// ends an earlier one's (12 behind 112) counts as seen: kept as it is.
std::string relatingFields(DictionaryReader& dictionary, const std::vector<Path>& paths) {
  services::OptionList options;
  options.add("方案主表", "-1");
  std::string seen;
  for (const Path& path : paths) {
    const std::string entry = path.mainField + ",";
    if (seen.find(entry) != std::string::npos) continue;
    seen += entry;
    const auto names = dictionary.fieldNames(path.mainField);
    if (names) options.add(names->display, path.mainField);
  }
  return std::string(options.joined());
}

std::string fieldsOf(DictionaryReader& dictionary, const std::vector<std::string>& tables) {
  services::OptionList options;
  for (const std::string& table : tables) {
    for (const std::string& id : dictionary.fieldIds(table)) {
      const auto names = dictionary.fieldNames(id);
      if (!names) continue;
      options.add(text::joined({names->tableDisplay, ".", names->display}),
                  text::joined({"[", names->table, "].[", names->column, "]"}));
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
Offer offerOf(Page& page, const std::string& scheme, const std::string& chosen) {
  const std::string table = metadata::keyTable(page, scheme).value_or("-1");
  Offer offer;
  ErrorState err;
  offer.relations =
      err.value([&] { return metadata::selectedRelations(page, scheme).value_or("-1"); });
  DictionaryReader dictionary(page);
  dictionary.load({.mainTable = table, .relations = offer.relations});
  const std::vector<Path> paths = dictionary.paths(table, offer.relations);
  offer.relating = relatingFields(dictionary, paths);
  std::vector<std::string> tables;
  if (!chosen.empty() && chosen != "-1") {
    for (const Path& path : paths) tables.push_back(path.table);
  }
  if (tables.empty()) tables.push_back(table);
  offer.fields = fieldsOf(dictionary, tables);
  return offer;
}

}  // namespace

Variant addSearchDlg_UsrField2_1(Page& page, const Variant& id) {
  static const PageText functions(embedded::control_pages::find("drop_down_functions.js"));
  static const PageText form(embedded::control_pages::find("drop_down_fields.html"));
  static const PageText step(embedded::control_pages::find("drop_down_step.html"));
  const std::string scheme = variant::spliced(id);
  const std::string chosen = posted(page, "relfield");
  const Offer offer = offerOf(page, scheme, chosen);
  const std::string markup = form.fill({{"relations", offer.relations},
                                        {"chosen", chosen},
                                        {"relating", offer.relating},
                                        {"fields", offer.fields},
                                        {"filter", filterArea("200", offer.fields)},
                                        {"scheme", scheme}});
  const std::string script = filterScript(FirstRow::AsDrawn);
  step.write(page.response,
             {{"functions", functions.fill()}, {"form", markup}, {"filter", script}});
  return {};
}

}  // namespace tarlo::control
