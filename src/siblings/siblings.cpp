#include "siblings/siblings.h"

namespace tarlo::siblings {

std::span<const ProgId> progIds() { return {}; }
std::span<const PageOperation> pageOperations() { return {}; }

}  // namespace tarlo::siblings
