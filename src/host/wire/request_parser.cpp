#include "host/wire/request_parser.h"

#include <algorithm>
#include <limits>

#include "text/fold.h"

namespace tarlo::host {

namespace {

using text::hexDigit;
using text::isDigit;
using text::isLetter;

// A chunk's line without extensions: sixteen digits and the line's end.
constexpr std::size_t kMostSizeDigits = 16;
constexpr std::size_t kPlainChunkLine = kMostSizeDigits + 2;

bool isTokenByte(char c) {
  return isLetter(c) || isDigit(c) ||
         (c != '\0' && std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos);
}

// Whether the byte may stand in a field's value: no control character but the tabulator.
bool isValueByte(char c) {
  return c == '\t' || (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F);
}

// Pages write brackets, bars and Chinese bytes into addresses, so only what would end the target or
// hide in it is left out.
bool isTargetByte(char c) {
  return static_cast<unsigned char>(c) > 0x20 && c != 0x7F;
}

bool isToken(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, isTokenByte);
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Calls `take` with each element of a list that commas separate; empty elements mean nothing.
template <class Take>
void forEachElement(std::string_view list, Take take) {
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t comma = std::min(list.find(',', at), list.size());
    const std::string_view element = trimmed(list.substr(at, comma - at));
    if (!element.empty()) take(element);
    at = comma + 1;
  }
}

bool isPort(std::string_view text) {
  return text.size() <= 5 && std::ranges::all_of(text, isDigit);
}

// A name or an address, and a port: what an origin can hold, nothing of a path or a user.
bool isHost(std::string_view text) {
  const auto isNameByte = [](char c) {
    return isLetter(c) || isDigit(c) ||
           (c != '\0' && std::string_view("-._~!$&'()*+;=%").find(c) != std::string_view::npos);
  };
  const auto isAddressByte = [](char c) {
    return isLetter(c) || isDigit(c) || c == ':' || c == '.';
  };
  std::string_view port;
  if (text.starts_with('[')) {
    const auto end = text.find(']');
    if (end == std::string_view::npos || end == 1) return false;
    if (!std::ranges::all_of(text.substr(1, end - 1), isAddressByte)) return false;
    port = text.substr(end + 1);
  } else {
    const auto colon = std::min(text.find(':'), text.size());
    if (!std::ranges::all_of(text.substr(0, colon), isNameByte)) return false;
    port = text.substr(colon);
  }
  return port.empty() || (port.starts_with(':') && isPort(port.substr(1)));
}

// Nothing for a text that is no number. A number too large for the type is as large as possible.
std::optional<std::uint64_t> lengthOf(std::string_view text) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
  if (text.empty() || !std::ranges::all_of(text, isDigit)) return std::nullopt;
  std::uint64_t value = 0;
  for (const char c : text) {
    const auto digit = static_cast<std::uint64_t>(c - '0');
    value = value > (kMost - digit) / 10 ? kMost : value * 10 + digit;
  }
  return value;
}

}  // namespace

std::size_t RequestParser::take(std::string_view bytes) {
  std::size_t taken = 0;
  while (taken < bytes.size() && state_ < State::Complete) {
    const std::string_view rest = bytes.substr(taken);
    const bool isBody = state_ == State::Body || state_ == State::ChunkData;
    taken += isBody ? takeBody(rest) : takeLine(rest);
  }
  return taken;
}

bool RequestParser::hasRoom(std::size_t lineBytes) const {
  const bool isChunk = state_ == State::ChunkSize || state_ == State::ChunkEnd;
  return lineBytes <= mostHead_ - head_ + (isChunk ? kPlainChunkLine : 0);
}

std::size_t RequestParser::takeLine(std::string_view bytes) {
  // A client that speaks another protocol is told so at its first byte.
  const bool isFirst = state_ == State::RequestLine && line_.empty();
  if (isFirst && bytes.front() != '\r' && !isTokenByte(bytes.front())) {
    refuse(400, "no request line");
    return 0;
  }
  const auto end = bytes.find('\n');
  const std::size_t count = end == std::string_view::npos ? bytes.size() : end + 1;
  if (!hasRoom(line_.size() + count)) {
    refuse(431, "the header is too large");
    return count;
  }
  if (line_.empty() && end != std::string_view::npos) {
    readLine(bytes.substr(0, count));
    return count;
  }
  line_ += bytes.substr(0, count);
  if (end != std::string_view::npos) {
    const std::string whole = std::move(line_);
    line_.clear();
    readLine(whole);
  }
  return count;
}

void RequestParser::readLine(std::string_view line) {
  if (!line.ends_with("\r\n")) {
    refuse(400, "a line without a carriage return");
    return;
  }
  if (state_ != State::ChunkSize && state_ != State::ChunkEnd) head_ += line.size();
  line.remove_suffix(2);
  switch (state_) {
    case State::RequestLine:
      readRequestLine(line);
      break;
    case State::Field:
    case State::Trailer:
      readField(line);
      break;
    case State::ChunkSize:
      readChunkSize(line);
      break;
    case State::ChunkEnd:
      if (line.empty()) {
        state_ = State::ChunkSize;
      } else {
        refuse(400, "a chunk longer than its size");
      }
      break;
    default:
      break;
  }
}

