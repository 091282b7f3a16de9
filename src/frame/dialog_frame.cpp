#include "frame/dialog_frame.h"

#include <string>

#include "embedded_frame_pages.h"
#include "frame/page_text.h"

namespace tarlo::frame {
namespace {

// What a browser appends to a dialog's title is pushed out of sight.
std::string titlePadding() {
  constexpr std::string_view kBlank = "&nbsp;";
  constexpr int kCount = 300;
  std::string padding;
  padding.reserve(kCount * kBlank.size());
  for (int i = 0; i < kCount; ++i) padding += kBlank;
  return padding;
}

}  // namespace

void writeResponseSettings(Response& response) {
  response.put("Buffer", true);
  response.put("Expires", 0);
  response.put("CacheControl", "no-cache");
  response.setHeader("Pragma", "No-Cache");
  response.setHeader("robots", "noindex,follow");
}

void writeDialogHead(Page& page, std::string_view title, DialogBody body) {
  static const PageText head(embedded::frame_pages::find("dialog_head.html"));
  static const std::string padding = titlePadding();
  writeResponseSettings(page.response);
  head.write(page.response, {{"title", title},
                             {"padding", padding},
                             {"background", body == DialogBody::White ? "#FFFFFF" : ""}});
}

void writeDialogBodyEnd(Page& page) {
  static const PageText end(embedded::frame_pages::find("dialog_body_end.html"));
  end.write(page.response);
}

void writeDialogFoot(Page& page) {
  static const PageText foot(embedded::frame_pages::find("dialog_foot.html"));
  foot.write(page.response);
}

void writeStepOpening(Page& page) {
  static const PageText opening(embedded::frame_pages::find("step_opening.html"));
  opening.write(page.response);
}

void writeStepHead(Page& page) {
  writeStepOpening(page);
  page.response.write("<body style=\"background:menu\">\r\n");
}

}  // namespace tarlo::frame
