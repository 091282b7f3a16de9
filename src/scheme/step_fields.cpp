#include "scheme/step_fields.h"

#include <optional>

#include "metadata/reader.h"
#include "services/data_sources.h"
#include "text/pieces.h"
#include "variant/convert.h"

namespace tarlo::scheme {
namespace {

using metadata::DictionaryReader;
using metadata::Path;

struct Field {
  std::string id;
  std::string name;
  std::string tableName;
};

// Ordinary fields and the key. A field without a kind is neither.
std::vector<Field> eligibleFields(DictionaryReader& dictionary, std::string_view table) {
  std::vector<Field> fields;
  for (const std::string& id : dictionary.fieldIds(table)) {
    const auto names = dictionary.fieldNames(id);
    if (!names || (!names->isOrdinary && !names->isKey)) continue;
    fields.push_back({id, names->display, names->tableDisplay});
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

void addRelated(DictionaryReader& dictionary, const Path& path, bool isRepeated,
                services::OptionList& options) {
  std::string via;  // its display name and "*", for a table that is reached more than once
  std::string token;
  if (isRepeated) {
    if (const auto field = dictionary.fieldNames(path.mainField)) {
      via = field->display;
      token = "|" + path.mainField;
    }
  }
  for (const Field& field : eligibleFields(dictionary, path.table)) {
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
  DictionaryReader dictionary(page);
  dictionary.load({.mainTable = mainTable, .relations = relations});
  for (const Field& field : eligibleFields(dictionary, mainTable)) {
    options.add(field.name, field.id);
  }
  const std::vector<Path> paths = dictionary.paths(mainTable, relations);
  const std::string repeated = repeatedTables(paths);
  for (const Path& path : paths) {
    const bool isRepeated = repeated.find(path.table + "|") != std::string::npos;
    addRelated(dictionary, path, isRepeated, options);
  }
  return options.text();
}

}  // namespace tarlo::scheme
