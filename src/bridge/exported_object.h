#pragma once
// Objects of this program for libraries that know the binary interface only.

#include <tarloquery/component.h>

#include <memory>
#include <span>
#include <string_view>

#include "variant/object.h"

namespace tarlo::bridge {

// One reference, which the caller releases; null for null. An object that came from such a library
// goes back as itself. Where `names` are given, they have the ids 1, 2, ... and no other name is
// known; else a name gets its id when it is asked for, and only a call tells whether it exists.
tarlo_object* exportObject(std::shared_ptr<Object> object,
                           std::span<const std::string_view> names = {});

// What exportObject gave, as long as it was given by this program; else null.
std::shared_ptr<Object> exportedBy(tarlo_object* object);

// How many of them live.
std::size_t exportedCount();

}  // namespace tarlo::bridge
