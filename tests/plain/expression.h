// Expressions of the page language, plainly: a tree out of a row of choices, its source text with
// no more brackets than its meaning needs, and its value by a walk over the tree.
//
// For the generated tests of the compiled form. The table of operators here is its own: it says
// once more which operator binds tighter.
#ifndef RK_TESTS_PLAIN_EXPRESSION_H_
#define RK_TESTS_PLAIN_EXPRESSION_H_

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "value/value.h"
#include "vbscript/syntax_tree.h"

namespace rk::vbscript::plain {

struct Variable {
  std::string literal;  // as the script assigns it
  Value value;
};
// v0, v1, ... of the generated scripts.
const std::vector<Variable>& variables();

struct Term {
  std::size_t variable = 0;  // where there is no operation
  std::string operation;     // "" for a variable; "Not" and "-" have one operand or two
  std::vector<Term> operands;
};

// Any row of choices makes a tree; a short row a small one.
Term term_of(const std::vector<std::uint8_t>& choices);
// Takes what it needs of the choices.
Term term_from(std::span<const std::uint8_t>& choices, int deepest);
std::string source_of(const Term& term);
// Where v0, v1, ... have these values. Throws ScriptError.
Value value_of(const Term& term, const std::vector<Value*>& values);
// Kind and text, as `Print TypeName(x), x` writes them.
std::string shown(const Value& value);
// The shown value, or "error 13".
std::string answer_of(const Term& term);
// A parsed tree with brackets around all that has operands.
std::string text_of(const SyntaxTree& tree, const Expression& expression);

}  // namespace rk::vbscript::plain

#endif  // RK_TESTS_PLAIN_EXPRESSION_H_
