#include "services/mail.h"

#include "frame/place.h"
#include "frame/policy.h"
#include "frame/sibling_calls.h"
#include "variant/array.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using variant::spliced;

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

Variant send(Page& page, const Variant& from, const Variant& to, const Variant& subject,
             const Variant& body) {
  const auto mail = page.server.createObject("CDONTS.NewMail");
  mail->put("From", from);
  mail->put("To", to);
  mail->put("Subject", subject);
  mail->put("Body", body);
  mail->put("BodyFormat", 0);
  mail->put("MailFormat", 0);
  frame::callMethod(*mail, "Send");
  return 1;
}

}  // namespace

Variant SendPayment(Page& page, const Variant& toName, const Variant& Subject_, Variant& Body_) {
  Body_ = Variant(spliced(Body_) + paymentClosing(page));
  return send(page, page.application.get("mailSender"), toName, Subject_, Body_);
}

Variant SendPassWordEmail(Page& page, const Variant& toName, const Variant& Subject_S,
                          Variant& Body_S) {
  const Variant policy = frame::getPolicyRow(page, kBasicPolicy);
  Body_S = Variant(spliced(Body_S) + passwordClosing());
  return send(page, policy.array().at(1, 0), toName, Subject_S, Body_S);
}

}  // namespace tarlo::services
