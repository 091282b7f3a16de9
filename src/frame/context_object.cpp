#include "frame/context_object.h"

#include <array>

#include "text/fold.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace tarlo::frame {
namespace {

using text::equalsNoCase;

[[noreturn]] void raiseUnknown(std::string_view name) {
  throw RuntimeError(ErrorNumber::NoSuchMember, std::string(name));
}

std::string onlyArgument(std::string_view name, std::span<Variant> arguments) {
  if (arguments.size() != 1) {
    throw RuntimeError(ErrorNumber::WrongArgumentCount, std::string(name));
  }
  return variant::spliced(arguments[0]);
}

struct NamedPart {
  std::string_view name;
  ContextPart part;
};
constexpr std::array<NamedPart, 5> kParts = {{{"Application", ContextPart::Application},
                                              {"Request", ContextPart::Request},
                                              {"Response", ContextPart::Response},
                                              {"Server", ContextPart::Server},
                                              {"Session", ContextPart::Session}}};

}  // namespace

Variant ContextObject::getPart(std::string_view name) const {
  for (const NamedPart& named : kParts) {
    if (!equalsNoCase(named.name, name)) continue;
    return Variant(std::shared_ptr<Object>(std::make_shared<ContextObject>(page_, named.part)));
  }
  raiseUnknown(name);
}

Variant ContextObject::get(std::string_view name, std::span<Variant> arguments) {
  switch (part_) {
    case ContextPart::Scripting:
      return getPart(name);
    case ContextPart::Application:
      if (name.empty()) return page_.application.get(onlyArgument(name, arguments));
      break;
    case ContextPart::Request:
      if (name.empty()) return page_.request.value(onlyArgument(name, arguments));
      if (equalsNoCase(name, "ServerVariables")) {
        return page_.request.serverVariable(onlyArgument(name, arguments));
      }
      break;
    case ContextPart::Session:
      if (name.empty()) return page_.session.get(onlyArgument(name, arguments));
      if (equalsNoCase(name, "SessionID")) return Variant(page_.session.id());
      break;
    case ContextPart::Response:
      if (equalsNoCase(name, "IsClientConnected")) return page_.response.isClientConnected();
      break;
    case ContextPart::Server:
      break;
  }
  // A script language does not tell a property with arguments from a method.
  return call(name, arguments);
}

void ContextObject::put(std::string_view name, const Variant& value) {
  if (part_ == ContextPart::Session) return page_.session.put(name, value);
  if (part_ != ContextPart::Response) raiseUnknown(name);
  page_.response.put(name, value);
}

Variant ContextObject::call(std::string_view name, std::span<Variant> arguments) {
  if (part_ == ContextPart::Response) return callResponse(name, arguments);
  if (part_ == ContextPart::Server) return callServer(name, arguments);
  raiseUnknown(name);
}

Variant ContextObject::callResponse(std::string_view name, std::span<Variant> arguments) {
  Response& response = page_.response;
  if (equalsNoCase(name, "Write")) {
    response.write(onlyArgument(name, arguments));
  } else if (equalsNoCase(name, "BinaryWrite")) {
    response.binaryWrite(onlyArgument(name, arguments));
  } else if (equalsNoCase(name, "AddHeader") && arguments.size() == 2) {
    response.setHeader(variant::spliced(arguments[0]), variant::spliced(arguments[1]));
  } else if (equalsNoCase(name, "Clear")) {
    response.clear();
  } else if (equalsNoCase(name, "Flush")) {
    response.flush();
  } else if (equalsNoCase(name, "End")) {
    response.end();
  } else {
    raiseUnknown(name);
  }
  return {};
}

Variant ContextObject::callServer(std::string_view name, std::span<Variant> arguments) {
  Server& server = page_.server;
  if (equalsNoCase(name, "CreateObject")) {
    return Variant(server.createObject(onlyArgument(name, arguments)));
  }
  if (equalsNoCase(name, "HTMLEncode")) {
    return Variant(server.htmlEncode(onlyArgument(name, arguments)));
  }
  if (equalsNoCase(name, "URLEncode")) {
    return Variant(server.urlEncode(onlyArgument(name, arguments)));
  }
  raiseUnknown(name);
}

}  // namespace tarlo::frame
