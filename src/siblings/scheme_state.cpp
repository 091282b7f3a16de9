#include "siblings/scheme_state.h"

#include <nlohmann/json.hpp>

#include "scheme/extras.h"
#include "siblings/json_answer.h"

namespace tarlo::siblings {

void sendSchemeState(Page& page) {
  const scheme::SchemeState state = scheme::schemeState(page, page.request.value("prikeyid"));
  const nlohmann::json answer = {{"stamp", state.stamp}, {"change", state.change}};
  sendJson(page, answer.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
}

}  // namespace tarlo::siblings
