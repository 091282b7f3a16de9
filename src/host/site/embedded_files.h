#pragma once
// The browser side of the product as the binary carries it, by the addresses that pages use.

#include "host/site/static_files.h"

namespace tarlo::host {

StaticFiles embeddedFiles();

}  // namespace tarlo::host
