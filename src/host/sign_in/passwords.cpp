#include "host/sign_in/passwords.h"

#include <sodium.h>

#include <array>
#include <chrono>
#include <semaphore>
#include <stdexcept>

namespace tarlo::host {

namespace {

constexpr std::chrono::seconds kLongestWait{5};

std::counting_semaphore<2>& hashPlaces() {
  static std::counting_semaphore<2> places(2);
  return places;
}

void startSodium() {
  static const bool started = sodium_init() >= 0;
  if (!started) throw std::runtime_error("the password library cannot start");
}

class HashPlace {
 public:
  HashPlace() : held_(hashPlaces().try_acquire_for(kLongestWait)) {}
  ~HashPlace() {
    if (held_) hashPlaces().release();
  }
  HashPlace(const HashPlace&) = delete;
  HashPlace& operator=(const HashPlace&) = delete;
  bool isHeld() const { return held_; }

 private:
  bool held_;
};

std::string hashHolding(std::string_view password) {
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (crypto_pwhash_str(hash.data(), password.data(), password.size(),
                        crypto_pwhash_OPSLIMIT_INTERACTIVE,
                        crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
    throw std::runtime_error("there is not enough memory to hash a password");
  }
  return hash.data();
}

// A hash that no password fits in practice, of the cost of the others.
const std::string& standInHash() {
  static const std::string hash = [] {
    std::array<unsigned char, 32> random{};
    randombytes_buf(random.data(), random.size());
    return hashHolding({reinterpret_cast<const char*>(random.data()), random.size()});
  }();
  return hash;
}

}  // namespace

std::string hashPassword(std::string_view password) {
  startSodium();
  const HashPlace place;
  if (!place.isHeld()) throw std::runtime_error("too many passwords are being hashed");
  return hashHolding(password);
}

PasswordCheck checkPassword(const std::string& hash, std::string_view password) {
  startSodium();
  const HashPlace place;
  if (!place.isHeld()) return PasswordCheck::Busy;
  const std::string& against = hash.empty() ? standInHash() : hash;
  const bool fits =
      crypto_pwhash_str_verify(against.c_str(), password.data(), password.size()) == 0;
  return fits && !hash.empty() ? PasswordCheck::Right : PasswordCheck::Wrong;
}

std::string tokenHash(std::string_view token) {
  std::array<unsigned char, crypto_hash_sha256_BYTES> digest{};
  crypto_hash_sha256(digest.data(), reinterpret_cast<const unsigned char*>(token.data()),
                     token.size());
  std::array<char, crypto_hash_sha256_BYTES * 2 + 1> text{};
  sodium_bin2hex(text.data(), text.size(), digest.data(), digest.size());
  return text.data();
}

}  // namespace tarlo::host
