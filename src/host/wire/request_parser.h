#pragma once
// Reads one request of HTTP/1.1 or 1.0 from its bytes as they come. What comes out depends on the
// bytes alone, never on how they were cut, and what is ambiguous is refused: a proxy in front that
// reads it in another way would see another request. Nothing here throws but for lack of memory.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/wire/limits.h"
#include "host/wire/message.h"

namespace tarlo::host {

class RequestParser {
 public:
  // Fields of header and trailer together. Beyond it 431: a short field costs far more memory than
  // its bytes.
  static constexpr std::size_t kMostFields = 1000;

  // Request line, header, chunk extensions and trailer count against `headerBytes` together.
  RequestParser(std::size_t headerBytes, std::size_t bodyBytes)
      : mostHead_(headerBytes), mostBody_(bodyBytes) {}

  // Takes bytes from the front, up to the end of the request, and says how many. The rest belongs
  // to the next request. Takes none when the request is complete or refused.
  std::size_t take(std::string_view bytes);

  // Something of the request is there: an empty line before it is nothing.
  bool isBegun() const { return state_ != State::RequestLine || !line_.empty(); }
  bool isHeaderComplete() const { return state_ > State::Field && state_ != State::Refused; }
  bool isComplete() const { return state_ == State::Complete; }
  // The status that the request is refused with, 0 as long as nothing is wrong with it, and why.
  unsigned refusal() const { return refusal_; }
  std::string_view reason() const { return reason_; }

  // What has been read so far: method, target, headers and body.
  WireRequest& request() { return request_; }
  // Of a complete header.
  bool isHttp11() const { return http11_; }
  bool keepsAlive() const { return http11_ ? !saysClose_ : saysKeepAlive_ && !saysClose_; }
  bool expectsContinue() const { return expectsContinue_ && http11_; }

 private:
  // In the order in which they follow each other.
  enum class State {
    RequestLine,
    Field,
    Body,
    ChunkSize,
    ChunkData,
    ChunkEnd,
    Trailer,
    Complete,
    Refused
  };

  std::size_t takeLine(std::string_view bytes);
  std::size_t takeBody(std::string_view bytes);
  bool hasRoom(std::size_t lineBytes) const;
  void readLine(std::string_view line);
  void readRequestLine(std::string_view line);
  void readField(std::string_view line);
  void noteField(std::string_view name, std::string_view value);
  void noteLength(std::string_view value);
  void noteConnection(std::string_view value);
  void finishHeader();
  unsigned checkCodings() const;
  void readChunkSize(std::string_view line);
  void refuse(unsigned status, std::string_view reason);

  const std::size_t mostHead_, mostBody_;
  WireRequest request_;
  State state_ = State::RequestLine;
  std::string line_;        // the line that is not complete yet
  std::size_t head_ = 0;    // bytes that count against the bound
  std::size_t fields_ = 0;  // of header and trailer
  std::uint64_t left_ = 0;  // of the body, or of the chunk
  std::string codings_;     // of all Transfer-Encoding fields, joined by commas
  std::optional<std::uint64_t> length_;
  std::size_t hosts_ = 0;
  bool hasCodings_ = false;
  bool skippedEmptyLine_ = false;
  bool http11_ = false;
  bool saysClose_ = false;
  bool saysKeepAlive_ = false;
  bool expectsContinue_ = false;
  unsigned refusal_ = 0;
  std::string_view reason_;
};

}  // namespace tarlo::host
