#include "frame/local_page.h"

#include "frame/statement_scope.h"
#include "variant/runtime_error.h"

namespace tarlo::frame {
namespace {

constexpr std::string_view kLocalSessionId = "1";

Variant valueOf(const ValueMap& values, std::string_view key) {
  const auto found = values.find(key);
  return found == values.end() ? Variant() : found->second;
}

class LocalRequest : public Request {
 public:
  Variant value(std::string_view key) const override {
    const auto found = values.find(key);
    return found != values.end() ? found->second : serverVariable(key);
  }
  Variant serverVariable(std::string_view name) const override {
    return valueOf(serverVariables, name);
  }

  ValueMap values;
  ValueMap serverVariables;
};

class LocalResponse : public Response {
 public:
  void write(std::string_view text) override { body.append(text); }
  void clear() override { body.resize(flushed_); }
  void end() override { throw PageEnd{}; }
  void setHeader(std::string_view name, std::string_view value) override {
    headers.insert_or_assign(std::string(name), std::string(value));
  }
  void binaryWrite(std::string_view bytes) override { body.append(bytes); }
  void flush() override { flushed_ = body.size(); }
  bool isClientConnected() const override { return true; }

  std::string body;
  std::map<std::string, std::string> headers;

 private:
  std::size_t flushed_ = 0;  // what a client would have received already
};

class LocalServer : public Server {
 public:
  std::shared_ptr<Object> createObject(std::string_view progId) override {
    const auto found = factories.find(progId);
    if (found == factories.end()) throw RuntimeError(ErrorNumber::CannotCreateObject, progId);
    return found->second();
  }
  std::string urlEncode(std::string_view text) const override { return urlEncodeBytes(text); }

  std::map<std::string, std::function<std::shared_ptr<Object>()>, NoCaseLess> factories;
};

class LocalSession : public Session {
 public:
  Variant get(std::string_view key) const override { return valueOf(values, key); }
  void put(std::string_view key, const Variant& value) override {
    values.insert_or_assign(std::string(key), value);
  }
  std::string id() const override { return std::string(kLocalSessionId); }

  ValueMap values;
};

class LocalApplication : public Application {
 public:
  Variant get(std::string_view key) const override { return valueOf(values, key); }

  ValueMap values;
};

}  // namespace

struct LocalPage::Parts {
  explicit Parts(database::Registry& databases)
      : page{request,
             response,
             server,
             session,
             application,
             databases,
             statementContext(database::StatementRights::everything())} {}

  LocalRequest request;
  LocalResponse response;
  LocalServer server;
  LocalSession session;
  LocalApplication application;
  Page page;
};

LocalPage::LocalPage(database::Registry& databases, std::string_view connectionString)
    : parts_(std::make_unique<Parts>(databases)) {
  application()["strConn"] = connectionString;
}

LocalPage::~LocalPage() = default;

Page& LocalPage::page() {
  return parts_->page;
}

ValueMap& LocalPage::request() {
  return parts_->request.values;
}

ValueMap& LocalPage::serverVariables() {
  return parts_->request.serverVariables;
}

ValueMap& LocalPage::session() {
  return parts_->session.values;
}

ValueMap& LocalPage::application() {
  return parts_->application.values;
}

void LocalPage::registerObject(std::string progId,
                               std::function<std::shared_ptr<Object>()> factory) {
  parts_->server.factories.insert_or_assign(std::move(progId), std::move(factory));
}

const std::string& LocalPage::written() const {
  return parts_->response.body;
}

const std::map<std::string, std::string>& LocalPage::headers() const {
  return parts_->response.headers;
}

}  // namespace tarlo::frame
