#include "late_object.h"

#include <iostream>

namespace example {

tarlo_variant call(tarlo_object* object, std::string_view name,
                   std::vector<tarlo_variant> arguments) {
  int32_t id = 0;
  tarlo_variant result = {};
  tarlo_error error = {};
  int32_t status = object->functions->id_of(object, name.data(), name.size(), &id);
  if (status == TARLO_OK) {
    status = object->functions->invoke(object, id, TARLO_CALL, arguments.data(), arguments.size(),
                                       &result, &error);
  }
  if (status != TARLO_OK) {
    std::cerr << name << ": status " << status << ", error " << error.number << ": "
              << std::string_view(error.description.data ? error.description.data : "",
                                  error.description.size)
              << '\n';
  }
  for (tarlo_variant& argument : arguments) tarlo_clear(&argument);
  tarlo_clear_error(&error);
  return result;
}

}  // namespace example
