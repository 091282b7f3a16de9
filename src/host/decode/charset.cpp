#include "host/decode/charset.h"

#include <iconv.h>

#include <array>
#include <memory>
#include <stdexcept>

#include "variant/text.h"

namespace tarlo::host {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr std::string_view kEuro = "\xE2\x82\xAC";

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) throw std::runtime_error("no such character set");
  }
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Converts as far as it can, from the front of `in`, appending to `out`. False when it stopped at
  // an invalid byte.
  bool run(std::string_view& in, std::string& out) {
    char* source = const_cast<char*>(in.data());  // iconv does not write to it
    std::size_t left = in.size();
    bool good = true;
    while (left > 0 && good) {
      std::array<char, 4096> room;
      char* target = room.data();
      std::size_t free = room.size();
      good = iconv(handle_, &source, &left, &target, &free) != static_cast<std::size_t>(-1) ||
             errno == E2BIG;
      out.append(room.data(), room.size() - free);
    }
    in.remove_prefix(in.size() - left);
    return good;
  }

 private:
  iconv_t handle_;
};

constexpr unsigned kLeads = 0xFE - 0x81 + 1;
constexpr unsigned kTrails = 0xFE - 0x40 + 1;

// UTF-8 of each two-byte character, made once: a call of iconv for each would cost more than the
// whole request.
class GbkTable {
 public:
  GbkTable() : texts_(kLeads * kTrails) {
    Converter converter("UTF-8", "GBK");
    for (unsigned i = 0; i < texts_.size(); ++i) {
      const char pair[] = {static_cast<char>(0x81 + i / kTrails),
                           static_cast<char>(0x40 + i % kTrails)};
      std::string_view in(pair, 2);
      if (!converter.run(in, texts_[i]) || !in.empty()) texts_[i].clear();
    }
  }

  // "" when the two bytes are no character.
  std::string_view find(unsigned char lead, unsigned char trail) const {
    if (lead < 0x81 || lead > 0xFE || trail < 0x40 || trail > 0xFE) return {};
    return texts_[(lead - 0x81u) * kTrails + (trail - 0x40u)];
  }

 private:
  std::vector<std::string> texts_;
};

const GbkTable& gbkTable() {
  static const GbkTable table;
  return table;
}

// Length of the valid UTF-8 sequence at the front, 0 when it is none.
std::size_t sequenceLength(std::string_view rest) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(rest[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                             : lead >= 0xE0 && lead <= 0xEF ? 3
                             : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                            : 0;
  if (length == 0 || rest.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  // Overlong forms, surrogates, and what lies beyond U+10FFFF.
  if (lead == 0xE0 && byte(1) < 0xA0) return 0;
  if (lead == 0xED && byte(1) > 0x9F) return 0;
  if (lead == 0xF0 && byte(1) < 0x90) return 0;
  if (lead == 0xF4 && byte(1) > 0x8F) return 0;
  return length;
}

}  // namespace

bool charsetOf(std::string_view contentType, Charset& found) {
  const std::string folded = variant::foldedName(contentType);
  const auto at = folded.find("charset=");
  if (at == std::string::npos) return false;
  std::string_view name = std::string_view(folded).substr(at + 8);
  if (name.starts_with('"')) name.remove_prefix(1);
  name = name.substr(0, name.find_first_of("\"; "));
  if (name == "utf-8" || name == "utf8") {
    found = Charset::Utf8;
    return true;
  }
  found = Charset::Gbk;
  return name == "gb2312" || name == "gbk" || name == "gb18030" || name == "x-gbk";
}

bool looksUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    if (length != 1 && length != 3) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string decodeText(std::string_view bytes) {
  return looksUtf8(bytes) ? std::string(bytes) : decodeGbk(bytes);
}

std::string decodeText(std::string_view bytes, Charset charset) {
  return charset == Charset::Utf8 ? decodeUtf8(bytes) : decodeGbk(bytes);
}

std::string decodeGbk(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() * 3 / 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if (byte < 0x80) {
      text += bytes[i];
      continue;
    }
    if (byte == 0x80) {
      text += kEuro;
      continue;
    }
    const auto trail = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
    const std::string_view found = gbkTable().find(byte, static_cast<unsigned char>(trail));
    text += found.empty() ? kReplacement : found;
    if (!found.empty()) ++i;
  }
  return text;
}

std::string decodeUtf8(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t length = sequenceLength(bytes);
    text += length == 0 ? kReplacement : bytes.substr(0, length);
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

std::string encodeGb18030(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  Converter converter("GB18030", "UTF-8");
  while (!utf8.empty()) {
    if (converter.run(utf8, bytes)) continue;
    bytes += '?';
    if (!utf8.empty()) utf8.remove_prefix(1);
  }
  return bytes;
}

}  // namespace tarlo::host
