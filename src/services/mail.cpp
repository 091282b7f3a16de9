// The operations that work through objects of the page server: mail and the sending of files.

#include "frame/place.h"
#include "frame/policy.h"
#include "frame/sibling_calls.h"
#include "services/operations.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using frame::callMethod;
using variant::spliced;

constexpr std::string_view kMailClass = "CDONTS.NewMail";
constexpr std::string_view kIndent = "&nbsp; &nbsp; &nbsp; &nbsp; ";
constexpr std::string_view kBasicPolicy = "系统基本参数";

std::string today() {
  const auto date = variant::calendarOf(variant::now());
  return std::to_string(date.year) + "年" + std::to_string(date.month) + "月" +
         std::to_string(date.day) + "日";
}

std::string setting(Page& page, std::string_view name) {
  return frame::inPlace(frame::Place::Encoded, spliced(page.application.get(name)));
}

std::string paymentClosing(Page& page) {
  const std::string indent(kIndent);
  return "<br><br>&nbsp; &nbsp; &nbsp; &nbsp; （您的所付费用以我们最终确认费用为准）<br>" + indent +
         "联系电话：" + setting(page, "mailTelephone") + "　投诉电话：" +
         setting(page, "mailComplaintsTelephone") + "<br>" + indent + "感谢您的支持与信任！<br>" +
         indent + setting(page, "mailCompany") + "<br>" + indent + today();
}

std::string passwordClosing() {
  return "<br><br>&nbsp; &nbsp; &nbsp; &nbsp; 请您登录后立即修改密码<br>"
         "&nbsp; &nbsp;  &nbsp; &nbsp; 如果仍然无法登录，请向系统管理员寻求帮助<br>"
         " &nbsp; &nbsp; &nbsp; &nbsp; Zembra 系统密码取回时间 ： " +
         today();
}

void address(Object& mail, const Variant& from, const Variant& to, const Variant& subject) {
  mail.put("From", from);
  mail.put("To", to);
  mail.put("Subject", subject);
}

Variant send(Object& mail, const Variant& body) {
  mail.put("Body", body);
  mail.put("BodyFormat", 0);
  mail.put("MailFormat", 0);
  callMethod(mail, "Send");
  return 1;
}

constexpr int kBytesBetweenFlushes = 16384;
constexpr int kOpenForReading = 1;
constexpr int kUnicode = -1;

bool reachesClient(Page& page) {
  page.response.flush();
  return page.response.isClientConnected();
}

// False when the client has gone.
bool sendAll(Page& page, Object& stream) {
  while (!variant::toBoolean(stream.get("AtEndOfStream"))) {
    const Variant bytes = callMethod(stream, "Read", {kBytesBetweenFlushes});
    page.response.binaryWrite(bytes.text());
    // The last piece, when it is a short one, is flushed behind the loop.
    const bool isWhole = bytes.text().size() == std::size_t{kBytesBetweenFlushes};
    if (isWhole && !reachesClient(page)) return false;
  }
  return reachesClient(page);
}

}  // namespace

Variant SendPayment(Page& page, const Variant& toName, const Variant& Subject_, Variant& Body_) {
  const auto mail = page.server.createObject(kMailClass);
  address(*mail, page.application.get("mailSender"), toName, Subject_);
  Body_ = Variant(spliced(Body_) + paymentClosing(page));
  return send(*mail, Body_);
}

Variant SendPassWordEmail(Page& page, const Variant& toName, const Variant& Subject_S,
                          Variant& Body_S) {
  const auto mail = page.server.createObject(kMailClass);
  const auto sender = frame::policyValue(page, kBasicPolicy, frame::PolicyValue::B);
  address(*mail, sender.value_or(Variant(0)), toName, Subject_S);
  Body_S = Variant(spliced(Body_S) + passwordClosing());
  return send(*mail, Body_S);
}

Variant TransferFile(Page& page, const Variant& pathandfilename, const Variant& filename) {
  const auto files = page.server.createObject("Scripting.FileSystemObject");
  const Variant file = callMethod(*files, "GetFile", {pathandfilename});
  const Variant size = file.object()->get("Size");
  const Variant stream =
      callMethod(*file.object(), "OpenAsTextStream", {kOpenForReading, kUnicode});
  page.response.setHeader("content-type", "application/x-msdownload");
  page.response.setHeader("Content-Disposition",
                          "attachment;filename=" + variant::spliced(filename));
  page.response.setHeader("content-length", variant::spliced(size));
  const bool isComplete = sendAll(page, *stream.object());
  callMethod(*stream.object(), "Close");
  return isComplete;
}

}  // namespace tarlo::services
