#pragma once
// CDONTS.NewMail: one message, sent over SMTP.

#include <chrono>
#include <memory>
#include <string>

#include "variant/object.h"

namespace tarlo::services {

struct MailServer {
  std::string url;   // smtp://HOST:PORT or smtps://HOST:PORT; "" when there is none
  std::string user;  // "" for a server that asks for none
  std::string password;
  std::chrono::seconds timeout{30};  // for the whole message
};

// Properties: From, To (addresses joined by ";" or ","), Subject, Body, BodyFormat (0: HTML, 1:
// text), MailFormat (not read: every message is MIME). Send sends it; it raises error 70 when no
// server is configured, and error 31 with the mail library's words when the server cannot be
// reached or refuses. Line ends in a header are dropped.
std::shared_ptr<Object> makeNewMail(const MailServer& server);

}  // namespace tarlo::services