void RequestParser::readRequestLine(std::string_view line) {
  // Some clients end a posted body with an empty line too many.
  if (line.empty() && !skippedEmptyLine_) {
    skippedEmptyLine_ = true;
    return;
  }
  const auto first = line.find(' ');
  const auto second = first == std::string_view::npos ? first : line.find(' ', first + 1);
  if (second == std::string_view::npos) return refuse(400, "no request line");
  const std::string_view method = line.substr(0, first);
  const std::string_view target = line.substr(first + 1, second - first - 1);
  const std::string_view version = line.substr(second + 1);
  const bool isVersion = version.size() == 8 && version.starts_with("HTTP/") &&
                         isDigit(version[5]) && version[6] == '.' && isDigit(version[7]);
  if (!isToken(method) || target.empty() || !std::ranges::all_of(target, isTargetByte) ||
      !isVersion)
    return refuse(400, "no request line");
  if (version[5] != '1') return refuse(505, "not HTTP/1");
  http11_ = version[7] != '0';
  request_.method = method;
  request_.target = target;
  state_ = State::Field;
}

void RequestParser::readField(std::string_view line) {
  const bool isTrailer = state_ == State::Trailer;
  if (line.empty()) {
    if (isTrailer) {
      state_ = State::Complete;
    } else {
      finishHeader();
    }
    return;
  }
  if (line.front() == ' ' || line.front() == '\t') return refuse(400, "a folded header line");
  const auto colon = line.find(':');
  const std::string_view name = line.substr(0, std::min(colon, line.size()));
  if (colon == std::string_view::npos || !isToken(name))
    return refuse(400, "a header line without a name");
  const std::string_view value = trimmed(line.substr(colon + 1));
  if (!std::ranges::all_of(value, isValueByte))
    return refuse(400, "a control character in a header");
  if (++fields_ > kMostFields) return refuse(431, "too many headers");
  // What a trailer says comes too late to mean anything here.
  if (!isTrailer) noteField(name, value);
}

void RequestParser::noteField(std::string_view name, std::string_view value) {
  using text::equalsNoCase;
  if (equalsNoCase(name, "Host")) {
    if (++hosts_ > 1) return refuse(400, "two Host headers");
    if (!isHost(value)) return refuse(400, "the Host header is no host");
  } else if (equalsNoCase(name, "Content-Length")) {
    noteLength(value);
  } else if (equalsNoCase(name, "Transfer-Encoding")) {
    hasCodings_ = true;
    codings_.append(value).append(",");
  } else if (equalsNoCase(name, "Connection")) {
    noteConnection(value);
  } else if (equalsNoCase(name, "Expect")) {
    expectsContinue_ = equalsNoCase(value, "100-continue");
  }
  request_.headers.emplace_back(std::string(name), std::string(value));
}

// The same length several times is what some proxies make of repeated fields.
void RequestParser::noteLength(std::string_view value) {
  for (std::size_t at = 0; at <= value.size();) {
    const std::size_t comma = std::min(value.find(',', at), value.size());
    const auto length = lengthOf(trimmed(value.substr(at, comma - at)));
    if (!length) return refuse(400, "the length is no number");
    if (length_ && *length_ != *length) return refuse(400, "two lengths");
    length_ = length;
    at = comma + 1;
  }
}

void RequestParser::noteConnection(std::string_view value) {
  forEachElement(value, [this](std::string_view option) {
    if (text::equalsNoCase(option, "close")) saysClose_ = true;
    if (text::equalsNoCase(option, "keep-alive")) saysKeepAlive_ = true;
  });
}

// 0 when "chunked" stands there once and nothing else.
unsigned RequestParser::checkCodings() const {
  std::size_t all = 0, chunked = 0;
  bool lastIsChunked = false;
  forEachElement(codings_, [&](std::string_view coding) {
    ++all;
    lastIsChunked = text::equalsNoCase(coding, "chunked");
    if (lastIsChunked) ++chunked;
  });
  if (all == 0 || chunked > 1 || (chunked == 1 && !lastIsChunked)) return 400;
  return all == 1 && chunked == 1 ? 0 : 501;
}

void RequestParser::finishHeader() {
  if (state_ == State::Refused) return;
  if (http11_ && hosts_ == 0) return refuse(400, "no Host header");
  if (hasCodings_) {
    if (!http11_) return refuse(400, "a transfer coding in HTTP/1.0");
    if (length_) return refuse(400, "a transfer coding and a length");
    const unsigned status = checkCodings();
    if (status != 0) return refuse(status, "the transfer coding");
    state_ = State::ChunkSize;
    return;
  }
  left_ = length_.value_or(0);
  if (left_ > mostBody_) return refuse(413, "the body is too large");
  state_ = left_ > 0 ? State::Body : State::Complete;
}

void RequestParser::readChunkSize(std::string_view line) {
  std::uint64_t size = 0;
  std::size_t digits = 0;
  for (; digits < line.size() && hexDigit(line[digits]) >= 0; ++digits) {
    if (digits == kMostSizeDigits) return refuse(400, "the size of a chunk");
    size = size * 16 + static_cast<std::uint64_t>(hexDigit(line[digits]));
  }
  const std::string_view extension = line.substr(digits);
  const std::string_view meaning = trimmed(extension);
  if (digits == 0 || (!meaning.empty() && !meaning.starts_with(';')))
    return refuse(400, "the size of a chunk");
  if (!std::ranges::all_of(extension, isValueByte))
    return refuse(400, "a control character in a chunk's extension");
  head_ += extension.size();
  if (head_ > mostHead_) return refuse(431, "the header is too large");
  if (size > mostBody_ - request_.body.size()) return refuse(413, "the body is too large");
  left_ = size;
  state_ = size > 0 ? State::ChunkData : State::Trailer;
}

std::size_t RequestParser::takeBody(std::string_view bytes) {
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left_, bytes.size()));
  request_.body += bytes.substr(0, count);
  left_ -= count;
  if (left_ == 0) state_ = state_ == State::Body ? State::Complete : State::ChunkEnd;
  return count;
}

void RequestParser::refuse(unsigned status, std::string_view reason) {
  state_ = State::Refused;
  refusal_ = status;
  reason_ = reason;
}

}  // namespace tarlo::host
