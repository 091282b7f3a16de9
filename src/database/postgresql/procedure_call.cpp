#include "database/postgresql/procedure_call.h"

#include <exception>

#include "database/postgresql/values.h"
#include "variant/convert.h"

namespace tarlo::database {

Variant callProcedure(const ProcedureTable& procedures, const tsql::Translation& translation,
                      const PGresult* inputs) {
  std::vector<Variant> arguments;
  for (std::size_t i = 0; i < translation.procedureInputs.size(); ++i) {
    arguments.push_back(readField(inputs, 0, static_cast<int>(i), translation.procedureInputs[i]));
  }
  const auto& procedure = procedures.byFoldedName.at(text::foldedName(translation.procedure));
  Variant value;
  try {
    value = procedure(arguments);
  } catch (const std::exception& error) {
    throw DatabaseError(
        kStatementFailed, error.what(),
        {.engine = "postgresql", .code = 0, .sqlState = "38000", .text = error.what()});
  }
  if (value.isEmpty() || value.isNull()) return Variant(variant::Null{});
  const bool isText =
      !translation.columns.empty() && translation.columns[0].type.kind == tsql::Kind::Text;
  return isText ? Variant(variant::toText(value)) : value;
}

}  // namespace tarlo::database
