#pragma once
// Late binding: what Server.CreateObject returns, and what the component itself is. Names match
// without regard to case.

#include <span>
#include <string_view>

#include "variant/variant.h"

namespace tarlo::variant {

class Object {
 public:
  virtual ~Object() = default;

  // Reads a property, with arguments for an indexed one. The default raises error 438 for every
  // name.
  virtual Variant get(std::string_view name, std::span<Variant> arguments = {});
  // Assigns a property. The default raises error 438.
  virtual void put(std::string_view name, const Variant& value);
  // Calls a method. Arguments are passed by reference: the method may write into them.
  // Error 438 for an unknown name, 450 for a wrong number of arguments.
  virtual Variant call(std::string_view name, std::span<Variant> arguments);
};

}  // namespace tarlo::variant

namespace tarlo {
using variant::Object;
}
