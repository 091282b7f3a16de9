#pragma once
// What is known about the terminal, if there is one, that a stream writes to.

#include <cstddef>
#include <ostream>

namespace tarlo::app {

// The width that is laid out for where nobody looks at a terminal.
inline constexpr std::size_t kPlainWidth = 160;

// Whether the stream is the process's own output or error stream, and that is a terminal.
bool isTerminal(const std::ostream& stream);

// Columns on a line: the terminal's where the stream is one, kPlainWidth elsewhere.
std::size_t widthOf(const std::ostream& stream);

}  // namespace tarlo::app
