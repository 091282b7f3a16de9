#pragma once
// Pages of components: /<component>.Zembra?action=<operation>.

#include <spdlog/logger.h>

#include <string_view>

#include "host/site/visit.h"

namespace tarlo::host {

// The component that a path such as "/TarloQuery.Zembra" names, "" for another path.
std::string_view componentOf(std::string_view path);

// Whether the server has the component. The other ones that pages link to belong to parts of the
// platform that are not here.
bool hasComponent(std::string_view component);

// Runs the operation that the request's "action" names, after the origin check. Operations that
// take arguments or give results are for programs: by address they do not exist. The others are for
// those whom their rows name. Expects a signed-in visit.
void runComponentPage(Visit& visit, std::string_view component, spdlog::logger& log);

}  // namespace tarlo::host
