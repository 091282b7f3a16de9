#pragma once
// A page whose five objects belong to a foreign host: every member is a call by name.

#include <memory>

#include "bridge/foreign_object.h"
#include "frame/page.h"

namespace tarlo::library {

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

}  // namespace tarlo::library
