// A library with a grid and a dialog of its own, which take the places of TarloTable.table and
// TarloDialog.WebDialog where they are registered. They list nothing: they show how a page's
// properties arrive and how markup goes out.

#include <map>
#include <memory>

#include "late_object.h"

namespace {

constexpr const char* kGridClass = "{6B1B7A52-41C3-4C0D-9A35-0F3E5D8C7A11}";
constexpr const char* kDialogClass = "{6B1B7A52-41C3-4C0D-9A35-0F3E5D8C7A12}";

int32_t living = 0;

// What the page has assigned, and the page's Response once ASPConnect was called.
struct Component {
  Component() { ++living; }
  ~Component() {
    tarlo_clear(&response);
    --living;
  }
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  std::string title() const {
    const auto found = properties.find("title");
    return found == properties.end() ? std::string() : found->second;
  }
  void keepResponse(tarlo_object* object) {
    tarlo_clear(&response);
    response = example::objectValue(object);
  }
  void write(const std::string& markup) {
    if (response.kind != TARLO_OBJECT) return;
    tarlo_variant written =
        example::call(response.as.object, "Write", {example::textValue(markup)});
    tarlo_clear(&written);
  }

  std::map<std::string, std::string, std::less<>> properties;
  tarlo_variant response = {};
};

std::string gridMarkup(const Component& grid) {
  return "<table id=\"own_grid\"><caption>" + grid.title() + "</caption></table>";
}

tarlo_object* makeGrid() {
  const auto grid = std::make_shared<Component>();
  return example::LateObject::make([grid](std::string_view name, int32_t access,
                                          tarlo_variant* arguments, size_t count,
                                          tarlo_variant* result) {
    if (access == TARLO_PUT && count == 1) {
      grid->properties[std::string(name)] = example::textOf(arguments[0]);
    } else if (name == "ASPConnect" && count > 0 && arguments[0].kind == TARLO_OBJECT) {
      grid->keepResponse(arguments[0].as.object);
    } else if (name == "WriteTable") {
      grid->write(gridMarkup(*grid));
    } else if (name == "getTableHtml") {
      *result = example::textValue(gridMarkup(*grid));
    }
    return true;  // menus and actions are nothing to this grid
  });
}

// Its ASPConnect takes exactly two arguments: Session and Response.
tarlo_object* makeDialog() {
  const auto dialog = std::make_shared<Component>();
  return example::LateObject::make([dialog](std::string_view name, int32_t access,
                                            tarlo_variant* arguments, size_t count,
                                            tarlo_variant*) {
    if (access == TARLO_PUT && count == 1) {
      dialog->properties[std::string(name)] = example::textOf(arguments[0]);
    } else if (name == "ASPConnect") {
      if (count != 2 || arguments[1].kind != TARLO_OBJECT) return false;
      dialog->keepResponse(arguments[1].as.object);
    } else if (name == "writeDialog") {
      dialog->write("<h1 id=\"own_dialog\">" + dialog->title() + "</h1>");
    }
    return true;  // its steps are nothing to this dialog
  });
}

void addReference(tarlo_class_factory*) {}
void release(tarlo_class_factory*) {}
int32_t createGrid(tarlo_class_factory*, tarlo_object** object) {
  *object = makeGrid();
  return TARLO_OK;
}
int32_t createDialog(tarlo_class_factory*, tarlo_object** object) {
  *object = makeDialog();
  return TARLO_OK;
}

constexpr tarlo_class_factory_functions kGridFunctions = {addReference, release, createGrid};
constexpr tarlo_class_factory_functions kDialogFunctions = {addReference, release, createDialog};
tarlo_class_factory gridFactory = {&kGridFunctions};
tarlo_class_factory dialogFactory = {&kDialogFunctions};

}  // namespace

extern "C" {

int32_t DllGetClassObject(const char* class_id, tarlo_class_factory** made) {
  const std::string_view wanted(class_id);
  if (wanted == kGridClass) *made = &gridFactory;
  if (wanted == kDialogClass) *made = &dialogFactory;
  return wanted == kGridClass || wanted == kDialogClass ? TARLO_OK : TARLO_NO_SUCH_CLASS;
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
