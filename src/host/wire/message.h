#pragma once
// A request and its answer as the wire has them: bytes and headers. What they mean to a page is the
// request object's business, so that neither side needs the other in its tests.

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarlo::host {

using Header = std::pair<std::string, std::string>;

struct WireRequest {
  std::string
      id;  // unique in the life of the server; names the request in the log and on error pages
  std::string method;
  std::string target;  // as sent: path and query, nothing decoded
  std::vector<Header> headers;
  std::string body;
  std::string remoteAddress;
  std::uint16_t remotePort = 0;
  bool isSecure = false;  // came over TLS

  // The first header of that name (any case), "" when there is none.
  std::string_view header(std::string_view name) const;
  std::string_view path() const;   // of the target, up to its "?"
  std::string_view query() const;  // of the target, behind its "?"; "" when there is none
};

// The answer, used on the thread that handles the request. Either `send` once, or `flush` any
// number of times and then `finish`; the server finishes what a handler leaves open.
class WireResponse {
 public:
  virtual ~WireResponse() = default;
  // Before the first byte goes out; later calls are ignored. An answer without a
  // Content-Security-Policy goes out with one that allows nothing.
  virtual void setStatus(unsigned status) = 0;
  virtual void addHeader(std::string name, std::string value) = 0;
  // The whole body, with its length in the header.
  virtual void send(std::string body) = 0;
  // Sends what is given now, as a chunk. False when the client has gone or took too long: nothing
  // more will arrive.
  virtual bool flush(std::string_view bytes) = 0;
  virtual bool isStarted() const = 0;
  virtual bool isClientConnected() = 0;
};

// Runs on one thread from begin to end. An exception that leaves it ends the connection.
using Handler = std::function<void(const WireRequest&, WireResponse&)>;

// What a request waits for before it runs.
enum class Lane {
  Immediate,  // nothing: it is quick
  SignIn,     // a place of its own few, which operations cannot take
  Operation   // a place among the operations
};

// Whose operations are counted together; "" is nobody's.
struct Visitor {
  std::string session, user;
};

// The reason phrase of a status; "" for an unknown one.
std::string_view reasonOf(unsigned status);

}  // namespace tarlo::host
