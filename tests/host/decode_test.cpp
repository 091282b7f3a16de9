// Bytes of browsers to text: the charset rule, and the four encodings of names and values.

#include <gtest/gtest.h>

#include "host/decode/values.h"

namespace tarlo::host {
namespace {

std::string flat(const Values& values) {
  std::string text;
  for (const auto& pair : values.pairs) text += pair.name + "=" + pair.value + ";";
  return text;
}

TEST(Charset, IsReadFromTheBytes) {
  const std::pair<const char*, const char*> rows[] = {
      {"plain", "plain"},
      {"\xD6\xD0\xCE\xC4", "中文"},          // GBK
      {"\xE4\xB8\xAD\xE6\x96\x87", "中文"},  // UTF-8
      {"\xC3\xAB", "毛"},                    // valid UTF-8 of two bytes, and a common GBK character
      {"\x87\xD6", "囍"},
      {"\x80", "€"},
      {"\xA8\xA6", "é"},
      {"\xE4\xB8", "涓"},  // cut UTF-8 is GBK
      {"a\xFF", "a\xEF\xBF\xBD"}};
  for (const auto& [bytes, text] : rows) EXPECT_EQ(decodeText(bytes), text) << text;
  EXPECT_EQ(decodeText("\xC3\xA9", Charset::Utf8), "é");
  EXPECT_EQ(decodeUtf8("a\xC0\x80z").substr(0, 4), "a\xEF\xBF\xBD");
}

TEST(Charset, IsFoundInAContentType) {
  const std::tuple<const char*, bool, Charset> rows[] = {
      {"application/x-www-form-urlencoded; charset=UTF-8", true, Charset::Utf8},
      {"text/plain;charset=gb2312", true, Charset::Gbk},
      {"text/plain; charset=\"GBK\"", true, Charset::Gbk},
      {"text/plain; charset=koi8-r", false, Charset::Gbk},
      {"text/plain", false, Charset::Gbk}};
  for (const auto& [type, found, expected] : rows) {
    Charset charset = Charset::Gbk;
    EXPECT_EQ(charsetOf(type, charset), found) << type;
    EXPECT_EQ(charset, expected) << type;
  }
}

TEST(Charset, HasEveryCharacterOnTheWayOut) {
  for (const char* text : {"中文", "😀", "㐀", "©", "€", "a<b"})
    EXPECT_FALSE(encodeGb18030(text).empty()) << text;
  EXPECT_EQ(encodeGb18030("中文a"),
            "\xD6\xD0\xCE\xC4"
            "a");
}

TEST(UrlEncoded, TakesWhatBrowsersAndPagesSend) {
  const std::pair<const char*, const char*> rows[] = {
      {"", ""},
      {"a=1&b=2", "a=1;b=2;"},
      {"a=1&&b", "a=1;b=;"},
      {"=x", "=x;"},
      {"v=a%20b%3Cc%3E+d|[f]{g}%h", "v=a b<c> d|[f]{g}%h;"},
      {"v=100%&w=%4&x=%", "v=100%;w=%4;x=%;"},
      {"v=a=b", "v=a=b;"},
      {"v=%D6%D0", "v=中;"},
      {"v=%E4%B8%AD", "v=中;"},
      // One page sent it all: GBK here, so GBK there, though it would read as UTF-8 alone.
      {"v=%E4%B8%AD&w=%D6%D0%CE", "v=涓\xEF\xBF\xBD;w=中\xEF\xBF\xBD;"},
      {"v=%26%23128512%3B", "v=&#128512;;"}};
  for (const auto& [text, values] : rows) EXPECT_EQ(flat(parseUrlEncoded(text)), values) << text;
  std::string many;
  for (int i = 0; i < 20'000; ++i) many += "a=1&";
  EXPECT_EQ(parseUrlEncoded(many).pairs.size(), kMaxPairs);
}

TEST(Multipart, TakesFieldsAndLeavesFiles) {
  const std::string body =
      "preamble\r\n--B\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\none\r\ntwo\r\n"
      "--B\r\nContent-Disposition: form-data; name=\"f\"; filename=\"x.txt\"\r\n\r\nfile\r\n"
      "--B\r\nContent-Disposition: form-data; name=\"\xD6\xD0\"\r\n\r\n\r\n--B--\r\n";
  const char* type = "multipart/form-data; boundary=B";
  EXPECT_EQ(flat(parseMultipart(body, type)), "a=one\r\ntwo;中=;");
  EXPECT_EQ(flat(parseMultipart(body, "multipart/form-data")), "");
  // Cut anywhere it gives fewer fields and never more.
  for (std::size_t cut = 0; cut < body.size(); ++cut)
    EXPECT_LE(parseMultipart(std::string_view(body).substr(0, cut), type).pairs.size(), 2U);
}

TEST(Cookies, AndJoinedValues) {
  EXPECT_EQ(flat(parseCookies("a=1; B=%E4%B8%AD;c ; d=x=y")), "a=1;B=中;d=x=y;");
  std::string joined;
  EXPECT_TRUE(parseUrlEncoded("id=1&x=0&ID=2").find("Id", joined));
  EXPECT_EQ(joined, "1, 2");
  EXPECT_FALSE(parseUrlEncoded("a=1").find("b", joined));
}

}  // namespace
}  // namespace tarlo::host
