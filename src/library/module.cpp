// The module entry points of libtarloquery.so.

#include <dlfcn.h>
#include <tarloquery/component.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>

#include "bridge/exported_object.h"
#include "bridge/registry.h"
#include "library/library_component.h"
#include "text/fold.h"

namespace tarlo::library {
namespace {

std::atomic<std::size_t> livingFactories = 0;

// Connections that all instances share; they live as long as the library.
database::Registry& databases() {
  static database::Registry registry;
  return registry;
}

struct Factory : tarlo_class_factory {
  explicit Factory(const tarlo_class_factory_functions* table) : tarlo_class_factory{table} {
    ++livingFactories;
  }
  ~Factory() { --livingFactories; }
  std::atomic<uint32_t> references = 1;
};

Factory& self(tarlo_class_factory* factory) {
  return *static_cast<Factory*>(factory);
}

void addReference(tarlo_class_factory* factory) {
  ++self(factory).references;
}

void release(tarlo_class_factory* factory) {
  if (--self(factory).references == 0) {
    const std::unique_ptr<Factory> last(&self(factory));
  }
}

int32_t create(tarlo_class_factory*, tarlo_object** object) {
  try {
    *object = bridge::exportObject(std::make_shared<LibraryComponent>(databases()), memberNames());
    return TARLO_OK;
  } catch (const std::exception&) {
    return TARLO_FAILED;
  }
}

constexpr tarlo_class_factory_functions kFactoryFunctions = {addReference, release, create};

std::string registryFile() {
  const char* named = std::getenv("TARLO_REGISTRY");
  return named == nullptr ? TARLO_DEFAULT_REGISTRY : named;
}

// Where this library was loaded from.
std::string ownPath() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&DllGetClassObject), &info) == 0) return {};
  return std::filesystem::absolute(info.dli_fname).string();
}

template <class Step>
int32_t statusOf(Step&& step) {
  try {
    step();
    return TARLO_OK;
  } catch (const std::exception&) {
    return TARLO_FAILED;
  }
}

}  // namespace
}  // namespace tarlo::library

using tarlo::component::kClassId;

extern "C" {

int32_t DllGetClassObject(const char* class_id, tarlo_class_factory** factory) {
  using tarlo::library::Factory;
  *factory = nullptr;
  if (!tarlo::text::equalsNoCase(class_id, kClassId)) return TARLO_NO_SUCH_CLASS;
  return tarlo::library::statusOf(
      [&] { *factory = std::make_unique<Factory>(&tarlo::library::kFactoryFunctions).release(); });
}

int32_t DllCanUnloadNow(void) {
  return tarlo::bridge::exportedCount() + tarlo::library::livingFactories == 0 ? 1 : 0;
}

int32_t DllRegisterServer(void) {
  return tarlo::library::statusOf([] {
    tarlo::bridge::addToRegistry(
        tarlo::library::registryFile(),
        {std::string(tarlo::component::kProgId), std::string(kClassId), tarlo::library::ownPath()});
  });
}

int32_t DllUnregisterServer(void) {
  return tarlo::library::statusOf(
      [] { tarlo::bridge::removeFromRegistry(tarlo::library::registryFile(), kClassId); });
}
}
