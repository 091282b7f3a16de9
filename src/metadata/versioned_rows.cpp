#include "metadata/versioned_rows.h"

#include "metadata/statement_text.h"
#include "variant/compare.h"
#include "variant/convert.h"

namespace tarlo::metadata {

Variant versionedRows(Page& page, const Variant& isInstance, std::string_view versionStatement,
                      std::string_view currentStatement, const Variant& id) {
  const bool isVersion = variant::equals(isInstance, true);
  return rowsOrNull(
      page, joined({isVersion ? versionStatement : currentStatement, variant::spliced(id)}));
}

Variant keyRow(Page& page, const Variant& queryid, const Variant& isInstance) {
  return versionedRows(page, isInstance,
                       "select Query_Prikey from Zembra_Query_Ver2 where Zembra_ID = ",
                       "select Query_Prikey from Zembra_Query_Main where Query_ID = ", queryid);
}

Variant controlRow(Page& page, const Variant& controlid, const Variant& isInstance,
                   std::string_view columns) {
  return versionedRows(
      page, isInstance,
      joined({"select ", columns, " from Zembra_Query_Field_Ver2 where Zembra_ID = "}),
      joined({"select ", columns, " from Zembra_Query_Field where QF_ID = "}), controlid);
}

}  // namespace tarlo::metadata
