#pragma once
// The addresses of the sign-in: /sign-in and /sign-out.

#include <string>
#include <string_view>

#include "host/sign_in/sign_in.h"
#include "host/site/visit.h"

namespace tarlo::host {

// GET shows the form or takes a one-time link; POST takes user and password.
void signInPage(Visit& visit, SignIn& signIn, const Config& config);
void signOutPage(Visit& visit);
// The form in the place of a page that needs a signed-in user; it leads back to that page.
void askToSignIn(Visit& visit);
// Ends a session whose user has changed, and signs in whom a trusted proxy names. True when
// somebody is signed in then.
bool takeTrustedUser(Visit& visit, SignIn& signIn);

// An address of this site, or "" for anything that would lead to another one.
std::string_view localAddress(std::string_view address);

}  // namespace tarlo::host
