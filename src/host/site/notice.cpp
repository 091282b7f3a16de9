#include "host/site/notice.h"

#include <embedded_host_pages.h>

#include "frame/page_text.h"
#include "host/context/content_policy.h"
#include "host/site/log_text.h"
#include "variant/convert.h"

namespace tarlo::host {

namespace {

void setOutcome(Visit& visit, const Notice& notice) {
  visit.response.setStatus(notice.status);
  visit.response.setHeader("Cache-Control", "no-store");
  if (notice.status == 503 || notice.status == 429) visit.response.setHeader("Retry-After", "5");
}

std::string bodyOf(const Visit& visit, const Notice& notice) {
  static const frame::PageText kBody(embedded::host_pages::find("site/notice_body.html"));
  return kBody.fill({{"title", notice.title}, {"text", notice.text}, {"id", visit.wire.id}});
}

}  // namespace

void refuse(Visit& visit, spdlog::logger& log, const Notice& notice, std::string_view why) {
  log.warn("{} {} refused: user {}, {}", visit.wire.id, logText(visit.what),
           logText(variant::spliced(visit.session.get("usrID"))), why);
  writeNotice(visit, notice);
}

void writeNotice(Visit& visit, const Notice& notice) {
  static const frame::PageText kPage(embedded::host_pages::find("site/notice.html"));
  visit.response.reset();
  setOutcome(visit, notice);
  beginOwnPage(visit.response);
  kPage.write(visit.response, {{"title", notice.title}, {"notice", bodyOf(visit, notice)}});
}

void writeNoticeBehind(Visit& visit, const Notice& notice) {
  const std::string body = "<div class=\"notice\">\r\n" + bodyOf(visit, notice) + "</div>\r\n";
  if (!visit.response.isBegunPage() || !visit.response.hasRoom(body.size())) {
    return writeNotice(visit, notice);
  }
  setOutcome(visit, notice);
  visit.response.write(body);
}

}  // namespace tarlo::host
