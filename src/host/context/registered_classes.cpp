#include "host/context/registered_classes.h"

#include "bridge/component_library.h"
#include "bridge/registry.h"
#include "component/tarlo_query.h"
#include "text/fold.h"
#include "variant/runtime_error.h"

namespace tarlo::host {
namespace {

using bridge::ComponentLibrary;
using bridge::LibraryError;
using bridge::RegisteredClass;

std::shared_ptr<Object> create(const ComponentLibrary& library, const RegisteredClass& entry,
                               spdlog::logger& log) {
  try {
    return library.create(entry.classId);
  } catch (const LibraryError& error) {
    log.error("{}: {}", entry.progId, error.what());
    throw RuntimeError(ErrorNumber::CannotCreateObject, entry.progId);
  }
}

}  // namespace

void addRegisteredClasses(const std::string& registry, ObjectFactories& factories,
                          spdlog::logger& log) {
  if (registry.empty()) return;
  for (const RegisteredClass& entry : bridge::readRegistry(registry)) {
    if (text::equalsNoCase(entry.classId, component::kClassId)) continue;
    try {
      const auto library = std::make_shared<ComponentLibrary>(entry.library);
      factories[entry.progId] = [library, entry, &log] { return create(*library, entry, log); };
      log.info("{} comes from {}", entry.progId, entry.library);
    } catch (const LibraryError& error) {
      log.error("{}: {}", entry.progId, error.what());
    }
  }
}

}  // namespace tarlo::host
