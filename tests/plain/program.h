// Small programs of the page language, plainly: statements out of a row of choices, their source
// text, and what they print by a walk over the statements.
//
// They assign, print, branch, loop, leave loops, store into rows of rows, call a procedure by
// reference and by value, and trap errors in both.
#ifndef RK_TESTS_PLAIN_PROGRAM_H_
#define RK_TESTS_PLAIN_PROGRAM_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/plain/expression.h"

namespace rk::vbscript::plain {

struct Step {
  enum class Kind : std::uint8_t {
    Assign,      // v = term
    Store,       // rows(i)(j) = term
    Read,        // v = rows(i)(j)
    Keep,        // kept = rows
    ReadKept,    // v = kept(i)(j)
    Print,       // Print TypeName(v), v
    PrintError,  // Print Err.Number
    If,          // term; body, otherwise
    For,         // counter from 1 to 3; body
    Loop,        // Do ... Loop Until counter >= 2; body
    Select,      // v, other; body, otherwise
    Exit,        // leaves the loop around
    Call,        // Change v, term
    Trap,        // On Error Resume Next
    Untrap,      // On Error GoTo 0
  };
  Kind kind = Kind::Print;
  std::size_t variable = 0;
  std::size_t other = 0;
  std::size_t row = 0;
  std::size_t column = 0;
  std::size_t counter = 0;  // a loop's own
  bool in_for = false;      // Exit: what is left
  Term term;
  std::vector<Step> body;
  std::vector<Step> otherwise;
};

struct Program {
  bool traps = false;           // begins with On Error Resume Next
  std::vector<Step> procedure;  // Sub Change(v0, ByVal v1)
  std::vector<Step> script;
};

// Any row of choices makes a program; a short row a small one.
Program program_of(const std::vector<std::uint8_t>& choices);
std::string source_of(const Program& program);
// The lines it prints, and "error 13" behind them where an error ends it.
std::vector<std::string> lines_of(const Program& program);

}  // namespace rk::vbscript::plain

#endif  // RK_TESTS_PLAIN_PROGRAM_H_
