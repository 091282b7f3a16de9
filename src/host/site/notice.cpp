#include "host/site/notice.h"

#include <embedded_host_pages.h>

#include "frame/template.h"
#include "host/context/content_policy.h"
#include "host/site/log_text.h"
#include "variant/convert.h"

namespace tarlo::host {

void refuse(Visit& visit, spdlog::logger& log, const Notice& notice, std::string_view why) {
  log.warn("{} {} refused: user {}, {}", visit.wire.id, logText(visit.what),
           logText(variant::spliced(visit.session.get("usrID"))), why);
  writeNotice(visit, notice);
}

void writeNotice(Visit& visit, const Notice& notice) {
  static const frame::Template kPage(embedded::host_pages::find("site/notice.html"));
  visit.response.reset();
  visit.response.setStatus(notice.status);
  visit.response.setHeader("Cache-Control", "no-store");
  beginOwnPage(visit.response);
  if (notice.status == 503 || notice.status == 429) visit.response.setHeader("Retry-After", "5");
  kPage.write(visit.response,
              {{"title", notice.title}, {"text", notice.text}, {"id", visit.wire.id}});
}

}  // namespace tarlo::host
