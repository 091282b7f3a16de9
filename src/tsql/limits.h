#pragma once
// Bounds on what the front end takes. They keep memory and stack bounded whatever text arrives.

#include <cstddef>

namespace tarlo::tsql {

inline constexpr std::size_t kMaxStatementBytes = 4u << 20;
// Open parentheses, CASEs, sub-queries and signs at one time.
inline constexpr std::size_t kMaxNesting = 100;
// Select items, VALUES items, IN items, FROM tables, GROUP BY or ORDER BY items, CASE branches in
// one list.
inline constexpr std::size_t kMaxListItems = 4096;
// Operators in one chain (a + b + c ..., p and q and ...): such a chain is a tree as deep as it is
// long.
inline constexpr std::size_t kMaxChain = 900;
// Levels of a whole tree, chains and nesting together: every walk recurses that deep at most.
inline constexpr std::size_t kMaxTreeHeight = kMaxChain + kMaxNesting;
// SELECTs in one UNION.
inline constexpr std::size_t kMaxUnionParts = 500;
inline constexpr std::size_t kMaxIdentifierUnits = 128;
// Literals of one statement that become parameters; a statement with more keeps all of them in its
// text.
inline constexpr std::size_t kMaxLiftedLiterals = 1000;

}  // namespace tarlo::tsql
