#include "frame/page.h"

#include "frame/place.h"
#include "text/fold.h"
#include "variant/convert.h"
#include "variant/runtime_error.h"

namespace tarlo::frame {

void Response::put(std::string_view property, const Variant& value) {
  const std::string text = variant::spliced(value);
  if (text::equalsNoCase(property, "Buffer")) return;
  if (text::equalsNoCase(property, "Expires")) return setHeader("Expires", text);
  if (text::equalsNoCase(property, "CacheControl")) return setHeader("Cache-Control", text);
  if (text::equalsNoCase(property, "ContentType")) return setHeader("Content-Type", text);
  throw RuntimeError(ErrorNumber::NoSuchMember, std::string(property));
}

std::string Server::htmlEncode(std::string_view text) const {
  return inPlace(Place::Encoded, text);
}

std::string urlEncodeBytes(std::string_view bytes, std::string_view alsoPlain) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string result;
  result.reserve(bytes.size());
  for (const char c : bytes) {
    if (text::isLetterOrDigit(c) || alsoPlain.find(c) != std::string_view::npos) {
      result += c;
    } else if (c == ' ') {
      result += '+';
    } else {
      const auto byte = static_cast<unsigned char>(c);
      result += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
  return result;
}

}  // namespace tarlo::frame
