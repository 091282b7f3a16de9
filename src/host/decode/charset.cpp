#include "host/decode/charset.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <vector>

#include "text/fold.h"
#include "text/utf8.h"

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

struct Gb18030Character {
  std::array<char, 4> bytes{'?'};
  std::uint8_t size = 1;
  std::string_view text() const { return {bytes.data(), size}; }
};

// The characters from U+0080 to U+FFFF, made once.
class Gb18030Table {
 public:
  Gb18030Table() : characters_(0x10000) {
    Converter converter("GB18030", "UTF-8");
    std::string source, encoded;
    for (char32_t point = 0x80; point < 0x10000; ++point) {
      if (point >= 0xD800 && point < 0xE000) continue;  // halves of pairs are no characters
      source.clear();
      encoded.clear();
      text::appendUtf8(source, point);
      std::string_view in = source;
      if (!converter.run(in, encoded) || encoded.size() > 4) continue;
      Gb18030Character& character = characters_[point];
      encoded.copy(character.bytes.data(), encoded.size());
      character.size = static_cast<std::uint8_t>(encoded.size());
    }
  }
  const Gb18030Character& at(char32_t point) const { return characters_[point]; }

 private:
  std::vector<Gb18030Character> characters_;
};

const Gb18030Table& gb18030Table() {
  static const Gb18030Table table;
  return table;
}

// Beyond U+FFFF the four bytes count the characters in order, from 90 30 81 30.
std::string gb18030Of(char32_t point) {
  if (point < 0x10000) return std::string(gb18030Table().at(point).text());
  const char32_t number = point - 0x10000;
  const auto byte = [](char32_t value) { return static_cast<char>(value); };
  return {byte(0x90 + number / 12600), byte(0x30 + number / 1260 % 10),
          byte(0x81 + number / 10 % 126), byte(0x30 + number % 10)};
}

}  // namespace

bool charsetOf(std::string_view contentType, Charset& found) {
  const std::string folded = text::foldedName(contentType);
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
    const std::size_t length = text::utf8Length(bytes);
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
    const std::size_t length = text::utf8Length(bytes);
    text += length == 0 ? kReplacement : bytes.substr(0, length);
    bytes.remove_prefix(length == 0 ? 1 : length);
  }
  return text;
}

std::string encodeGb18030(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  while (!utf8.empty()) {
    const auto* end = std::find_if(utf8.begin(), utf8.end(), [](char c) { return c < 0; });
    bytes.append(utf8.begin(), end);
    utf8.remove_prefix(static_cast<std::size_t>(end - utf8.begin()));
    if (utf8.empty()) break;
    const text::Character character = text::characterAt(utf8);
    bytes += character.length > 0 ? gb18030Of(character.point) : "?";
    utf8.remove_prefix(std::max(character.length, 1U));
  }
  return bytes;
}

}  // namespace tarlo::host
