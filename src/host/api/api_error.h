#pragma once
// What the JSON interface refuses with.

#include <exception>
#include <string>
#include <string_view>

namespace tarlo::host {

class ApiError : public std::exception {
 public:
  ApiError(unsigned httpStatus, std::string_view codeWord, std::string sentence)
      : status(httpStatus), code(codeWord), message(std::move(sentence)) {}
  const char* what() const noexcept override { return message.c_str(); }

  const unsigned status;
  const std::string code;     // one word, for programs
  const std::string message;  // for people; holds nothing of the engine
};

inline ApiError internalFailure() {
  return {500, "failed", "The request failed; the log has the reason."};
}
inline ApiError badRequest(std::string message) {
  return {400, "bad_request", std::move(message)};
}
inline ApiError notFound(std::string message) {
  return {404, "not_found", std::move(message)};
}

}  // namespace tarlo::host
