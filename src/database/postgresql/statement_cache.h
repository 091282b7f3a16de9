#pragma once
// The prepared statements of one session by name, by the step of the translation that they were
// made of. The server prepares them anew by itself when tables change, so they stay.

#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "database/translation_cache.h"

namespace tarlo::database {

class PreparedStatements {
 public:
  static constexpr std::size_t kCapacity = 256;

  struct Key {
    const CachedTranslation* translation = nullptr;
    std::size_t step = 0;
    bool isWide = false;  // for integers of 64 bits
    bool operator==(const Key&) const = default;
  };

  // The name of a kept statement; nothing when there is none. Valid until the next keep().
  const std::string* find(const Key& key);
  std::string newName() { return "t" + std::to_string(++made_); }
  // The server has prepared it.
  void keep(const Key& key, TranslationPtr translation, std::string name);
  // Names that the server may forget: what was not used for longest, beyond the capacity.
  std::vector<std::string> takeForgotten() { return std::exchange(forgotten_, {}); }

 private:
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<const void*>{}(key.translation) ^ (key.step << 2) ^
             static_cast<std::size_t>(key.isWide);
    }
  };
  struct Entry {
    Key key;
    TranslationPtr translation;  // so that its address is not used again
    std::string name;
  };

  std::list<Entry> entries_;  // most recently used first
  std::unordered_map<Key, std::list<Entry>::iterator, KeyHash> byKey_;
  std::vector<std::string> forgotten_;
  std::size_t made_ = 0;
};

}  // namespace tarlo::database
