#pragma once
// JSON over HTTP for forms of today, beside the pages: a control's description and its rows, a
// scheme's description. Read only. docs/api.md tells what it gives; /api/openapi.json is the same
// for programs.

#include <string_view>

#include "host/api/api_error.h"
#include "host/sign_in/sign_in.h"
#include "host/site/visit.h"

namespace tarlo::host {

bool isApiPath(std::string_view path);

// Answers the visit: for a signed-in session, or for the user of the token in the header
// "Authorization: Bearer TOKEN", who has to have the platform's permission. Throws ApiError.
void answerApi(Visit& visit, SignIn& signIn);

// A refusal, as a JSON object with a code and a sentence.
void writeApiError(Visit& visit, const ApiError& error);

}  // namespace tarlo::host
