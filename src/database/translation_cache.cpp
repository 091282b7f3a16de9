#include "database/translation_cache.h"

#include <algorithm>

namespace tarlo::database {
namespace {

struct HashedKey {
  std::string_view key;
  std::size_t hash;
};

struct Variants {
  std::string key;
  std::size_t hash = 0;
  std::size_t bytes = 0;
  std::vector<TranslationPtr> made;  // oldest first
};

bool matches(const tsql::Translation& translation, const tsql::Shape& shape) {
  return std::all_of(translation.fixed.begin(), translation.fixed.end(), [&](const auto& fixed) {
    const auto ordinal = static_cast<std::size_t>(fixed.ordinal);
    return ordinal < shape.literals.size() && shape.literals[ordinal].text == fixed.text;
  });
}

// An estimate: what the texts take, and a little for what is round them.
std::size_t bytesOf(const tsql::Translation& translation) {
  std::size_t bytes = 512 + translation.identityStep.text.size();
  for (const auto& step : translation.steps) {
    bytes += step.text.size() + step.parameters.size() * sizeof(tsql::Parameter);
  }
  for (const auto& column : translation.columns) bytes += sizeof(column) + column.title.size();
  for (const auto& fixed : translation.fixed) bytes += sizeof(fixed) + fixed.text.size();
  return bytes;
}

}  // namespace

struct TranslationCache::Shard {
  // The key's view points into the list's element, which never moves; so a look-up by the view of a
  // statement's shape allocates nothing and hashes once.
  struct Hash {
    std::size_t operator()(const HashedKey& key) const { return key.hash; }
  };
  struct Equal {
    bool operator()(const HashedKey& a, const HashedKey& b) const { return a.key == b.key; }
  };
  using Order = std::list<Variants>;  // most recently used first

  std::mutex mutex;
  Order order;
  std::unordered_map<HashedKey, Order::iterator, Hash, Equal> byKey;
  std::size_t bytes = 0;

  Variants* find(const HashedKey& key) {
    const auto found = byKey.find(key);
    if (found == byKey.end()) return nullptr;
    order.splice(order.begin(), order, found->second);
    return &*found->second;
  }

  Variants& make(const HashedKey& key) {
    order.push_front({std::string(key.key), key.hash, key.key.size(), {}});
    bytes += key.key.size();
    byKey.emplace(HashedKey{order.front().key, key.hash}, order.begin());
    return order.front();
  }

  void add(Variants& variants, TranslationPtr translation) {
    const std::size_t size = bytesOf(translation->translation);
    variants.made.push_back(std::move(translation));
    variants.bytes += size;
    bytes += size;
  }

  void remove(Variants& variants, std::vector<TranslationPtr>::iterator which) {
    const std::size_t size = bytesOf((*which)->translation);
    variants.made.erase(which);
    variants.bytes -= size;
    bytes -= size;
  }

  void dropOldest() {
    bytes -= order.back().bytes;
    byKey.erase(HashedKey{order.back().key, order.back().hash});
    order.pop_back();
  }
};

TranslationCache::TranslationCache(std::size_t maxShapes, std::size_t maxBytes)
    : maxShapes_(std::max<std::size_t>(1, maxShapes / kShards)), maxBytes_(maxBytes / kShards) {
  for (auto& shard : shards_) shard = std::make_unique<Shard>();
}

TranslationCache::~TranslationCache() = default;

TranslationCache::Shard& TranslationCache::shardOf(std::size_t hash) const {
  // The upper bits: the lower ones choose the bucket inside the shard.
  return *shards_[(hash >> 56) % kShards];
}

TranslationPtr TranslationCache::find(const tsql::Shape& shape) {
  const HashedKey key{shape.key, std::hash<std::string_view>{}(shape.key)};
  Shard& shard = shardOf(key.hash);
  const std::lock_guard lock(shard.mutex);
  const Variants* variants = shard.find(key);
  if (!variants) return nullptr;
  for (const auto& translation : variants->made) {
    if (matches(translation->translation, shape)) return translation;
  }
  return nullptr;
}

void TranslationCache::insert(const tsql::Shape& shape, TranslationPtr translation) {
  const HashedKey key{shape.key, std::hash<std::string_view>{}(shape.key)};
  if (shape.key.size() + bytesOf(translation->translation) > maxBytes_ / 2) return;
  Shard& shard = shardOf(key.hash);
  const std::lock_guard lock(shard.mutex);
  Variants* variants = shard.find(key);
  if (!variants) variants = &shard.make(key);
  const auto same =
      std::find_if(variants->made.begin(), variants->made.end(),
                   [&](const TranslationPtr& made) { return matches(made->translation, shape); });
  if (same != variants->made.end()) {
    shard.remove(*variants, same);
  } else if (variants->made.size() >= kMaxVariants) {
    shard.remove(*variants, variants->made.begin());
  }
  shard.add(*variants, std::move(translation));
  while (shard.order.size() > 1 && (shard.order.size() > maxShapes_ || shard.bytes > maxBytes_)) {
    shard.dropOldest();
  }
}

std::size_t TranslationCache::shapeCount() const {
  std::size_t count = 0;
  for (const auto& shard : shards_) {
    const std::lock_guard lock(shard->mutex);
    count += shard->order.size();
  }
  return count;
}

}  // namespace tarlo::database
