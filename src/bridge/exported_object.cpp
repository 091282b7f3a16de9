#include "bridge/exported_object.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "bridge/foreign_object.h"
#include "bridge/values.h"
#include "frame/page.h"
#include "text/fold.h"
#include "variant/convert.h"

namespace tarlo::bridge {
namespace {

std::atomic<std::size_t> living = 0;

class Names {
 public:
  explicit Names(std::span<const std::string_view> fixed)
      : names_(fixed.begin(), fixed.end()), isClosed_(!fixed.empty()) {}

  // 0 for "", which is the default member; -1 for a name that does not exist.
  int32_t idOf(std::string_view name) {
    if (name.empty()) return TARLO_DEFAULT_MEMBER;
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < names_.size(); ++i) {
      if (text::equalsNoCase(names_[i], name)) return static_cast<int32_t>(i + 1);
    }
    if (isClosed_ || names_.size() == kMost) return -1;
    names_.emplace_back(name);
    return static_cast<int32_t>(names_.size());
  }
  // False for an id that was never given.
  bool nameOf(int32_t id, std::string& name) {
    if (id == TARLO_DEFAULT_MEMBER) return true;
    const std::lock_guard lock(mutex_);
    if (id < 0 || static_cast<std::size_t>(id) > names_.size()) return false;
    name = names_[static_cast<std::size_t>(id) - 1];
    return true;
  }

 private:
  static constexpr std::size_t kMost = 1024;  // names that an object is asked for

  std::mutex mutex_;
  std::vector<std::string> names_;
  const bool isClosed_;
};

struct Exported : tarlo_object {
  Exported(const tarlo_object_functions* table, std::shared_ptr<Object> inner,
           std::span<const std::string_view> fixed)
      : tarlo_object{table}, object(std::move(inner)), names(fixed) {
    ++living;
  }
  ~Exported() { --living; }

  std::atomic<uint32_t> references = 1;
  std::shared_ptr<Object> object;
  Names names;
};

Exported& self(tarlo_object* object) {
  return *static_cast<Exported*>(object);
}

void addReference(tarlo_object* object) {
  ++self(object).references;
}

void release(tarlo_object* object) {
  if (--self(object).references == 0) {
    const std::unique_ptr<Exported> last(&self(object));
  }
}

int32_t idOf(tarlo_object* object, const char* name, size_t size, int32_t* id) {
  *id = self(object).names.idOf({name, size});
  return *id < 0 ? TARLO_NO_SUCH_NAME : TARLO_OK;
}

// A default member with an index is assigned by that: Session("key") = value.
void assign(Object& object, const std::string& name, std::span<Variant> arguments) {
  if (name.empty() && arguments.size() == 2) {
    object.put(variant::spliced(arguments[0]), arguments[1]);
  } else if (!name.empty() && arguments.size() == 1) {
    object.put(name, arguments[0]);
  } else {
    throw RuntimeError(ErrorNumber::WrongArgumentCount, name);
  }
}

Variant reach(Object& object, const std::string& name, int32_t access,
              std::span<Variant> arguments) {
  if (access == TARLO_GET) return object.get(name, arguments);
  if (access == TARLO_CALL) return object.call(name, arguments);
  assign(object, name, arguments);
  return {};
}

// The entry of every call from outside: nothing thrown gets past it.
int32_t invoke(tarlo_object* object, int32_t id, int32_t access, tarlo_variant* arguments,
               size_t count, tarlo_variant* result, tarlo_error* error) {
  try {
    std::string name;
    if (!self(object).names.nameOf(id, name)) return TARLO_NO_SUCH_NAME;
    std::vector<Variant> values;
    for (size_t i = 0; i < count; ++i) values.push_back(fromC(arguments[i]));
    const Variant answer = reach(*self(object).object, name, access, values);
    for (size_t i = 0; i < count; ++i) {
      const tarlo_variant written = toC(values[i]);
      tarlo_clear(&arguments[i]);
      arguments[i] = written;
    }
    *result = toC(answer);
    return TARLO_OK;
  } catch (const RuntimeError& raised) {
    fill(*error, raised);
    return TARLO_RAISED;
  } catch (const frame::PageEnd&) {
    return TARLO_PAGE_ENDED;
  } catch (const std::exception&) {
    return TARLO_FAILED;
  }
}

constexpr tarlo_object_functions kFunctions = {addReference, release, idOf, invoke};

}  // namespace

tarlo_object* exportObject(std::shared_ptr<Object> object,
                           std::span<const std::string_view> names) {
  if (!object) return nullptr;
  if (tarlo_object* foreign = foreignOf(*object)) {
    foreign->functions->add_reference(foreign);
    return foreign;
  }
  return std::make_unique<Exported>(&kFunctions, std::move(object), names).release();
}

std::shared_ptr<Object> exportedBy(tarlo_object* object) {
  return object->functions == &kFunctions ? self(object).object : nullptr;
}

std::size_t exportedCount() {
  return living;
}

}  // namespace tarlo::bridge
