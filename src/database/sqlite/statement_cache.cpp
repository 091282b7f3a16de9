#include "database/sqlite/statement_cache.h"

namespace tarlo::database {

StatementCache::Use StatementCache::find(const CachedTranslation& translation, std::size_t step) {
  const auto found = byKey_.find(Key{&translation, step});
  if (found == byKey_.end() || found->second->inUse) return {};
  entries_.splice(entries_.begin(), entries_, found->second);
  found->second->inUse = true;
  return Use(*this, found->second);
}

StatementCache::Use StatementCache::prepare(TranslationPtr translation, std::size_t step,
                                            const std::string& text, Authorizer& authorizer,
                                            int& code) {
  Authorizer::Watch watch(authorizer);
  sqlite3_stmt* prepared = nullptr;
  // The length counts the closing zero: SQLite then makes no copy of the text to add one.
  code = sqlite3_prepare_v3(handle_, text.c_str(), static_cast<int>(text.size() + 1),
                            SQLITE_PREPARE_PERSISTENT, &prepared, nullptr);
  SqliteStatement statement(prepared);
  if (code != SQLITE_OK) return {};
  entries_.push_front(Entry{std::move(statement), std::move(translation), step, watch.take()});
  const auto entry = entries_.begin();
  Use use(*this, entry);
  entry->kept = byKey_.emplace(Key{entry->translation.get(), step}, entry).second;
  if (byKey_.size() > capacity_) forgetOldest();
  return use;
}

void StatementCache::forgetOldest() {
  for (auto entry = entries_.end(); entry != entries_.begin();) {
    --entry;
    if (!entry->kept || entry->inUse) continue;
    byKey_.erase(Key{entry->translation.get(), entry->step});
    entries_.erase(entry);
    return;
  }
}

void StatementCache::giveBack(Entries::iterator entry) {
  if (!entry->kept) {
    entries_.erase(entry);
    return;
  }
  sqlite3_reset(entry->statement.get());
  sqlite3_clear_bindings(entry->statement.get());
  entry->inUse = false;
}

void StatementCache::clear() {
  byKey_.clear();
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    entry->kept = false;
    entry = entry->inUse ? std::next(entry) : entries_.erase(entry);
  }
}

}  // namespace tarlo::database
