#include "tsql/resolve/resolver.h"

#include "tsql/resolve/rules.h"

namespace tarlo::tsql {
namespace {

class StatementResolver {
 public:
  explicit StatementResolver(Catalogue& catalogue) : batch_{catalogue, {}, {}} {}

  void operator()(ast::Statement& statement) {
    position_ = statement.position;
    std::visit([this](auto& node) { resolveNode(node); }, statement.node);
  }

  Resolved take() {
    resolved_.touched = std::move(batch_.touched);
    return std::move(resolved_);
  }

 private:
  void resolveNode(ast::Select& node) {
    resolved_.columns = resolveQuery(batch_, nullptr, node.query, QueryUse::Statement);
  }
  void resolveNode(ast::Insert& node) {
    resolveInsert(batch_, node, position_, resolved_.explicitIdentityOf);
  }
  void resolveNode(ast::Update& node) { resolveUpdate(batch_, node, position_); }
  void resolveNode(ast::Delete& node) { resolveDelete(batch_, node, position_); }
  void resolveNode(ast::AddColumn& node) { resolveAddColumn(batch_, node, position_); }
  void resolveNode(ast::CreateTable& node) { resolveCreateTable(batch_, node, position_); }
  void resolveNode(ast::CreateIndex& node) { resolveCreateIndex(batch_, node, position_); }
  void resolveNode(ast::SetOption& node) { resolveSetOption(batch_, node, position_); }
  void resolveNode(ast::Declare& node) { resolveDeclare(batch_, node, position_); }
  void resolveNode(ast::Execute& node) { resolveExecute(batch_, node); }

  BatchContext batch_;
  Position position_;
  Resolved resolved_;
};

}  // namespace

Resolved resolve(ast::Batch& batch, Catalogue& catalogue) {
  StatementResolver resolver(catalogue);
  for (ast::Statement& statement : batch.statements) resolver(statement);
  return resolver.take();
}

}  // namespace tarlo::tsql
