#include "host/decode/values.h"

#include "text/fold.h"
#include "text/pieces.h"

namespace tarlo::host {

namespace {

using text::hexDigit;

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The parameter of a header such as `form-data; name="a"; filename="b"`; false when it is absent.
bool headerParameter(std::string_view header, std::string_view name, std::string_view& value) {
  const std::string folded = text::foldedName(header);
  const std::string wanted = std::string(name) + "=";
  for (std::size_t at = folded.find(wanted); at != std::string::npos;
       at = folded.find(wanted, at + 1)) {
    if (at > 0 && folded[at - 1] != ' ' && folded[at - 1] != ';') continue;
    std::string_view rest = header.substr(at + wanted.size());
    if (rest.starts_with('"')) {
      rest.remove_prefix(1);
      value = rest.substr(0, rest.find('"'));
    } else {
      value = trimmed(rest.substr(0, rest.find(';')));
    }
    return true;
  }
  return false;
}

std::string_view headerLine(std::string_view headers, std::string_view name) {
  for (std::string_view line : text::split(headers, "\r\n")) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    if (text::equalsNoCase(line.substr(0, colon), name)) return trimmed(line.substr(colon + 1));
  }
  return {};
}

// One part without its boundary: header lines, an empty line, the value.
void addPart(Values& values, std::string_view part) {
  const auto blank = part.find("\r\n\r\n");
  if (blank == std::string_view::npos) return;
  const std::string_view disposition = headerLine(part.substr(0, blank), "content-disposition");
  std::string_view name, file;
  if (!headerParameter(disposition, "name", name) || headerParameter(disposition, "filename", file))
    return;
  values.pairs.push_back({std::string(name), std::string(part.substr(blank + 4))});
}

void decodeAll(Values& values, const Charset* declared) {
  std::string all;
  if (declared == nullptr) {
    for (const auto& pair : values.pairs) all.append(pair.name).append(pair.value);
  }
  const Charset charset = declared != nullptr ? *declared
                          : looksUtf8(all)    ? Charset::Utf8
                                              : Charset::Gbk;
  for (auto& pair : values.pairs) {
    pair.name = decodeText(pair.name, charset);
    pair.value = decodeText(pair.value, charset);
  }
}

}  // namespace

bool Values::find(std::string_view name, std::string& joined) const {
  bool found = false;
  for (const auto& pair : pairs) {
    if (!text::equalsNoCase(pair.name, name)) continue;
    if (found) joined += ", ";
    joined += pair.value;
    found = true;
  }
  return found;
}

std::string percentDecoded(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 &&
                         hexDigit(text[i + 2]) >= 0;
    if (escaped) {
      decoded += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

Values parseUrlEncoded(std::string_view text, const Charset* declared) {
  Values values;
  for (std::string_view pair : text::split(text, "&")) {
    if (pair.empty()) continue;
    if (values.pairs.size() == kMaxPairs) break;
    const auto equal = pair.find('=');
    const std::string_view value =
        equal == std::string_view::npos ? std::string_view{} : pair.substr(equal + 1);
    values.pairs.push_back({percentDecoded(pair.substr(0, equal)), percentDecoded(value)});
  }
  decodeAll(values, declared);
  return values;
}

Values parseMultipart(std::string_view body, std::string_view contentType) {
  Values values;
  std::string_view boundary;
  if (!headerParameter(contentType, "boundary", boundary) || boundary.empty()) return values;
  const std::string delimiter = "--" + std::string(boundary);
  auto at = body.find(delimiter);
  while (at != std::string_view::npos && values.pairs.size() < kMaxPairs) {
    at += delimiter.size();
    if (body.substr(at).starts_with("--")) break;
    const auto end = body.find("\r\n" + delimiter, at);
    if (end == std::string_view::npos) break;
    const auto line = body.find("\r\n", at);
    addPart(values, line < end ? body.substr(line + 2, end - line - 2) : std::string_view{});
    at = end + 2;
  }
  Charset declared;
  decodeAll(values, charsetOf(contentType, declared) ? &declared : nullptr);
  return values;
}

Values parseCookies(std::string_view header) {
  Values values;
  for (std::string_view pair : text::split(header, ";")) {
    const auto equal = pair.find('=');
    if (equal == std::string_view::npos || values.pairs.size() == kMaxPairs) continue;
    values.pairs.push_back({std::string(trimmed(pair.substr(0, equal))),
                            percentDecoded(trimmed(pair.substr(equal + 1)))});
  }
  decodeAll(values, nullptr);
  return values;
}

}  // namespace tarlo::host
