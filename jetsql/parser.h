// Jet SQL text -> syntax tree: recursive descent for statements and clauses, operators by binding
// power. Thread rule: pure.
#pragma once

#include <memory>
#include <string_view>

#include "jetsql/statement.h"

namespace rk::jetsql {

// How deep brackets, calls and sub-queries may nest, so that a hostile text meets an error before
// the stack meets its end. The engine's own parser gives up at about a third of it where each level
// holds an operator.
inline constexpr int kMaxNesting = 100;

// How many operators may follow one another in a chain, which binds from the left: within the
// engine's own limit of 1000.
inline constexpr int kMaxHeight = 500;

// Raises SqlError (kSyntaxError).
std::unique_ptr<Tree> parse(std::string_view sql);

}  // namespace rk::jetsql
