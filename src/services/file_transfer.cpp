#include "services/file_transfer.h"

#include "frame/sibling_calls.h"
#include "variant/convert.h"

namespace tarlo::services {
namespace {

using frame::callMethod;

constexpr int kBytesBetweenFlushes = 16384;
constexpr int kForReading = 1;
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

Variant TransferFile(Page& page, const Variant& pathandfilename, const Variant& filename) {
  const auto files = page.server.createObject("Scripting.FileSystemObject");
  const Variant file = callMethod(*files, "GetFile", {pathandfilename});
  const Variant size = file.object()->get("Size");
  const Variant stream = callMethod(*file.object(), "OpenAsTextStream", {kForReading, kUnicode});
  page.response.setHeader("content-type", "application/x-msdownload");
  page.response.setHeader("Content-Disposition",
                          "attachment;filename=" + variant::spliced(filename));
  page.response.setHeader("content-length", variant::spliced(size));
  const bool isComplete = sendAll(page, *stream.object());
  callMethod(*stream.object(), "Close");
  return isComplete;
}

}  // namespace tarlo::services
