#include "database/postgresql/statement_cache.h"

#include <utility>

namespace tarlo::database {

const std::string* PreparedStatements::find(const Key& key) {
  const auto found = byKey_.find(key);
  if (found == byKey_.end()) return nullptr;
  entries_.splice(entries_.begin(), entries_, found->second);
  return &found->second->name;
}

void PreparedStatements::keep(const Key& key, TranslationPtr translation, std::string name) {
  if (byKey_.contains(key)) return forgotten_.push_back(std::move(name));
  entries_.push_front({key, std::move(translation), std::move(name)});
  byKey_[key] = entries_.begin();
  if (byKey_.size() <= kCapacity) return;
  forgotten_.push_back(std::move(entries_.back().name));
  byKey_.erase(entries_.back().key);
  entries_.pop_back();
}

}  // namespace tarlo::database
