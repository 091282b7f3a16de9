// Names and values from any bytes, as queries, forms, multipart bodies and cookies send them: what
// comes out is UTF-8, no more than there was, and encodes for a page and back. The first byte
// chooses the form, the second the charset.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/decode/values.h"
#include "text/utf8.h"

namespace {

using namespace tarlo::host;

void require(bool holds) {
  if (!holds) std::abort();
}

void checkUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = tarlo::text::utf8Length(text);
    require(length > 0);
    text.remove_prefix(length);
  }
}

void check(const Values& values, std::size_t size) {
  require(values.pairs.size() <= kMaxPairs);
  // A byte that is no character becomes three.
  std::size_t total = 0;
  for (const auto& [name, value] : values.pairs) {
    checkUtf8(name);
    checkUtf8(value);
    total += name.size() + value.size();
    std::string found;
    require(values.find(name, found));
    require(found.find(value) != std::string::npos);
  }
  require(total <= size * 3);
}

Values decoded(std::uint8_t form, const Charset* charset, std::string_view bytes) {
  switch (form % 3) {
    case 0:
      return parseUrlEncoded(bytes, charset);
    case 1: {
      std::string type = "multipart/form-data; boundary=\"b\"";
      if (charset) type += *charset == Charset::Utf8 ? "; charset=utf-8" : "; charset=gb2312";
      return parseMultipart(bytes, type);
    }
    default:
      return parseCookies(bytes);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2 || size > 4096) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  static constexpr Charset kCharsets[] = {Charset::Gbk, Charset::Utf8};
  const Charset* charset = data[1] % 3 == 2 ? nullptr : &kCharsets[data[1] % 3];
  check(decoded(data[0], charset, bytes), bytes.size());
  // The boundary is the client's as well.
  check(parseMultipart(bytes, bytes), bytes.size());
  Charset found;
  charsetOf(bytes, found);
  // Every character has a place in GB18030, so text survives the way to a page; the four-byte ones
  // do not come back by the two-byte table.
  const std::string text = decodeUtf8(bytes);
  checkUtf8(text);
  require(encodeGb18030(text).size() <= text.size() * 2);
  checkUtf8(decodeGbk(bytes));
  require(decodeText(bytes) == (looksUtf8(bytes) ? std::string(bytes) : decodeGbk(bytes)));
  return 0;
}
