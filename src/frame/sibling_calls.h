#pragma once
// Calls on the components that a page creates beside itself: arguments as plain values, and the
// page context handed over.

#include <array>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

#include "frame/context_object.h"
#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::frame {

// What the method writes into its arguments is dropped. Raises what the object raises.
Variant callMethod(Object& object, std::string_view name,
                   std::initializer_list<Variant> arguments = {});

// What a component beside takes of the page, in its order. A grid of another library gets what it
// was written for, so the number counts.
inline constexpr std::array kGridContext = {ContextPart::Response, ContextPart::Session,
                                            ContextPart::Server, ContextPart::Application,
                                            ContextPart::Request};
inline constexpr std::array kResponseAndSession = {ContextPart::Response, ContextPart::Session};
inline constexpr std::array kSessionAndResponse = {ContextPart::Session, ContextPart::Response};

// Calls ASPConnect with these parts of the page context. The object may keep them for as long as
// the page lasts.
void connectToPage(Page& page, Object& object, std::span<const ContextPart> parts);

// A script that shows the rows of a condition in the page's grid, under a caption, of which <b> is
// markup. The grid puts it into a double-quoted script string, so its own double quotes come with a
// backslash; both texts are strings in that string.
std::string gridViewScript(std::string_view condition, std::string_view caption);

}  // namespace tarlo::frame
