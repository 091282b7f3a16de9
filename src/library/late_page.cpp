#include "library/library_component.h"

#include <array>
#include <vector>

#include "frame/sibling_calls.h"
#include "variant/convert.h"

namespace tarlo::library {
namespace {

using bridge::ForeignObject;
using frame::callMethod;
using Foreign = std::shared_ptr<ForeignObject>;

Variant item(ForeignObject& object, std::string_view name, std::string_view key) {
  std::array<Variant, 1> arguments = {Variant(key)};
  return object.get(name, arguments);
}

// What a host knows of a request may be an object whose default value is the text.
Variant defaultItem(ForeignObject& object, std::string_view name, std::string_view key) {
  Variant value = item(object, name, key);
  if (!value.isObject()) return value;
  const std::shared_ptr<Object>& given = value.object();
  return given == nullptr ? Variant() : given->get("");
}

class LateRequest : public frame::Request {
 public:
  explicit LateRequest(Foreign object) : object_(std::move(object)) {}
  Variant value(std::string_view key) const override { return defaultItem(*object_, "", key); }
  Variant serverVariable(std::string_view name) const override {
    return defaultItem(*object_, "ServerVariables", name);
  }

 private:
  Foreign object_;
};

class LateResponse : public frame::Response {
 public:
  explicit LateResponse(Foreign object) : object_(std::move(object)) {}
  void write(std::string_view text) override { callMethod(*object_, "Write", {text}); }
  void clear() override { callMethod(*object_, "Clear"); }
  void end() override {
    callMethod(*object_, "End");
    throw frame::PageEnd{};  // of a host whose End comes back
  }
  void setHeader(std::string_view name, std::string_view value) override {
    callMethod(*object_, "AddHeader", {name, value});
  }
  void binaryWrite(std::string_view bytes) override {
    callMethod(*object_, "BinaryWrite", {bytes});
  }
  void flush() override { callMethod(*object_, "Flush"); }
  bool isClientConnected() const override {
    return variant::toBoolean(object_->get("IsClientConnected"));
  }
  void put(std::string_view property, const Variant& value) override {
    object_->put(property, value);
  }

 private:
  Foreign object_;
};

class LateServer : public frame::Server {
 public:
  explicit LateServer(Foreign object) : object_(std::move(object)) {}
  std::shared_ptr<Object> createObject(std::string_view progId) override {
    return callMethod(*object_, "CreateObject", {progId}).object();
  }
  std::string urlEncode(std::string_view text) const override {
    return variant::spliced(callMethod(*object_, "URLEncode", {text}));
  }

 private:
  Foreign object_;
};

class LateSession : public frame::Session {
 public:
  explicit LateSession(Foreign object) : object_(std::move(object)) {}
  Variant get(std::string_view key) const override { return item(*object_, "", key); }
  void put(std::string_view key, const Variant& value) override { object_->putItem(key, value); }
  std::string id() const override { return variant::spliced(object_->get("SessionID")); }

 private:
  Foreign object_;
};

class LateApplication : public frame::Application {
 public:
  explicit LateApplication(Foreign object) : object_(std::move(object)) {}
  Variant get(std::string_view key) const override { return item(*object_, "", key); }

 private:
  Foreign object_;
};

Foreign partOf(Object& context, std::string_view name) {
  const Variant part = context.get(name);
  auto object = std::dynamic_pointer_cast<ForeignObject>(part.object());
  if (!object) throw RuntimeError(ErrorNumber::TypeMismatch, std::string(name));
  return object;
}

}  // namespace

struct LatePage::Parts {
  LateApplication application;
  LateRequest request;
  LateResponse response;
  LateServer server;
  LateSession session;
  Page page;

  Parts(Object& context, database::Registry& databases)
      : application(partOf(context, "Application")),
        request(partOf(context, "Request")),
        response(partOf(context, "Response")),
        server(partOf(context, "Server")),
        session(partOf(context, "Session")),
        page{request, response, server, session, application, databases} {}
};

LatePage::LatePage(Object& context, database::Registry& databases)
    : parts_(std::make_unique<Parts>(context, databases)) {}

LatePage::~LatePage() = default;

Page& LatePage::page() {
  return parts_->page;
}

}  // namespace tarlo::library
