#pragma once
// Holds a connection's statements to the rights of whoever borrowed it. Engine-neutral: it judges
// what the front end read in a text and what an engine reported of its own; an engine's connection
// asks it at both places.

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "database/statement_context.h"
#include "tsql/catalogue.h"

namespace tarlo::database {

struct CachedTranslation;

class Guard {
 public:
  // Read at every statement; nothing allows everything.
  void setContext(const StatementContext* context) { context_ = context; }
  const StatementContext* context() const { return context_; }

  // The T-SQL that lists the business tables, "" where the rights ask for no list.
  std::string_view listQuery() const;
  void setListed(std::unordered_set<std::string> foldedNames) { listed_ = std::move(foldedNames); }

  // Raise DatabaseError (kForbidden) and tell the refusal log. The first names the place in the
  // text, for which it is read once more: a kept translation knows the places of another text.
  void checkText(const CachedTranslation& translation, std::string_view sql,
                 tsql::Catalogue& catalogue) const;
  void checkEngine(const Footprint& footprint, std::string_view sql) const;

  bool allows(const Footprint& footprint) const;
  bool mayTouch(tsql::Access access, std::string_view name) const;
  // Whether rows of any table may be deleted. A connection that nobody has narrowed deletes none.
  bool mayDelete() const { return context_ != nullptr && !context_->rights.deletes.empty(); }

 private:
  bool isAlsoReadable(std::string_view name) const;
  [[noreturn]] void refuse(const std::string& reason, std::string_view engine,
                           std::string_view sql) const;

  const StatementContext* context_ = nullptr;
  std::unordered_set<std::string> listed_;
};

}  // namespace tarlo::database
