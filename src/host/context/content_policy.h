#pragma once
// Content-Security-Policy of what the server sends: what a browser runs and loads for an answer. A
// text that got into a page as markup finds there what the page itself needs, and no more.

#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::host {

inline constexpr std::string_view kContentPolicy = "Content-Security-Policy";

// Of the platform's pages, whose text is fixed: scripts, handlers and styles stand in it, and the
// script library runs the scripts of lists and the answers of hidden frames through eval.
std::string_view platformPolicy();
// Of answers that are no page: JSON, CSV, scripts, pictures, plain text. Opened as if they were
// one, they run and load nothing.
std::string_view dataPolicy();

// The server's own pages have scripts in elements with a nonce only, neither handlers nor styles in
// their markup, and no eval.
enum class OwnPage {
  Plain,
  // Entries of the menu may lead to pages of other sites, which open in a frame of it.
  Desktop,
  // A form with the platform's tags, whose elements bring styles of their own.
  Tags,
  // The platform's pages paint it with markup of theirs, handlers and styles included. Elements
  // that come so run no script.
  Pane
};
// Gives the answer the policy of such a page, and the nonce, another one each time.
std::string beginOwnPage(frame::Response& response, OwnPage page = OwnPage::Plain);

}  // namespace tarlo::host
