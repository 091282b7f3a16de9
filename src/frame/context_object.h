#pragma once
// A page context as late-bound values: what hosts hand to OnStartPage, and what pages hand to the
// ASPConnect of a sibling component. Components of this program take the page out of it; those of
// other libraries call the members of the page server's objects by name.

#include "frame/page.h"
#include "variant/object.h"

namespace tarlo::frame {

// Scripting is the context itself, whose properties are the other five.
enum class ContextPart { Scripting, Application, Request, Response, Server, Session };

class ContextObject : public Object {
 public:
  explicit ContextObject(Page& page, ContextPart part = ContextPart::Scripting)
      : page_(page), part_(part) {}
  Page& page() const { return page_; }
  ContextPart part() const { return part_; }

  // "" is the default member: Request(key), Session(key), Application(key).
  Variant get(std::string_view name, std::span<Variant> arguments = {}) override;
  // Of a session the value of the key `name`; of a response its Buffer, Expires, CacheControl and
  // ContentType.
  void put(std::string_view name, const Variant& value) override;
  Variant call(std::string_view name, std::span<Variant> arguments) override;

 private:
  Variant getPart(std::string_view name) const;
  Variant callResponse(std::string_view name, std::span<Variant> arguments);
  Variant callServer(std::string_view name, std::span<Variant> arguments);

  Page& page_;
  ContextPart part_;
};

}  // namespace tarlo::frame
