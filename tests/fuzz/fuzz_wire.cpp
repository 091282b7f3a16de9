// Requests from any bytes, cut anywhere: nothing is thrown, what is held stays within the bounds,
// and the result does not depend on the cuts. The first byte chooses the cuts, the second the
// bounds.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/wire/request_parser.h"
#include "text/fold.h"

namespace {

using tarlo::host::RequestParser;
using tarlo::host::WireRequest;

void require(bool holds) {
  if (!holds) std::abort();
}

struct Bounds {
  std::size_t head, body;
};

// All requests of a connection, written out, and how it ended.
struct Reading {
  std::string requests;
  unsigned refusal = 0;
  std::size_t taken = 0;
  bool operator==(const Reading&) const = default;
};

void checkHeld(RequestParser& parser, const Bounds& bounds) {
  const WireRequest& request = parser.request();
  std::size_t held = request.method.size() + request.target.size();
  for (const auto& [name, value] : request.headers) held += name.size() + value.size();
  require(held <= bounds.head);
  require(request.headers.size() <= RequestParser::kMostFields);
  require(request.body.size() <= bounds.body);
}

void writeOut(RequestParser& parser, std::string& out) {
  const WireRequest& request = parser.request();
  out += request.method + ' ' + request.target + (parser.isHttp11() ? " 1" : " 0");
  out += parser.keepsAlive() ? "k" : "c";
  for (const auto& [name, value] : request.headers) out += '\n' + name + '=' + value;
  out += "\n\n" + request.body + '\n';
}

// What a complete request must be, whatever it was read from.
void checkComplete(RequestParser& parser) {
  const WireRequest& request = parser.request();
  require(!request.method.empty() && !request.target.empty());
  require(request.target.find_first_of(std::string_view(" \r\n\0", 4)) == std::string::npos);
  int hosts = 0;
  for (const auto& [name, value] : request.headers) {
    require(value.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos);
    require(name.find_first_of(": \t\r\n") == std::string::npos);
    hosts += tarlo::text::equalsNoCase(name, "host") ? 1 : 0;
  }
  require(hosts == 1 || (hosts == 0 && !parser.isHttp11()));
}

// `step` gives the size of each piece in turn.
template <class Step>
Reading read(std::string_view bytes, const Bounds& bounds, Step step) {
  Reading reading;
  std::size_t end = 0;
  std::optional<RequestParser> parser;
  for (;;) {
    if (!parser) parser.emplace(bounds.head, bounds.body);
    const std::string_view buffered = bytes.substr(reading.taken, end - reading.taken);
    const std::size_t taken = parser->take(buffered);
    require(taken <= buffered.size());
    reading.taken += taken;
    checkHeld(*parser, bounds);
    reading.refusal = parser->refusal();
    if (reading.refusal != 0) break;
    if (parser->isComplete()) {
      checkComplete(*parser);
      writeOut(*parser, reading.requests);
      parser.reset();
      continue;
    }
    require(reading.taken == end);
    if (end == bytes.size()) break;
    end = std::min(bytes.size(), end + step());
  }
  // How much a refused request took does depend on the cuts.
  if (reading.refusal != 0) reading.taken = 0;
  return reading;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const Bounds bounds{.head = 64U + data[1] * 8U, .body = data[1] * 4U};
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  const Reading whole = read(bytes, bounds, [&] { return bytes.size(); });
  const Reading single = read(bytes, bounds, [] { return std::size_t{1}; });
  std::uint32_t state = data[0];
  const Reading pieces = read(bytes, bounds, [&] {
    state = state * 1103515245U + 12345U;
    return std::size_t{1} + (state >> 16U) % 37U;
  });
  require(single == whole && pieces == whole);
  return 0;
}
