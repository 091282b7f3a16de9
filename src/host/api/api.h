#pragma once
// JSON over HTTP for forms of today, beside the pages: a control's description and its rows, a
// scheme's description. Read only. docs/api.md tells what it gives; /api/openapi.json is the same
// for programs.

#include <exception>
#include <string>
#include <string_view>

#include "host/sign_in/sign_in.h"
#include "host/site/visit.h"

namespace tarlo::host {

// What the interface refuses with.
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

bool isApiPath(std::string_view path);

// Answers the visit: for a signed-in session, or for the user of the token in the header
// "Authorization: Bearer TOKEN", who has to have the platform's permission. Throws ApiError.
void answerApi(Visit& visit, SignIn& signIn);

// Whether the request has a token and no cookie: a program sent it, and no browser did.
bool isTokenCall(const Visit& visit);

// A refusal, as a JSON object with a code and a sentence.
void writeApiError(Visit& visit, const ApiError& error);

}  // namespace tarlo::host
