// The level builder: which field a level shows, and by which field it hangs on the next one.

#include "control/operations.h"
#include "control/posted_control.h"
#include "embedded_control_pages.h"
#include "frame/data.h"
#include "frame/page_text.h"
#include "metadata/dictionary.h"
#include "metadata/stored_schemes.h"
#include "services/data_sources.h"
#include "text/pieces.h"

namespace tarlo::control {
namespace {

using frame::PageText;
using metadata::FieldNames;
using text::kPartMark;

// What was chosen so far: ids joined by "|||", one field and one relating field for each level.
struct Chosen {
  std::string fields;
  std::string relations;
};

// The table's fields at which relations end, joined by ","; "" when there is none. The table at the
// other end is the next level's.
std::string relatingFields(Page& page, const std::string& table) {
  std::string fields;
  for (frame::Row row :
       frame::rows(page,
                   "select DDR_MainTableID,DDR_RelationFieldID from Zembra_DataDict_Relation "
                   "where DDR_RelationTableID=" +
                       table + " and Zembra_Flag=1")) {
    if (!fields.empty()) fields += ",";
    fields += row.text(1);
  }
  return fields;
}

// The table at the other end of the field's relation. Error 13 when there is none.
std::string tableBehind(Page& page, const FieldNames& relating, const std::string& field) {
  const std::string table = tableIdOf(page, relating.table);
  return frame::rows(page,
                     "select DDR_MainTableID from Zembra_DataDict_Relation where "
                     "DDR_RelationTableID=" +
                         table + " and DDR_RelationFieldID=" + field)
      .front()
      .text(0);
}

std::string captionOf(const FieldNames& field) {
  return field.tableDisplay + "." + field.display;
}

struct ChosenLevels {
  std::string rows;   // markup
  std::string table;  // of the level that is to be chosen
};

ChosenLevels chosenLevels(Page& page, const Chosen& chosen) {
  static const PageText row(embedded::control_pages::find("template_level_chosen.html"));
  const auto relations = text::split(chosen.relations, kPartMark);
  ChosenLevels levels;
  std::size_t at = 0;
  for (const std::string_view field : text::split(chosen.fields, kPartMark)) {
    if (at == relations.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange, "rel");
    const std::string relation(relations[at++]);
    const auto shown = metadata::fieldNames(page, field);
    const auto relating = metadata::fieldNames(page, relation);
    if (!shown || !relating) throw RuntimeError(ErrorNumber::TypeMismatch, "a chosen field");
    levels.rows += row.fill({{"field", captionOf(*shown)}, {"relating", captionOf(*relating)}});
    levels.table = tableBehind(page, *relating, relation);
  }
  return levels;
}

// The boxes for the next level. The relating box is left out where no relation goes on.
std::string levelForm(Page& page, const Chosen& chosen, const ChosenLevels& levels,
                      const std::string& relating) {
  static const PageText form(embedded::control_pages::find("template_level_form.html"));
  static const PageText further(embedded::control_pages::find("template_level_relating.html"));
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
  static const PageText step(embedded::control_pages::find("template_levels.html"));
  static const PageText none(embedded::control_pages::find("template_no_relation.html"));
  const Chosen chosen = {posted(page, "Fields"), posted(page, "rel")};
  const std::string scheme = posted(page, "id");
  const bool isFirst = chosen.fields.empty();
  ChosenLevels levels;
  if (isFirst) {
    levels.table = metadata::keyTable(page, scheme).value_or("-1");
  } else {
    levels = chosenLevels(page, chosen);
  }
  const std::string relating = relatingFields(page, levels.table);
  const std::string content =
      isFirst && relating.empty() ? none.fill() : levelForm(page, chosen, levels, relating);
  step.write(page.response, {{"content", content},
                             {"scheme", scheme},
                             {"move", isFirst ? "window.top.switchStep();\r\n" : ""},
                             {"fields", continued(chosen.fields)},
                             {"relations", continued(chosen.relations)}});
}

}  // namespace tarlo::control
