#pragma once
// Names and values of a request, in the order in which they came, from the four encodings that
// browsers use. Names match without regard to case.

#include <string>
#include <string_view>
#include <vector>

#include "host/decode/charset.h"

namespace tarlo::host {

struct Values {
  struct Pair {
    std::string name;
    std::string value;
  };
  std::vector<Pair> pairs;

  // All values of the name joined by ", "; false when there is none.
  bool find(std::string_view name, std::string& joined) const;
};

// Most pairs in one source; the rest is dropped.
inline constexpr std::size_t kMaxPairs = 10'000;

// "%41" and "+" decoded; a "%" that no two hexadecimal digits follow stays as it is.
std::string percentDecoded(std::string_view text);

// `a=1&b=2`. The charset is decided for the whole text, since one page sent all of it; nothing
// known: by its bytes.
Values parseUrlEncoded(std::string_view text, const Charset* declared = nullptr);
// A body of multipart/form-data; parts with a file name are left out. Nothing when the boundary is
// missing.
Values parseMultipart(std::string_view body, std::string_view contentType);
// `a=1; b=2`. Values are percent-decoded.
Values parseCookies(std::string_view header);

}  // namespace tarlo::host
