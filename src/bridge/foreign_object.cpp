#include "bridge/foreign_object.h"

#include <array>

#include "bridge/exported_object.h"
#include "bridge/values.h"
#include "frame/page.h"

namespace tarlo::bridge {
namespace {

// Result and error of one call, cleared with it.
struct Answer {
  Answer() = default;
  ~Answer() {
    tarlo_clear(&result);
    tarlo_clear_error(&error);
  }
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;

  tarlo_variant result = {};
  tarlo_error error = {};
};

void check(int32_t status, const Answer& answer, std::string_view name) {
  switch (status) {
    case TARLO_OK:
      return;
    case TARLO_RAISED:
      throw raisedBy(answer.error);
    case TARLO_PAGE_ENDED:
      throw frame::PageEnd{};
    case TARLO_NO_SUCH_NAME:
      throw RuntimeError(ErrorNumber::NoSuchMember, std::string(name));
    default:
      throw RuntimeError(ErrorNumber::OutOfMemory, "a component's call failed");
  }
}

}  // namespace

ForeignObject::ForeignObject(tarlo_object* object) : object_(object) {
  object_->functions->add_reference(object_);
}

ForeignObject::~ForeignObject() {
  object_->functions->release(object_);
}

int32_t ForeignObject::idOf(std::string_view name) {
  if (name.empty()) return TARLO_DEFAULT_MEMBER;
  const auto known = ids_.find(name);
  if (known != ids_.end()) return known->second;
  int32_t id = 0;
  if (object_->functions->id_of(object_, name.data(), name.size(), &id) != TARLO_OK) {
    throw RuntimeError(ErrorNumber::NoSuchMember, std::string(name));
  }
  ids_.emplace(name, id);
  return id;
}

Variant ForeignObject::invoke(std::string_view name, int32_t access, std::span<Variant> arguments) {
  const int32_t id = idOf(name);
  Arguments values(arguments);
  Answer answer;
  const int32_t status = object_->functions->invoke(object_, id, access, values.data(),
                                                    values.size(), &answer.result, &answer.error);
  check(status, answer, name);
  values.writeBack(arguments);
  return fromC(answer.result);
}

Variant ForeignObject::get(std::string_view name, std::span<Variant> arguments) {
  return invoke(name, TARLO_GET, arguments);
}

void ForeignObject::put(std::string_view name, const Variant& value) {
  std::array<Variant, 1> arguments = {value};
  invoke(name, TARLO_PUT, arguments);
}

Variant ForeignObject::call(std::string_view name, std::span<Variant> arguments) {
  return invoke(name, TARLO_CALL, arguments);
}

void ForeignObject::putItem(std::string_view index, const Variant& value) {
  std::array<Variant, 2> arguments = {Variant(index), value};
  invoke("", TARLO_PUT, arguments);
}

std::shared_ptr<Object> importObject(tarlo_object* object) {
  if (object == nullptr) return nullptr;
  if (auto own = exportedBy(object)) return own;
  return std::make_shared<ForeignObject>(object);
}

tarlo_object* foreignOf(const Object& object) {
  const auto* foreign = dynamic_cast<const ForeignObject*>(&object);
  return foreign == nullptr ? nullptr : foreign->inner();
}

}  // namespace tarlo::bridge
