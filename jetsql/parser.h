// Jet SQL text -> syntax tree: recursive descent for statements and clauses, operators by binding
// power. Thread rule: pure.
#pragma once

#include <memory>
#include <string_view>

#include "jetsql/syntax.h"

namespace rk::jetsql {

// How deep brackets, sub-queries and chains of operators may nest, so that a hostile text meets an
// error before the stack meets its end, and the engine's own limit of 1000 is not reached.
inline constexpr int kMaxDepth = 250;

// Raises SqlError (kSyntaxError).
std::unique_ptr<Tree> parse(std::string_view sql);

}  // namespace rk::jetsql
