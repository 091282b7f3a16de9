// A host of its own: loads libtarloquery.so, binds a page context to an instance and calls
// operations on it.
//
//   host_program LIBRARY CONNECTION
//
// prints the display name of a table and the page that an operation writes.

#include <dlfcn.h>

#include <iostream>
#include <map>

#include "late_object.h"

namespace {

using example::call;
using example::LateObject;
using example::objectValue;
using example::textOf;
using example::textValue;

constexpr const char* kClassId = "{C4A15423-E4B8-4357-84C2-8EE5A5C383AE}";

// An object whose default member answers from a map: Request(key), Session(key), Application(key).
tarlo_object* makeMap(std::map<std::string, std::string, std::less<>> values) {
  return LateObject::make([values = std::move(values)](std::string_view name, int32_t,
                                                       tarlo_variant* arguments, size_t count,
                                                       tarlo_variant* result) {
    const auto found = count > 0 ? values.find(textOf(arguments[0])) : values.find(name);
    if (found != values.end()) *result = textValue(found->second);
    return true;
  });
}

tarlo_object* makeResponse(std::string& page) {
  return LateObject::make([&page](std::string_view name, int32_t, tarlo_variant* arguments,
                                  size_t count, tarlo_variant*) {
    if (name == "Write" && count == 1) page += textOf(arguments[0]);
    if (name == "Clear") page.clear();
    return true;
  });
}

// The context: five properties. It takes the references that it is given.
tarlo_object* makeContext(std::map<std::string, tarlo_object*, std::less<>> parts) {
  return LateObject::make([parts = std::move(parts)](std::string_view name, int32_t, tarlo_variant*,
                                                     size_t, tarlo_variant* result) {
    const auto found = parts.find(name);
    if (found == parts.end()) return false;
    *result = objectValue(found->second);
    return true;
  });
}

void release(tarlo_object* object) {
  object->functions->release(object);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "host_program LIBRARY CONNECTION\n";
    return 2;
  }
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::cerr << dlerror() << '\n';
    return 1;
  }
  const auto getClass =
      reinterpret_cast<tarlo_get_class_object*>(dlsym(library, "DllGetClassObject"));
  const auto canUnload = reinterpret_cast<tarlo_can_unload_now*>(dlsym(library, "DllCanUnloadNow"));
  tarlo_class_factory* factory = nullptr;
  if (getClass("{00000000-0000-0000-0000-000000000000}", &factory) != TARLO_NO_SUCH_CLASS ||
      getClass(kClassId, &factory) != TARLO_OK) {
    std::cerr << "no class TarloQuery\n";
    return 1;
  }
  tarlo_object* query = nullptr;
  factory->functions->create(factory, &query);
  factory->functions->release(factory);

  std::string page;
  const std::map<std::string, tarlo_object*, std::less<>> parts = {
      {"Application", makeMap({{"strConn", argv[2]}})},
      {"Request", makeMap({{"action", "getQueryTable"}})},
      {"Response", makeResponse(page)},
      {"Server", makeMap({})},
      {"Session", makeMap({{"usrID", "1"}, {"usrICID", "127"}, {"SessionID", "example"}})}};
  tarlo_object* context = makeContext(parts);

  tarlo_variant ignored = call(query, "OnStartPage", {objectValue(context)});
  tarlo_variant name = call(query, "getTableDesc", {textValue("UserTb_Customer")});
  std::cout << "UserTb_Customer: " << textOf(name) << '\n';
  tarlo_clear(&name);
  tarlo_clear(&ignored);
  ignored = call(query, "getQueryTable");
  std::cout << page;
  tarlo_clear(&ignored);
  std::cout << "unload while bound: " << canUnload() << '\n';
  ignored = call(query, "OnEndPage");
  tarlo_clear(&ignored);
  release(query);
  release(context);
  for (const auto& [key, part] : parts) release(part);
  std::cout << "unload afterwards: " << canUnload() << '\n';
  return canUnload() == 1 ? 0 : 1;
}
