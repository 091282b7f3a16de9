#pragma once
// Policy rows: six free values under a name, by which an installation is configured. The name goes
// into the statement between single quotes and is not escaped. All raise DatabaseError.

#include <optional>
#include <string>
#include <string_view>

#include "frame/page.h"

namespace tarlo::frame {

enum class PolicyValue { A, B, C, D, E, F };

// Nothing for a policy that is not there.
std::optional<Variant> policyValue(Page& page, std::string_view name, PolicyValue value);

// The values as a rows table; for a policy that is not there the table of zeros that callers of the
// operation rely on (services/operations.h).
Variant policyTable(Page& page, std::string_view name);

// The text of the side pane that shows whose installation this is, around value D of the policy
// "OEM信息", cut at its first comma, line ends as <br>. Raises error 5 when there is no such policy
// and 94 when the value is Null.
std::string getOEMInfoHTML(Page& page);

}  // namespace tarlo::frame
