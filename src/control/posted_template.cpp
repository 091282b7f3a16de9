// The statements of templates, from what their wizard posts.

#include <fmt/format.h>

#include "control/control_statement.h"
#include "control/posted_control.h"
#include "frame/data.h"
#include "metadata/dictionary.h"
#include "text/pieces.h"
#include "variant/error_state.h"

namespace tarlo::control {
namespace {

using metadata::FieldNames;

std::string trimmed(std::string_view text) {
  return std::string(text::trim(withoutLineEnds(text)));
}

class ChosenFields {
 public:
  ChosenFields(Page& page, const std::string& ids)
      : page_(page), ids_(text::split(ids, text::kPartMark)) {}

  std::ptrdiff_t upperBound() const { return static_cast<std::ptrdiff_t>(ids_.size()) - 1; }
  // Nothing for an index beyond the list and an id that is not in the dictionary.
  std::optional<FieldNames> at(std::ptrdiff_t i) const {
    if (i < 0 || i > upperBound()) return {};
    return metadata::fieldNames(page_, ids_[static_cast<std::size_t>(i)]);
  }

 private:
  Page& page_;
  std::vector<std::string_view> ids_;  // into the caller's text
};

// "" for a table that is not there or has no key.
std::string keyOf(Page& page, const std::string& table) {
  ErrorState err;
  return err.value([&] {
    const auto keys = metadata::keyFields(page, tableIdOf(page, table));
    return keys.empty() ? std::string() : keys.front().column;
  });
}

std::string firstStatement(Page& page, const FieldNames& field) {
  return fmt::format("select [{0}].[{1}],[{0}].[{2}] from [{0}] where Zembra_Flag<>0", field.table,
                     keyOf(page, field.table), field.column);
}

// Table, relating column, value, text and condition.
std::string levelOf(Page& page, const FieldNames& shown, const FieldNames& relating) {
  return fmt::format("[{0}],[{1}].[{2}],[{0}].[{3}],[{0}].[{4}],Zembra_Flag <> 0", shown.table,
                     relating.table, relating.column, keyOf(page, shown.table), shown.column);
}

}  // namespace

std::string tableIdOf(Page& page, const std::string& table) {
  return frame::rows(page,
                     "select Zembra_ID from Zembra_DataDict_Table where DDT_Name='" + table + "'")
      .front()
      .text(0);
}

ControlColumns postedTemplateColumns(Page& page) {
  ControlColumns columns = postedColumns(page);
  columns.value = trimmed(columns.value);
  columns.text = trimmed(columns.text);
  if (columns.text.starts_with(',')) columns.text = trimmed(columns.text.substr(1));
  return columns;
}

std::string templateDropDown(Page& page, const ControlColumns& columns, const std::string& filter) {
  std::string sql = twoTableStatement(page, posted(page, "id"), columns.value, columns.text);
  sql.append(conditionWord(sql)).append("Zembra_Flag <> 0");
  if (!filter.empty()) sql.append(" and ").append(filter);
  return sql;
}

std::optional<TemplateCascade> postedCascade(Page& page) {
  const std::string fieldIds = posted(page, "viewfields");
  const std::string relationIds = posted(page, "rel");
  if (fieldIds.starts_with(text::kPartMark)) return {};
  const ChosenFields fields(page, fieldIds);
  const ChosenFields relations(page, relationIds);
  const std::ptrdiff_t last = relations.upperBound();
  auto above = fields.at(last + 1);
  TemplateCascade cascade;
  cascade.statement = firstStatement(page, above.value_or(FieldNames{}));
  for (std::ptrdiff_t i = last; i >= 0; --i) {
    auto shown = fields.at(i);
    const auto relating = relations.at(i);
    if (shown && relating && above) {
      cascade.levels += levelOf(page, *shown, *relating);
      if (i > 0) cascade.levels += ";";
    }
    above = std::move(shown);
  }
  return cascade;
}

}  // namespace tarlo::control
