#pragma once
// The context of one request: the five objects of the page server and the databases. The host
// implements them over HTTP; LocalPage in memory. Nothing here is global or thread-local, so an
// operation sees only its own request.

#include <memory>
#include <string>
#include <string_view>

#include "database/database.h"
#include "frame/access.h"
#include "variant/object.h"
#include "variant/variant.h"

namespace tarlo::frame {

class Request {
 public:
  virtual ~Request() = default;
  // The first of query string, form, cookies and server variables that holds the key (any case);
  // several values under one key come joined by ", ". Empty when absent.
  virtual Variant value(std::string_view key) const = 0;
  // HTTP_REFERER and the like; Empty when absent.
  virtual Variant serverVariable(std::string_view name) const = 0;
};

// Thrown by Response::end to leave the page at once; the host catches it and still calls OnEndPage.
// Not a RuntimeError, so resume-next procedures do not swallow it.
struct PageEnd {};

class Response {
 public:
  virtual ~Response() = default;
  virtual void write(std::string_view text) = 0;  // UTF-8; the host encodes
  virtual void clear() = 0;                       // discards what is buffered
  [[noreturn]] virtual void end() = 0;
  virtual void setHeader(std::string_view name, std::string_view value) = 0;
  virtual void binaryWrite(std::string_view bytes) = 0;
  virtual void flush() = 0;
  virtual bool isClientConnected() const = 0;
  // Sets a property: Buffer, Expires, CacheControl or ContentType. Error 438 for another name.
  // Where the host has no properties they are the headers that they stand for, and every page is
  // buffered.
  virtual void put(std::string_view property, const Variant& value);
};

class Server {
 public:
  virtual ~Server() = default;
  // Error 429 for an unknown program id.
  virtual std::shared_ptr<Object> createObject(std::string_view progId) = 0;
  std::string htmlEncode(std::string_view text) const;             // & < > "
  virtual std::string urlEncode(std::string_view text) const = 0;  // in the page's code page
};

class Session {
 public:
  virtual ~Session() = default;
  virtual Variant get(std::string_view key) const = 0;  // any case; Empty when absent
  virtual void put(std::string_view key, const Variant& value) = 0;
  virtual std::string id() const = 0;
};

class Application {
 public:
  virtual ~Application() = default;
  virtual Variant get(std::string_view key) const = 0;  // any case; Empty when absent
};

// Letters, digits and the bytes of `alsoPlain` as they are, a blank as "+", every other byte as
// %XX: what urlEncode gives for text that already is in the page's code page.
std::string urlEncodeBytes(std::string_view bytes, std::string_view alsoPlain = {});

struct Page {
  Request& request;
  Response& response;
  Server& server;
  Session& session;
  Application& application;
  database::Registry& databases;
  // What the statements that run for the page may touch and cost: nothing unless somebody has said
  // so. See statement_scope.h.
  database::StatementContext statements = {};
  // Who may call what is being run now: what a page hands out for later (the rows of a list) is
  // given to no others.
  Access access = {};
};

}  // namespace tarlo::frame

namespace tarlo {
using frame::Page;
}
