#pragma once
// TarloQuery for hosts that load it: a page context of theirs is bound through its late-bound
// members.

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "component/tarlo_query.h"
#include "library/late_page.h"

namespace tarlo::library {

class LibraryComponent : public Object {
 public:
  explicit LibraryComponent(database::Registry& databases) : databases_(databases) {}

  // As TarloQuery's; OnStartPage takes a context of the host's too.
  Variant call(std::string_view name, std::span<Variant> arguments) override;
  // A script language does not tell a method without arguments from a property.
  Variant get(std::string_view name, std::span<Variant> arguments) override {
    return call(name, arguments);
  }

 private:
  database::Registry& databases_;
  std::unique_ptr<LatePage> page_;
  component::TarloQuery component_;
};

// The members of the interface in its order: the operations as the interface lists them, then the
// lifecycle. Their ids are 1, 2, ...
std::span<const std::string_view> memberNames();

}  // namespace tarlo::library
