#include "bridge/component_library.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include "bridge/foreign_object.h"

namespace tarlo::bridge {
namespace {

struct ReleaseFactory {
  void operator()(tarlo_class_factory* factory) const { factory->functions->release(factory); }
};
struct ReleaseObject {
  void operator()(tarlo_object* object) const { object->functions->release(object); }
};

}  // namespace

ComponentLibrary::ComponentLibrary(const std::string& path)
    : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) {
    const char* why = dlerror();
    throw LibraryError(fmt::format("{}: {}", path, why == nullptr ? "cannot be loaded" : why));
  }
  getClass_ = entry<tarlo_get_class_object>("DllGetClassObject");
}

template <class Function>
Function* ComponentLibrary::entry(const char* name) const {
  auto* found = reinterpret_cast<Function*>(dlsym(handle_, name));
  if (found == nullptr) throw LibraryError(fmt::format("{}: has no {}", path_, name));
  return found;
}

std::shared_ptr<Object> ComponentLibrary::create(const std::string& classId) const {
  tarlo_class_factory* made = nullptr;
  if (getClass_(classId.c_str(), &made) != TARLO_OK || made == nullptr) {
    throw LibraryError(fmt::format("{}: has no class {}", path_, classId));
  }
  const std::unique_ptr<tarlo_class_factory, ReleaseFactory> factory(made);
  tarlo_object* object = nullptr;
  if (factory->functions->create(factory.get(), &object) != TARLO_OK || object == nullptr) {
    throw LibraryError(fmt::format("{}: cannot create {}", path_, classId));
  }
  const std::unique_ptr<tarlo_object, ReleaseObject> created(object);
  return importObject(object);
}

bool ComponentLibrary::registerServer() const {
  return entry<tarlo_register_server>("DllRegisterServer")() == TARLO_OK;
}

bool ComponentLibrary::unregisterServer() const {
  return entry<tarlo_register_server>("DllUnregisterServer")() == TARLO_OK;
}

}  // namespace tarlo::bridge
