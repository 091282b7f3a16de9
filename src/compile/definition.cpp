#include "compile/definition.h"

#include <array>

#include "compile/assembly.h"
#include "variant/convert.h"

namespace tarlo::compile {
namespace {

struct Choice {
  std::string_view name;
  Variant (*compile)(Page&, const Definition&);
};

// The index has a bit for each part: 4 statistics, 2 computed fields, 1 filter.
using Def = Definition;
constexpr std::array<Choice, 8> kChoices = {{
    {"getQuery_None", [](Page& p, const Def& d) { return getQuery_None(p, d.sTable, d.rel); }},
    {"getQuery_Fil",
     [](Page& p, const Def& d) { return getQuery_Fil(p, d.sTable, d.filter, d.rel); }},
    {"getQuery_Vir",
     [](Page& p, const Def& d) { return getQuery_Vir(p, d.sTable, d.computed, d.rel); }},
    {"getQuery_Vir_Fil",
     [](Page& p, const Def& d) {
       return getQuery_Vir_Fil(p, d.sTable, d.computed, d.filter, d.rel);
     }},
    {"getQuery_Sta",
     [](Page& p, const Def& d) { return getQuery_Sta(p, d.sTable, d.stats, d.group, d.rel); }},
    {"getQuery_Fil_Sta",
     [](Page& p, const Def& d) {
       return getQuery_Fil_Sta(p, d.sTable, d.filter, d.stats, d.group, d.rel);
     }},
    {"getQuery_Vir_Sta",
     [](Page& p, const Def& d) {
       return getQuery_Vir_Sta(p, d.sTable, d.computed, d.stats, d.group, d.rel);
     }},
    {"getQuery_Vir_Fil_Sta",
     [](Page& p, const Def& d) {
       return getQuery_Vir_Fil_Sta(p, d.sTable, d.computed, d.filter, d.stats, d.group, d.rel);
     }},
}};

const Choice& choiceFor(const Definition& definition) {
  const auto present = [](const Variant& part) { return !variant::spliced(part).empty(); };
  const std::size_t index = (present(definition.stats) ? 4u : 0u) |
                            (present(definition.computed) ? 2u : 0u) |
                            (present(definition.filter) ? 1u : 0u);
  return kChoices[index];
}

}  // namespace

std::string_view operationFor(const Definition& definition) {
  return choiceFor(definition).name;
}

Variant compileDefinition(Page& page, const Definition& definition) {
  return choiceFor(definition).compile(page, definition);
}

}  // namespace tarlo::compile
