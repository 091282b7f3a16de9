#include "metadata/stored_rows.h"

#include "text/pieces.h"

namespace tarlo::metadata {

using text::joined;

frame::Rows storedRows(Page& page, Version version, std::string_view frozenStatement,
                       std::string_view currentStatement, std::string_view id) {
  return frame::rows(page,
                     joined({version == Version::Frozen ? frozenStatement : currentStatement, id}));
}

frame::Rows keyRows(Page& page, std::string_view scheme, Version version) {
  return storedRows(page, version, "select Query_Prikey from Zembra_Query_Ver2 where Zembra_ID = ",
                    "select Query_Prikey from Zembra_Query_Main where Query_ID = ", scheme);
}

frame::Rows controlRows(Page& page, std::string_view control, Version version,
                        std::string_view columns, std::string_view equals) {
  return frame::rows(page,
                     joined({"select ", columns, " from ",
                             version == Version::Frozen ? "Zembra_Query_Field_Ver2 where Zembra_ID"
                                                        : "Zembra_Query_Field where QF_ID",
                             equals, control}));
}

}  // namespace tarlo::metadata
