#include "host/site/notice.h"

#include <embedded_host_pages.h>

#include "frame/template.h"

namespace tarlo::host {

void writeNotice(Visit& visit, const Notice& notice) {
  static const frame::Template kPage(embedded::host_pages::find("site/notice.html"));
  visit.response.reset();
  visit.response.setStatus(notice.status);
  visit.response.setHeader("Cache-Control", "no-store");
  kPage.write(visit.response,
              {{"title", notice.title}, {"text", notice.text}, {"id", visit.wire.id}});
}

}  // namespace tarlo::host
