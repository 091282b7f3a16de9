// A library with a grid of its own, which takes the place of TarloTable.table where it is
// registered. It lists nothing: it shows how a page's properties arrive and how markup goes out.

#include <map>
#include <memory>

#include "late_object.h"

namespace {

constexpr const char* kClassId = "{6B1B7A52-41C3-4C0D-9A35-0F3E5D8C7A11}";

int32_t living = 0;

// What the page has assigned, and the page's Response once ASPConnect was called.
struct Grid {
  Grid() { ++living; }
  ~Grid() {
    tarlo_clear(&response);
    --living;
  }
  Grid(const Grid&) = delete;
  Grid& operator=(const Grid&) = delete;

  std::string markup() const {
    const auto title = properties.find("title");
    return "<table id=\"own_grid\"><caption>" +
           (title == properties.end() ? std::string() : title->second) + "</caption></table>";
  }

  std::map<std::string, std::string, std::less<>> properties;
  tarlo_variant response = {};
};

tarlo_object* makeGrid() {
  const auto grid = std::make_shared<Grid>();
  return example::LateObject::make([grid](std::string_view name, int32_t access,
                                          tarlo_variant* arguments, size_t count,
                                          tarlo_variant* result) {
    if (access == TARLO_PUT && count == 1) {
      grid->properties[std::string(name)] = example::textOf(arguments[0]);
    } else if (name == "ASPConnect" && count > 0 && arguments[0].kind == TARLO_OBJECT) {
      tarlo_clear(&grid->response);
      grid->response = example::objectValue(arguments[0].as.object);
    } else if (name == "WriteTable" && grid->response.kind == TARLO_OBJECT) {
      tarlo_variant written =
          example::call(grid->response.as.object, "Write", {example::textValue(grid->markup())});
      tarlo_clear(&written);
    } else if (name == "getTableHtml") {
      *result = example::textValue(grid->markup());
    }
    return true;  // menus and actions are nothing to this grid
  });
}

void addReference(tarlo_class_factory*) {}
void release(tarlo_class_factory*) {}
int32_t create(tarlo_class_factory*, tarlo_object** object) {
  *object = makeGrid();
  return TARLO_OK;
}

constexpr tarlo_class_factory_functions kFunctions = {addReference, release, create};
tarlo_class_factory factory = {&kFunctions};

}  // namespace

extern "C" {

int32_t DllGetClassObject(const char* class_id, tarlo_class_factory** made) {
  if (std::string_view(class_id) != kClassId) return TARLO_NO_SUCH_CLASS;
  *made = &factory;
  return TARLO_OK;
}

int32_t DllCanUnloadNow(void) {
  return living == 0 ? 1 : 0;
}

// This one is entered into the registry by hand.
int32_t DllRegisterServer(void) {
  return TARLO_FAILED;
}

int32_t DllUnregisterServer(void) {
  return TARLO_FAILED;
}
}
