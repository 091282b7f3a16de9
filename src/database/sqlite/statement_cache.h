#pragma once
// The prepared statements of one connection, by the step of the translation that they were made of.

#include <cstddef>
#include <list>
#include <unordered_map>

#include <sqlite3.h>

#include "database/sqlite/authorizer.h"
#include "database/sqlite/open.h"
#include "database/translation_cache.h"

namespace tarlo::database {

class StatementCache {
  struct Entry;

 public:
  static constexpr std::size_t kCapacity = 256;

  explicit StatementCache(sqlite3* handle, std::size_t capacity = kCapacity)
      : handle_(handle), capacity_(capacity) {}
  StatementCache(const StatementCache&) = delete;
  StatementCache& operator=(const StatementCache&) = delete;

  // A statement in use. Goes back reset and without bindings when it is left; the translation
  // that it was made of is kept as long.
  class Use {
   public:
    Use() = default;
    Use(Use&& other) noexcept
        : cache_(std::exchange(other.cache_, nullptr)), entry_(other.entry_) {}
    Use& operator=(Use&&) = delete;
    ~Use() {
      if (cache_) cache_->giveBack(entry_);
    }
    explicit operator bool() const { return cache_ != nullptr; }
    sqlite3_stmt* get() const { return entry_->statement.get(); }
    const TranslationPtr& translation() const { return entry_->translation; }
    // What the engine said that it touches.
    const Footprint& footprint() const { return entry_->footprint; }

   private:
    friend class StatementCache;
    Use(StatementCache& cache, std::list<Entry>::iterator entry) : cache_(&cache), entry_(entry) {}
    StatementCache* cache_ = nullptr;
    std::list<Entry>::iterator entry_;
  };

  // The kept statement, unless it is in use already. Else an empty Use.
  Use find(const CachedTranslation& translation, std::size_t step);
  // Prepares a statement, under the authorizer's watch, and keeps it for the next time if none is
  // kept for the step. `code` is SQLite's; the Use is empty unless it is SQLITE_OK.
  Use prepare(TranslationPtr translation, std::size_t step, const std::string& text,
              Authorizer& authorizer, int& code);
  // Forgets all; those in use go when they are given back.
  void clear();

 private:
  struct Key {
    const CachedTranslation* translation;
    std::size_t step;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<const void*>{}(key.translation) ^ (key.step << 1);
    }
  };
  struct Entry {
    SqliteStatement statement;
    TranslationPtr translation;
    std::size_t step = 0;
    Footprint footprint;
    bool inUse = true;
    bool kept = false;  // by `byKey_`
  };
  using Entries = std::list<Entry>;

  void giveBack(Entries::iterator entry);
  void forgetOldest();

  sqlite3* handle_;
  std::size_t capacity_;
  Entries entries_;  // most recently used first
  std::unordered_map<Key, Entries::iterator, KeyHash> byKey_;
};

}  // namespace tarlo::database
