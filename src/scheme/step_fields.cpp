#include "scheme/step_fields.h"

#include <optional>

#include "metadata/dictionary.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using metadata::Path;

struct Field {
  std::string id;
  std::string name;
  std::string tableName;
};

// A field without a kind is neither ordinary nor the key. The names alone do not tell it from an
// ordinary one, so their row is read here.
std::optional<Field> eligibleField(Page& page, const std::string& id) {
  constexpr std::size_t kTable = 1, kName = 3, kIsSpecial = 4, kIsKey = 6;
  const frame::Rows rows = metadata::fieldNameRows(page, id);
  if (rows.empty()) return std::nullopt;
  const frame::Row row = rows.front();
  if (row.text(kIsSpecial) != "0" && row.text(kIsKey) != "1") return std::nullopt;
  return Field{id, row.text(kName), row.text(kTable)};
}

std::vector<Field> eligibleFields(Page& page, std::string_view table) {
  std::vector<Field> fields;
  for (const std::string& id : metadata::fieldIds(page, table)) {
    if (auto field = eligibleField(page, id)) fields.push_back(std::move(*field));
  }
  return fields;
}

// The tables that are reached more than once, each with "|" behind it. The list is searched as
// text, so that a table 12 is found in "112|" and then counts as reached twice: deliberate, since
// stored conditions name their via fields by it.
std::string repeatedTables(const std::vector<Path>& paths) {
  std::string repeated;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const std::string mark = paths[i].table + "|";
    if (repeated.find(mark) != std::string::npos) continue;
    for (std::size_t later = i + 1; later < paths.size(); ++later) {
      if (paths[later].table == paths[i].table) repeated += mark;
    }
  }
  return repeated;
}

void addRelated(Page& page, const Path& path, bool isRepeated, services::OptionList& options) {
  std::string via;  // its display name and "*", for a table that is reached more than once
  std::string token;
  if (isRepeated) {
    if (const auto field = metadata::fieldNames(page, path.mainField)) {
      via = field->display;
      token = "|" + path.mainField;
    }
  }
  for (const Field& field : eligibleFields(page, path.table)) {
    const std::string label =
        isRepeated ? via + "*" + field.name : "*" + field.tableName + "." + field.name;
    options.add(label, field.id + token);
  }
}

}  // namespace

bool isChange(Page& page) {
  return variant::spliced(page.request.value("type")) == "1";
}

std::vector<std::string> computedNames(std::string_view posted) {
  std::vector<std::string> names;
  for (const std::string_view item : text::split(posted, ";")) {
    names.emplace_back(item.substr(0, item.find(':')));
  }
  return names;
}

std::string unescaped(std::string_view posted) {
  return text::replace(text::replace(posted, "%25", "%"), "%2B", "+");
}

std::string filterFields(Page& page, std::string_view mainTable, std::string_view relations,
                         const std::vector<std::string>& computed) {
  services::OptionList options;
  for (std::size_t k = 0; k < computed.size(); ++k) {
    options.add(computed[k], "-" + std::to_string(k + 1));
  }
  for (const Field& field : eligibleFields(page, mainTable)) options.add(field.name, field.id);
  const std::vector<Path> paths = metadata::paths(page, mainTable, relations);
  const std::string repeated = repeatedTables(paths);
  for (const Path& path : paths) {
    const bool isRepeated = repeated.find(path.table + "|") != std::string::npos;
    addRelated(page, path, isRepeated, options);
  }
  return options.text();
}

}  // namespace tarlo::scheme
