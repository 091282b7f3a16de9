#include "metadata/version_lookups.h"

#include "metadata/statement_text.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::metadata {

Variant verID2ZembraID(Page& page, const Variant& qfid, const Variant& queryid) {
  const Variant rows = rowsOrNull(
      page, joined({"select Zembra_ID from Zembra_Query_Field_Ver2 where QF_ID=",
                    variant::spliced(qfid), " and QF_NameID=", variant::spliced(queryid)}));
  return rows.isArray() ? rows.array().at(0, 0) : Variant(-1);
}

}  // namespace tarlo::metadata
