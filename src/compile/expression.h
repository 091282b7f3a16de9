#pragma once
// A computed field's expression with its references replaced by [table].[column].

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "compile/reference_lookups.h"

namespace tarlo::compile {

// What becomes of a token that holds nothing but blanks: the select items keep it, the other
// compilers lose it.
enum class BlankTokens { Keep, Drop };

// Gives the names of a field id. Nothing drops the reference together with the literal text in
// front of it.
using ReferenceNames = std::function<std::optional<FieldNames>(std::string_view id)>;

// Appends the resolved expression.
void appendExpression(std::string& out, std::string_view expression, BlankTokens blanks,
                      const ReferenceNames& names);

}  // namespace tarlo::compile
