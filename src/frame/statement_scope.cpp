#include "frame/statement_scope.h"

namespace tarlo::frame {

database::StatementContext statementContext(const database::StatementRights& rights) {
  database::StatementContext context;
  context.rights = rights;
  context.listedTables = "select DDT_Name from Zembra_DataDict_Table where Zembra_Flag <> 0";
  return context;
}

}  // namespace tarlo::frame
