// Requests from bytes: what is refused and as what, that one bound holds for all of a header, and
// that cuts change nothing.

#include <gtest/gtest.h>

#include "host/wire/request_parser.h"

namespace tarlo::host::testing {
namespace {

constexpr std::size_t kHead = 2048, kBody = 1000;

// What a connection would make of the bytes, fed in pieces of that size.
std::string read(std::string_view bytes, std::size_t piece = std::string::npos,
                 std::size_t head = kHead, std::size_t body = kBody) {
  std::string read;
  std::string_view left;
  auto parser = std::make_unique<RequestParser>(head, body);
  while (!left.empty() || !bytes.empty()) {
    if (left.empty()) {
      left = bytes.substr(0, piece);
      bytes.remove_prefix(left.size());
    }
    left.remove_prefix(parser->take(left));
    if (parser->refusal() != 0) return read + std::to_string(parser->refusal());
    if (!parser->isComplete()) continue;
    const WireRequest& request = parser->request();
    read += request.method + " " + request.target;
    for (const auto& [name, value] : request.headers) read += "|" + name + "=" + value;
    read += "|" + request.body + (parser->keepsAlive() ? "; " : " closes; ");
    parser = std::make_unique<RequestParser>(head, body);
  }
  return read + (parser->isBegun() ? "incomplete" : "");
}

std::string post(std::string_view headers, std::string_view body = "") {
  return "POST / HTTP/1.1\r\nHost: a\r\n" + std::string(headers) + "\r\n\r\n" + std::string(body);
}
std::string get(std::string_view line, std::string_view headers = "Host: a") {
  return std::string(line) + "\r\n" + std::string(headers) + "\r\n\r\n";
}
constexpr std::string_view kChunked = "Transfer-Encoding: chunked";

TEST(RequestParser, RefusesWhatIsAmbiguous) {
  using namespace std::string_literals;
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"501",
       {post("Transfer-Encoding: gzip"), post("Transfer-Encoding: gzip, chunked"),
        post("Transfer-Encoding: xchunked"), post("Transfer-Encoding: chunked;q=1")}},
      {"505", {get("GET / HTTP/2.0"), get("GET / HTTP/0.9")}},
      {"413",
       {post("Content-Length: 1001"), post("Content-Length: 99999999999999999999999999"),
        post(kChunked, "ffffffffffffffff\r\n"),
        post(kChunked, "3e8\r\n" + std::string(1000, 'x') + "\r\n1\r\n")}},
      {"400",
       {// The body's length must have one reading only.
        post("Transfer-Encoding: chunked, gzip"), post("Transfer-Encoding: chunked, chunked"),
        post("Transfer-Encoding: chunked\r\ntransfer-encoding: chunked"),
        post("Transfer-Encoding: chunked\r\nTransfer-Encoding: gzip"), post("Transfer-Encoding:"),
        post("Transfer-Encoding: chunked\r\nContent-Length: 5"),
        post("Content-Length: 5\r\nTransfer-Encoding: chunked"),
        "POST / HTTP/1.0\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
        post("Content-Length: 1\r\nContent-Length: 2"), post("Content-Length: 1, 2"),
        post("Content-Length: +1"), post("Content-Length: -1"), post("Content-Length: 0x1"),
        post("Content-Length: 1 1"), post("Content-Length: "), post("Content-Length: 1,"),
        // Which host is asked.
        get("GET / HTTP/1.1", "X: 1"), get("GET / HTTP/1.1", "Host: a\r\nHost: a"),
        get("GET / HTTP/1.0", "Host: a\r\nhost: b"), get("GET / HTTP/1.1", "Host: a/b"),
        get("GET / HTTP/1.1", "Host: u@a"), get("GET / HTTP/1.1", "Host: a b"),
        get("GET / HTTP/1.1", "Host: a:b"), get("GET / HTTP/1.1", "Host: a:1:2"),
        get("GET / HTTP/1.1", "Host: [::1"), get("GET / HTTP/1.1", "Host: \xE4\xB8\xAD"),
        // Lines and what stands in them.
        post("X: 1\r\n 2"), post("X:\r\n\t2"), " " + post("X: 1"), post("X : 1"), post("X"),
        post(": 1"), post("X\xC3: 1"), post("X: a\0b"s), post("X: a\rb"), post("X: a\x7f"),
        post("X: a\r"), "GET / HTTP/1.1\nHost: a\n\n", get("GET  / HTTP/1.1"),
        get("GET / HTTP/1.1 "), get("GET /"), get("GET /\x01 HTTP/1.1"), get("GET / HTTP/1.1x"),
        get("G(T / HTTP/1.1"), "\r\n\r\n" + get("GET / HTTP/1.1"), "\x16\x03\x01",
        // Chunks.
        post(kChunked, "zz\r\n"), post(kChunked, "\r\n"), post(kChunked, "-1\r\n"),
        post(kChunked, "1\r\nab\r\n"), post(kChunked, "1 x\r\n"), post(kChunked, "1;\x01\r\n"),
        post(kChunked, "00000000000000001\r\n"), post(kChunked, "0\r\nbad trailer\r\n\r\n")}}};
  for (const auto& [refusal, refused] : rows) {
    for (const std::string& bytes : refused) {
      EXPECT_EQ(read(bytes), refusal) << bytes;
      EXPECT_EQ(read(bytes, 1), refusal) << "byte by byte: " << bytes;
    }
  }
}

