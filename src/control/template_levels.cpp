// The level builder: which field a level shows, and by which field it hangs on the next one.

#include <fmt/format.h>

#include "control/template_definition.h"
#include "control/template_wizard.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/template.h"
#include "metadata/operations.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::control {
namespace {

using frame::Template;
using variant::spliced;

// What was chosen so far: ids joined by "|||", one field and one relating field for each level.
struct Chosen {
  std::string fields;
  std::string relations;
};

// The table's fields at which relations end, joined by ","; "" when there is none. The table at the
// other end is the next level's.
std::string relatingFields(Page& page, const std::string& table) {
  const Variant rows = frame::execSQLRows(
      page, Variant("select DDR_MainTableID,DDR_RelationFieldID from Zembra_DataDict_Relation "
                    "where DDR_RelationTableID=" +
                    table + " and Zembra_Flag=1"));
  std::string fields;
  if (!rows.isArray()) return fields;
  const Array& cells = rows.array();
  for (std::ptrdiff_t row = 0; row <= cells.upperBound(2); ++row) {
    if (!fields.empty()) fields += ",";
    fields += spliced(cells.at(1, row));
  }
  return fields;
}

// The table at the other end of the field's relation. Error 13 when there is none.
std::string tableBehind(Page& page, const Array& relating, const std::string& field) {
  const Variant table = tableIdOf(page, spliced(relating.at(0, 0)));
  const Variant main =
      frame::execSQLRows(page, Variant("select DDR_MainTableID from Zembra_DataDict_Relation where "
                                       "DDR_RelationTableID=" +
                                       spliced(table) + " and DDR_RelationFieldID=" + field));
  return spliced(main.array().at(0, 0));
}

std::string captionOf(const Array& field) {
  return fmt::format("{}.{}", spliced(field.at(1, 0)), spliced(field.at(3, 0)));
}

struct ChosenLevels {
  std::string rows;   // markup
  std::string table;  // of the level that is to be chosen
};

ChosenLevels chosenLevels(Page& page, const Chosen& chosen) {
  static const Template row(embedded::control_pages::find("template_level_chosen.html"));
  const auto relations = text::split(chosen.relations, kPartMark);
  ChosenLevels levels;
  std::size_t at = 0;
  for (const std::string_view field : text::split(chosen.fields, kPartMark)) {
    if (at == relations.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "rel");
    const std::string relation(relations[at++]);
    const Variant shown = metadata::getFieldName_Query(page, Variant(field));
    const Variant relating = metadata::getFieldName_Query(page, Variant(relation));
    levels.rows +=
        row.fill({{"field", captionOf(shown.array())}, {"relating", captionOf(relating.array())}});
    levels.table = tableBehind(page, relating.array(), relation);
  }
  return levels;
}

// The boxes for the next level. The relating box is left out where no relation goes on.
std::string levelForm(Page& page, const Chosen& chosen, const ChosenLevels& levels,
                      const std::string& relating) {
  static const Template form(embedded::control_pages::find("template_level_form.html"));
  static const Template further(embedded::control_pages::find("template_level_relating.html"));
  std::string relatingBox;
  if (!relating.empty()) {
    const std::string options = services::comboBoxOptions(
        page, "select Zembra_ID,DDF_CName from Zembra_DataDict_Field where Zembra_ID in (" +
                  relating + ")");
    relatingBox = further.fill({{"relatingOptions", options}});
  }
  const std::string fields = services::comboBoxOptions(
      page,
      "select b.Zembra_ID,a.DDT_CName+'.'+b.DDF_CName from Zembra_DataDict_Table as "
      "a,Zembra_DataDict_Field as b where a.Zembra_ID=b.DDF_TableID and b.DDF_TableID=" +
          levels.table);
  return form.fill({{"fields", chosen.fields},
                    {"relations", chosen.relations},
                    {"table", levels.table},
                    {"levels", levels.rows},
                    {"fieldOptions", fields},
                    {"relating", relatingBox}});
}

// The ids in front of the one that the next level adds.
std::string continued(const std::string& ids) {
  return ids.empty() ? "" : ids + std::string(kPartMark);
}

}  // namespace

void addSearchDlg_sysField2_2(Page& page) {
  static const Template step(embedded::control_pages::find("template_levels.html"));
  static const Template none(embedded::control_pages::find("template_no_relation.html"));
  const Chosen chosen = {spliced(page.request.value("Fields")), spliced(page.request.value("rel"))};
  const Variant scheme = page.request.value("id");
  const bool isFirst = chosen.fields.empty();
  ChosenLevels levels;
  if (isFirst) {
    levels.table = spliced(metadata::KeyField2TableID(page, scheme, false));
  } else {
    levels = chosenLevels(page, chosen);
  }
  const std::string relating = relatingFields(page, levels.table);
  const std::string content =
      isFirst && relating.empty() ? none.fill() : levelForm(page, chosen, levels, relating);
  step.write(page.response, {{"content", content},
                             {"scheme", spliced(scheme)},
                             {"move", isFirst ? "window.top.switchStep();\r\n" : ""},
                             {"fields", continued(chosen.fields)},
                             {"relations", continued(chosen.relations)}});
}

}  // namespace tarlo::control
