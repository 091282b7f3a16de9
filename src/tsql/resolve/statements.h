#pragma once
// Statements round the queries: what may be written where, and what they define.

#include "tsql/ast/statement.h"
#include "tsql/resolve/context.h"

namespace tarlo::tsql {

// The identity column is named by the INSERT: its table goes into `explicitIdentityOf`.
void resolveInsert(BatchContext& batch, ast::Insert& insert, Position position,
                   std::string& explicitIdentityOf);
void resolveUpdate(BatchContext& batch, ast::Update& update, Position position);
void resolveDelete(BatchContext& batch, ast::Delete& remove, Position position);

void resolveCreateTable(BatchContext& batch, ast::CreateTable& create, Position position);
void resolveAddColumn(BatchContext& batch, ast::AddColumn& add, Position position);
void resolveCreateIndex(BatchContext& batch, const ast::CreateIndex& create, Position position);

void resolveSetOption(BatchContext& batch, const ast::SetOption& option, Position position);
void resolveDeclare(BatchContext& batch, const ast::Declare& declare, Position position);
void resolveExecute(BatchContext& batch, ast::Execute& execute);

}  // namespace tarlo::tsql
