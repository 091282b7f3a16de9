#pragma once
// Objects of other libraries, as this program's late-bound objects.

#include <tarloquery/component.h>

#include <map>
#include <memory>
#include <string>

#include "variant/object.h"

namespace tarlo::bridge {

// The members raise what the object raises, error 438 for a name that it does not have, and end the
// page when the object does.
class ForeignObject : public Object {
 public:
  // Takes a reference of its own.
  explicit ForeignObject(tarlo_object* object);
  ~ForeignObject() override;
  ForeignObject(const ForeignObject&) = delete;
  ForeignObject& operator=(const ForeignObject&) = delete;

  Variant get(std::string_view name, std::span<Variant> arguments = {}) override;
  void put(std::string_view name, const Variant& value) override;
  Variant call(std::string_view name, std::span<Variant> arguments) override;
  // Assigns the default member of that index: Session(index) = value.
  void putItem(std::string_view index, const Variant& value);

  tarlo_object* inner() const { return object_; }

 private:
  int32_t idOf(std::string_view name);
  Variant invoke(std::string_view name, int32_t access, std::span<Variant> arguments);

  tarlo_object* object_;
  std::map<std::string, int32_t, std::less<>> ids_;
};

// An object of this program that went out comes back as itself; null for null.
std::shared_ptr<Object> importObject(tarlo_object* object);

// What is inside of a foreign object; null for an object of this program.
tarlo_object* foreignOf(const Object& object);

}  // namespace tarlo::bridge
