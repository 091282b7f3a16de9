#pragma once
// A library of components, loaded for as long as this program lives: its objects may outlast every
// page.

#include <tarloquery/component.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "variant/object.h"

namespace tarlo::bridge {

// A message for people: the library and what it lacks.
class LibraryError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class ComponentLibrary {
 public:
  // Throws LibraryError for a file that is no library of components.
  explicit ComponentLibrary(const std::string& path);

  // Throws LibraryError for a class id that the library refuses.
  std::shared_ptr<Object> create(const std::string& classId) const;
  // Its registration, into the file that TARLO_REGISTRY names. False when that failed.
  bool registerServer() const;
  bool unregisterServer() const;

 private:
  template <class Function>
  Function* entry(const char* name) const;

  std::string path_;
  void* handle_;
  tarlo_get_class_object* getClass_;
};

}  // namespace tarlo::bridge
