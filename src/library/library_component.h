#pragma once
// TarloQuery for hosts that load it: a page context of theirs is bound through its late-bound
// members.

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "bridge/foreign_object.h"
#include "component/tarlo_query.h"

namespace tarlo::library {

// A page whose five objects belong to a foreign host: every member is a call by name.
class LatePage {
 public:
  // Reads Application, Request, Response, Server and Session of the context, in this order. Raises
  // what they raise, error 13 for one that is no object of the host's.
  LatePage(Object& context, database::Registry& databases);
  ~LatePage();

  Page& page();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

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
