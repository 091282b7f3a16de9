#include "frame/helpers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "frame/place.h"
#include "text/date_text.h"
#include "text/pieces.h"
#include "variant/compare.h"
#include "variant/convert.h"
#include "variant/text.h"

namespace tarlo::frame {
namespace {

struct Rewriting {
  char from;
  std::string_view to;
};

// All rewritings in one pass. The same as one after the other, since no character that a rewriting
// brings in is rewritten by a later one.
template <std::size_t N>
std::string rewritten(std::string_view text, const std::array<Rewriting, N>& rewritings) {
  std::string result;
  result.reserve(text.size() + 2);
  for (const char c : text) {
    const auto found = std::ranges::find(rewritings, c, &Rewriting::from);
    if (found == rewritings.end()) {
      result += c;
    } else {
      result += found->to;
    }
  }
  return result;
}

constexpr std::array<Rewriting, 4> kLiteralText = {
    {{'\'', "''"}, {'<', "＜"}, {'>', "＞"}, {'"', "&quot;"}}};
constexpr std::array<Rewriting, 5> kAttributeText = {
    {{'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'\'', "''"}, {'"', "&quot;"}}};

// The \n are for the script's string, not line ends of the page.
constexpr std::string_view kRefusalBefore = "<script>alert('无法识别的访问来源!请用\\n\\n";
constexpr std::string_view kRefusalAfter =
    "\\n\\n地址登录到本系统!');top.close();</script><p>非法请求，请用正常途径访问!";

bool mayComeFromAnywhere(const Request& request) {
  const Variant action = request.value("action");
  if (variant::equals(action, "") || variant::equals(action, "TarloLogin")) return true;
  return variant::equals(request.value("k7wwworvane"), 1) &&
         variant::equals(request.value("cmdid"), "");
}

}  // namespace

Variant ServerHTMLEncode(Page& page, const Variant& strA) {
  if (strA.isNull()) return "";
  return page.server.htmlEncode(variant::toText(strA));
}

Variant preSQLFormat(Page&, Variant& s, const Variant& bolnull) {
  const std::string text = variant::toText(s);
  const bool isNull = text::trim(text).empty() && variant::equals(bolnull, true);
  s = isNull ? "null" : literalOf(text);
  return s;
}

Variant replaceChar(Page&, const Variant& strName) {
  if (strName.isNull()) return "";
  return attributeText(variant::toText(strName));
}

Variant validINT(Page&, const Variant& iINT) {
  return isWholeNumber(iINT);
}

Variant isNothing(Page&, const Variant& sStr) {
  return isBlank(sStr);
}

void getDateTime(Page& page) {
  const variant::CalendarTime time = variant::calendarOf(variant::now());
  page.response.write(fmt::format("{},{},{},", time.year, time.month, time.day));
  page.response.write(fmt::format("{},{:02},{:02}", time.hour, time.minute, time.second));
}

bool isWholeNumber(const Variant& value) {
  if (value.isEmpty() || !variant::isNumeric(value)) return false;
  const double number = variant::toDouble(value);
  return number >= INT32_MIN && number <= INT32_MAX;
}

bool isBlank(const Variant& value) {
  return value.isNull() || value.isEmpty() || variant::equals(value, "");
}

std::string literalOf(std::string_view text) {
  return text::trim(text).empty() ? "''" : "'" + rewritten(text, kLiteralText) + "'";
}

std::string attributeText(std::string_view text) {
  return rewritten(text, kAttributeText);
}

bool hasValidOrigin(Page& page) {
  const std::string referer = variant::spliced(page.request.serverVariable("HTTP_REFERER"));
  const std::string keyword = variant::spliced(page.application.get("virtualWebKeyWord"));
  const std::size_t position = variant::inStr(referer, keyword);
  // One character may stand before the site's address. Without a keyword every referer passes.
  if (position > 0 && position < 3) return true;
  if (mayComeFromAnywhere(page.request)) return true;
  page.response.write(
      std::string(kRefusalBefore).append(inPlace(Place::Script, keyword)).append(kRefusalAfter));
  return false;
}

Variant isValidConnect(Page& page) {
  return hasValidOrigin(page);
}

bool isSwitchedOn(Page& page, std::string_view key) {
  const Variant setting = page.application.get(key);
  return setting.isEmpty() || variant::toBoolean(setting);
}

std::string currentDateTimeText() {
  return text::dateTimeText(variant::calendarOf(variant::now()));
}

}  // namespace tarlo::frame