TEST(RequestParser, ReadsTheSameHoweverItIsCut) {
  const std::string rows[] = {
      "\r\nGET /a?v=a|[b]{c}%h\xD6\xD0 HTTP/1.1\r\nHost:a.example:80 \r\nX:  1 2\t\r\n\r\n",
      "GET / HTTP/1.1\r\nHost: [::1]:8080\r\nConnection: x, Close\r\n\r\nGET / "
      "HTTP/1.2\r\nHost:\r\n\r\n",
      "GET / HTTP/1.0\r\n\r\nGET / HTTP/1.0\r\nconnection: keep-alive\r\n\r\n",
      post("Content-Length: 3, 3\r\nContent-Length: 3", "abc") + "\r\n" + get("GET /2 HTTP/1.1"),
      post("Transfer-Encoding: ,CHUNKED",
           "3;a=\"b\"\r\nabc\r\n0002 \r\nde\r\n0\r\nHost: b\r\nX:\r\n\r\n") +
          get("GET /2 HTTP/1.1"),
      post(kChunked, "0\r\n\r\n")};
  const char* expected[] = {
      "GET /a?v=a|[b]{c}%h\xD6\xD0|Host=a.example:80|X=1 2|; ",
      "GET /|Host=[::1]:8080|Connection=x, Close| closes; GET /|Host=|; ",
      "GET /| closes; GET /|connection=keep-alive|; ",
      "POST /|Host=a|Content-Length=3, 3|Content-Length=3|abc; GET /2|Host=a|; ",
      // What a trailer says is no header.
      "POST /|Host=a|Transfer-Encoding=,CHUNKED|abcde; GET /2|Host=a|; ",
      "POST /|Host=a|Transfer-Encoding=chunked|; "};
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    for (const std::size_t piece :
         {std::string::npos, std::size_t{1}, std::size_t{2}, std::size_t{7}})
      EXPECT_EQ(read(rows[i], piece), expected[i]) << "pieces of " << piece;
    EXPECT_EQ(read(rows[i].substr(0, rows[i].size() - 1)).ends_with("incomplete"), true) << i;
  }
}

TEST(RequestParser, OneBoundHoldsForAllOfTheHeader) {
  const std::string half(kHead / 2, 'x');
  const std::string chunk = "1;" + std::string(300, 'x') + "\r\na\r\n";
  const std::pair<std::string, bool> rows[] = {
      {get("GET /" + half + " HTTP/1.1"), true},
      {get("GET /" + half + " HTTP/1.1", "Host: a\r\nX: " + half), false},
      {get("GET /" + half + half + " HTTP/1.1"), false},
      {post("X: " + half + "\r\nY: " + half), false},
      {post("X: " + half + half), false},
      {post(kChunked, chunk + chunk + "0\r\n\r\n"), true},
      {post(kChunked, chunk + chunk + chunk + chunk + chunk + chunk + chunk + "0\r\n\r\n"), false},
      {post(kChunked, "0\r\nX: " + half + "\r\n\r\n"), true},
      {post(kChunked, "0\r\nX: " + half + "\r\nY: " + half + "\r\n\r\n"), false},
      {post("X: " + half + "\r\n" + std::string(kChunked), "0\r\nX: " + half + "\r\n\r\n"), false}};
  for (const auto& [bytes, isTaken] : rows) {
    for (const std::size_t piece : {std::string::npos, std::size_t{1}, std::size_t{100}})
      EXPECT_EQ(read(bytes, piece) == "431", !isTaken) << bytes.substr(0, 60);
  }
  // A line that never ends is refused as soon as it is too long.
  EXPECT_EQ(read("GET /" + half + half), "431");
  EXPECT_EQ(read(post(kChunked, "0;" + half + half)), "431");
  // One field may take nearly all, whatever the bound is.
  EXPECT_TRUE(read(get("GET / HTTP/1.1", "Host: a\r\nX: " + std::string(900'000, 'x')),
                   std::string::npos, 1'000'000)
                  .starts_with("GET /|Host=a|X=xxx"));
  // Plain chunks do not count, however many there are.
  std::string many;
  for (int i = 0; i < 900; ++i) many += "1\r\na\r\n";
  EXPECT_TRUE(read(post(kChunked, many + "0\r\n\r\n")).ends_with("aaa; "));
  std::string fields = "Host: a";
  for (std::size_t i = 0; i < RequestParser::kMostFields; ++i) fields += "\r\nX:";
  EXPECT_EQ(read(get("GET / HTTP/1.1", fields), std::string::npos, 65536), "431");
}

}  // namespace
}  // namespace tarlo::host::testing
