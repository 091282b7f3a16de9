#pragma once
// An object of the binary interface made of one function: what a host or a component of your own
// needs, with nothing but the C header.

#include <tarloquery/component.h>

#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace example {

inline tarlo_variant textValue(std::string_view text) {
  tarlo_variant value = {TARLO_TEXT, 0, {}};
  value.as.text.data = static_cast<char*>(std::malloc(text.size() + 1));
  std::memcpy(value.as.text.data, text.data(), text.size());
  value.as.text.size = text.size();
  return value;
}

// Takes a reference of its own.
inline tarlo_variant objectValue(tarlo_object* object) {
  object->functions->add_reference(object);
  tarlo_variant value = {TARLO_OBJECT, 0, {}};
  value.as.object = object;
  return value;
}

inline std::string textOf(const tarlo_variant& value) {
  if (value.kind == TARLO_TEXT) return {value.as.text.data, value.as.text.size};
  const bool isNumber = value.kind >= TARLO_INT16 && value.kind <= TARLO_INT64;
  return isNumber ? std::to_string(value.as.integer) : std::string();
}

class LateObject : public tarlo_object {
 public:
  // Answers one use of a member; false for a name that it does not know.
  using Answer = std::function<bool(std::string_view name, int32_t access, tarlo_variant* arguments,
                                    size_t count, tarlo_variant* result)>;

  // With one reference, which the caller releases.
  static tarlo_object* make(Answer answer) { return new LateObject(std::move(answer)); }

 private:
  explicit LateObject(Answer answer) : tarlo_object{&kFunctions}, answer_(std::move(answer)) {}

  static LateObject& self(tarlo_object* object) { return *static_cast<LateObject*>(object); }
  static void addReference(tarlo_object* object) { ++self(object).references_; }
  static void release(tarlo_object* object) {
    if (--self(object).references_ == 0) delete &self(object);
  }
  static int32_t idOf(tarlo_object* object, const char* name, size_t size, int32_t* id) {
    self(object).names_.emplace_back(name, size);
    *id = static_cast<int32_t>(self(object).names_.size());
    return TARLO_OK;
  }
  static int32_t invoke(tarlo_object* object, int32_t id, int32_t access, tarlo_variant* arguments,
                        size_t count, tarlo_variant* result, tarlo_error*) {
    LateObject& me = self(object);
    const std::string name =
        id == TARLO_DEFAULT_MEMBER ? "" : me.names_[static_cast<size_t>(id) - 1];
    return me.answer_(name, access, arguments, count, result) ? TARLO_OK : TARLO_NO_SUCH_NAME;
  }
  static constexpr tarlo_object_functions kFunctions = {addReference, release, idOf, invoke};

  int references_ = 1;
  std::vector<std::string> names_;
  Answer answer_;
};

// Calls a member by name. The result is the caller's; EMPTY and a message on standard error when
// the call fails.
tarlo_variant call(tarlo_object* object, std::string_view name,
                   std::vector<tarlo_variant> arguments = {});

}  // namespace example
