#pragma once
// Response of a page: text is kept until the page is complete or flushed, and encoded on its way
// out.

#include <string>

#include "frame/page.h"
#include "host/decode/charset.h"
#include "host/wire/message.h"

namespace tarlo::host {

class HttpResponse : public frame::Response {
 public:
  // Beyond `mostBytes` of kept text write() raises error 7 (out of memory).
  HttpResponse(WireResponse& wire, Charset charset, std::size_t mostBytes)
      : wire_(wire), charset_(charset), mostBytes_(mostBytes) {}

  void write(std::string_view text) override;
  void clear() override;
  [[noreturn]] void end() override;
  // A later value of the same name takes the place of the earlier one; what may not be stored stays
  // so. An answer for which nobody sets a Content-Security-Policy goes out with that of its kind.
  void setHeader(std::string_view name, std::string_view value) override;
  void binaryWrite(std::string_view bytes) override;
  void flush() override;
  bool isClientConnected() const override { return wire_.isClientConnected(); }

  // Before the first byte goes out.
  void setStatus(unsigned status) { wire_.setStatus(status); }
  // Drops everything that has not gone out yet, headers included, so that another page can take
  // its place.
  void reset();
  // Sends what is kept, as the whole page or as the last piece of a flushed one.
  void finish();
  // Whether somebody has said that the answer is no page.
  bool isTyped() const;
  bool isFlushed() const { return wire_.isStarted(); }
  // Whether there is page text that has not gone out yet.
  bool isBegunPage() const { return !isTyped() && !(text_.empty() && bytes_.empty()); }
  // Whether so much more can be written.
  bool hasRoom(std::size_t more) const { return text_.size() + bytes_.size() + more <= mostBytes_; }

 private:
  void encodePending();
  void announceHeaders();
  const std::string* header(std::string_view name) const;  // nothing when nobody has set it
  void takeRoom(std::size_t more) const;

  WireResponse& wire_;
  const Charset charset_;
  const std::size_t mostBytes_;
  std::string text_;             // UTF-8, behind `bytes_`
  std::string bytes_;            // as they go out
  std::vector<Header> headers_;  // one of a name
};

}  // namespace tarlo::host
