#pragma once
// Password hashes. One takes 64 MB and a tenth of a second on purpose, so only two are worked on
// at a time.

#include <string>
#include <string_view>

namespace tarlo::host {

inline constexpr std::size_t kLeastPassword = 8;   // characters
inline constexpr std::size_t kMostPassword = 256;  // bytes; a longer one is never right

// Text that holds its own salt and cost. Throws std::runtime_error when there is no memory for it.
std::string hashPassword(std::string_view password);

enum class PasswordCheck { Right, Wrong, Busy };
// Against a hash of hashPassword; with "" the same work is done and the answer is Wrong, so that
// the time does not tell who has a password. Busy: too many others wait.
PasswordCheck checkPassword(const std::string& hash, std::string_view password);

// SHA-256 as 64 hexadecimal digits: for random tokens, which need no slow hash.
std::string tokenHash(std::string_view token);

}  // namespace tarlo::host
