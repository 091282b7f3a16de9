#pragma once
// Translations by shape, shared by all connections of a database, so that a statement is parsed,
// resolved and printed once however many values it is sent with. Thread-safe.

#include <array>
#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/rights.h"
#include "tsql/lex/shape.h"
#include "tsql/translation.h"

namespace tarlo::database {

struct CachedTranslation {
  tsql::Translation translation;
  std::int64_t schemaVersion = 0;  // of the catalogue that it was made against
  std::string schemaOf;            // the tables that the version is of; "" for all
  Footprint footprint;             // what its text touches
};
using TranslationPtr = std::shared_ptr<const CachedTranslation>;

class TranslationCache {
 public:
  // Most shapes kept, and roughly the most bytes.
  explicit TranslationCache(std::size_t maxShapes = 8192, std::size_t maxBytes = 64u << 20);
  ~TranslationCache();
  TranslationCache(const TranslationCache&) = delete;
  TranslationCache& operator=(const TranslationCache&) = delete;

  // The translation of the statement's shape whose fixed literals have the statement's texts, or
  // null. Whether its schema version still holds is the caller's to judge.
  TranslationPtr find(const tsql::Shape& shape);
  // Keeps it, in the place of an older one with the same fixed literals. Drops what has not been
  // used for longest when the bounds are passed; one that is too big by itself is not kept.
  void insert(const tsql::Shape& shape, TranslationPtr translation);

  std::size_t shapeCount() const;

  // Translations of one shape, for one set of fixed literals each. Beyond, the oldest goes.
  static constexpr std::size_t kMaxVariants = 64;

 private:
  struct Shard;
  static constexpr std::size_t kShards = 16;
  Shard& shardOf(std::size_t hash) const;

  std::size_t maxShapes_;  // of one shard
  std::size_t maxBytes_;   // of one shard
  std::array<std::unique_ptr<Shard>, kShards> shards_;
};

}  // namespace tarlo::database
