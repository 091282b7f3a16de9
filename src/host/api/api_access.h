#pragma once
// Who may read what over the JSON interface.

#include "host/sign_in/sign_in.h"
#include "host/site/visit.h"

namespace tarlo::host {

// Whether the request has a token and no cookie: a program sent it, and no browser did.
bool isTokenCall(const Visit& visit);

// Takes the user of a signed-in session, of a trusted proxy, or of the request's token. Throws
// ApiError 401.
void requireUser(Visit& visit, SignIn& signIn);

// Control schemes are read by forms: every user who may open any entry of the menu may read them.
// Schemes are the designers': users who may preview schemes. They throw ApiError 403.
void requireFormUser(Page& page);
void requireSchemePreview(Page& page);

}  // namespace tarlo::host
