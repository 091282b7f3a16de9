#pragma once
// Sending a file to the browser as a download.

#include "frame/page.h"

namespace tarlo::services {

// An operation. Streams the file through Scripting.FileSystemObject, and looks every 16384 bytes
// whether the client is still there. True when the whole file went out, False when the client left.
// Raises what the file component raises, before anything is sent: error 53 for a file that is not
// there or not below the configured folder.
Variant TransferFile(Page& page, const Variant& pathandfilename, const Variant& filename);

}  // namespace tarlo::services
