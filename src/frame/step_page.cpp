#include "frame/step_page.h"

#include "embedded_frame_pages.h"
#include "frame/template.h"

namespace tarlo::frame {

void writeStepOpening(Page& page) {
  static const Template opening(embedded::frame_pages::find("step_opening.html"));
  opening.write(page.response);
}

void writeStepHead(Page& page) {
  writeStepOpening(page);
  page.response.write("<body style=\"background:menu\">\r\n");
}

}  // namespace tarlo::frame
