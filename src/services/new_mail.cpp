#include "services/page_objects.h"

#include <curl/curl.h>
#include <sodium.h>

#include <algorithm>
#include <array>
#include <vector>

#include "frame/member_table.h"
#include "text/utf8.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using variant::spliced;

constexpr int kPermissionDenied = 70;
constexpr int kMailFailed = 31;

struct CurlCleanup {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  void operator()(curl_mime* mime) const { curl_mime_free(mime); }
};
using Handle = std::unique_ptr<CURL, CurlCleanup>;
using List = std::unique_ptr<curl_slist, CurlCleanup>;
using Mime = std::unique_ptr<curl_mime, CurlCleanup>;

Handle openHandle() {
  static const CURLcode isReady = curl_global_init(CURL_GLOBAL_DEFAULT);
  Handle handle(isReady == CURLE_OK ? curl_easy_init() : nullptr);
  if (!handle) throw RuntimeError(kMailFailed, "the mail library does not start", "NewMail");
  return handle;
}

void append(List& list, const std::string& text) {
  curl_slist* longer = curl_slist_append(list.get(), text.c_str());
  if (longer == nullptr) throw RuntimeError(ErrorNumber::OutOfMemory, "NewMail");
  (void)list.release();
  list.reset(longer);
}

std::string oneLine(std::string text) {
  std::erase_if(text, [](unsigned char c) { return c < ' '; });
  return text;
}

// RFC 2047: text beyond ASCII as words of at most 75 characters, each cut between characters.
std::string encodedHeader(std::string_view text) {
  if (std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; })) return std::string(text);
  constexpr std::size_t kBytesInWord = 45;  // 60 characters of base64
  std::array<char, sodium_base64_ENCODED_LEN(kBytesInWord, sodium_base64_VARIANT_ORIGINAL)> base64;
  std::string header;
  while (!text.empty()) {
    std::string_view word = text::wholeCharacters(text, kBytesInWord);
    if (word.empty()) word = text.substr(0, kBytesInWord);  // no UTF-8
    text.remove_prefix(word.size());
    header += header.empty() ? "=?UTF-8?B?" : "\r\n =?UTF-8?B?";
    header += sodium_bin2base64(base64.data(), base64.size(),
                                reinterpret_cast<const unsigned char*>(word.data()), word.size(),
                                sodium_base64_VARIANT_ORIGINAL);
    header += "?=";
  }
  return header;
}

std::vector<std::string> addressesOf(const std::string& list) {
  std::vector<std::string> addresses;
  const std::string commas = text::replace(list, ";", ",");
  for (const std::string_view piece : text::split(commas, ",")) {
    const std::string_view address = text::trim(piece);
    if (!address.empty()) addresses.emplace_back(address);
  }
  return addresses;
}

class NewMail : public frame::MemberObject<NewMail> {
 public:
  struct Members {
    static std::span<const frame::Property<NewMail>> properties();
    static std::span<const frame::Method<NewMail>> methods();
  };
  explicit NewMail(const MailServer& server) : server_(server) {}

 private:
  Variant send(std::span<Variant>);
  void setServer(CURL* handle) const;
  List recipients() const;
  List headers() const;
  Mime content(CURL* handle) const;

  MailServer server_;
  std::string from_;
  std::string to_;
  std::string subject_;
  std::string body_;
  Variant bodyFormat_ = 1;
  Variant mailFormat_ = 1;
};

template <std::string NewMail::*kText>
constexpr frame::Property<NewMail> header(std::string_view name) {
  return {name, [](const NewMail& mail) { return Variant(mail.*kText); },
          [](NewMail& mail, const Variant& value) { mail.*kText = oneLine(spliced(value)); }};
}

std::span<const frame::Property<NewMail>> NewMail::Members::properties() {
  static constexpr frame::Property<NewMail> kRows[] = {
      header<&NewMail::from_>("From"),
      header<&NewMail::to_>("To"),
      header<&NewMail::subject_>("Subject"),
      {"Body", [](const NewMail& mail) { return Variant(mail.body_); },
       [](NewMail& mail, const Variant& value) { mail.body_ = spliced(value); }},
      {"BodyFormat", [](const NewMail& mail) { return mail.bodyFormat_; },
       [](NewMail& mail, const Variant& value) { mail.bodyFormat_ = value; }},
      {"MailFormat", [](const NewMail& mail) { return mail.mailFormat_; },
       [](NewMail& mail, const Variant& value) { mail.mailFormat_ = value; }},
  };
  return kRows;
}

std::span<const frame::Method<NewMail>> NewMail::Members::methods() {
  static constexpr frame::Method<NewMail> kRows[] = {{"Send", 0, &NewMail::send}};
  return kRows;
}

void NewMail::setServer(CURL* handle) const {
  curl_easy_setopt(handle, CURLOPT_URL, server_.url.c_str());
  curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  curl_easy_setopt(handle, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_TRY));
  curl_easy_setopt(handle, CURLOPT_TIMEOUT, static_cast<long>(server_.timeout.count()));
  curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);  // requests run on many threads
  if (server_.user.empty()) return;
  curl_easy_setopt(handle, CURLOPT_USERNAME, server_.user.c_str());
  curl_easy_setopt(handle, CURLOPT_PASSWORD, server_.password.c_str());
  // A password does not go over the wire in the clear.
  curl_easy_setopt(handle, CURLOPT_USE_SSL, static_cast<long>(CURLUSESSL_ALL));
}

List NewMail::recipients() const {
  List list;
  for (const std::string& address : addressesOf(to_)) append(list, "<" + address + ">");
  if (!list) throw RuntimeError(ErrorNumber::InvalidCall, "NewMail.To");
  return list;
}

List NewMail::headers() const {
  List list;
  append(list, "From: " + encodedHeader(from_));
  append(list, "To: " + encodedHeader(to_));
  append(list, "Subject: " + encodedHeader(subject_));
  return list;
}

Mime NewMail::content(CURL* handle) const {
  Mime mime(curl_mime_init(handle));
  curl_mimepart* part = curl_mime_addpart(mime.get());
  const bool isHtml = variant::toInt32(bodyFormat_) == 0;
  curl_mime_data(part, body_.data(), body_.size());
  curl_mime_type(part, isHtml ? "text/html; charset=utf-8" : "text/plain; charset=utf-8");
  curl_mime_encoder(part, "base64");
  return mime;
}

Variant NewMail::send(std::span<Variant>) {
  if (server_.url.empty()) {
    throw RuntimeError(kPermissionDenied, "no mail server is configured", "NewMail");
  }
  const Handle handle = openHandle();
  const List to = recipients();
  const List head = headers();
  const Mime mime = content(handle.get());
  const std::string sender = "<" + from_ + ">";
  setServer(handle.get());
  curl_easy_setopt(handle.get(), CURLOPT_MAIL_FROM, sender.c_str());
  curl_easy_setopt(handle.get(), CURLOPT_MAIL_RCPT, to.get());
  curl_easy_setopt(handle.get(), CURLOPT_HTTPHEADER, head.get());
  curl_easy_setopt(handle.get(), CURLOPT_MIMEPOST, mime.get());
  const CURLcode result = curl_easy_perform(handle.get());
  if (result != CURLE_OK) {
    throw RuntimeError(kMailFailed,
                       std::string("the mail was not sent: ") + curl_easy_strerror(result),
                       "NewMail");
  }
  return {};
}

}  // namespace

std::shared_ptr<Object> makeNewMail(const MailServer& server) {
  return std::make_shared<NewMail>(server);
}

}  // namespace tarlo::services
