// The syntax tree of expressions and selects. The nodes belong to a Tree (statement.h) and live as
// long as it does; they point at one another freely. Thread rule: one tree on one thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "jetsql/translate.h"

namespace rk::jetsql {

struct Select;
struct Binding;
struct Scope;
struct BuiltIn;

enum class Operator : std::uint8_t {
  None,
  Or,
  And,
  Xor,
  Eqv,
  Imp,
  Not,
  Equal,
  NotEqual,
  Less,
  LessEqual,
  Greater,
  GreaterEqual,
  Like,
  Join,
  Add,
  Subtract,
  Modulo,
  IntegerDivide,
  Multiply,
  Divide,
  Power,
  Negate
};

struct Expression {
  enum class Kind : std::uint8_t {
    Literal,    // literal, and parameter where it is taken out of the text
    Constant,   // name: true, false or null
    Column,     // qualifier, name
    Question,   // parameter: the page's value number
    Identity,   // @@identity
    Unary,      // op, operands[0]
    Binary,     // op, operands[0], operands[1]; negated: Not Like
    IsNull,     // operands[0]; negated
    Between,    // operands[0] to [2]; negated
    In,         // operands[0], then the list or select; negated
    Exists,     // select
    Subselect,  // select: its first column's value
    Call,       // name, operands; star: Count(*)
    Star        // qualifier or none: an output of a select only
  };

  Kind kind = Kind::Literal;
  Operator op = Operator::None;
  bool negated = false;
  bool star = false;
  int parameter = -1;
  int height = 1;           // of the tree below, counted for the limit
  std::uint32_t begin = 0;  // byte offsets in the text
  std::uint32_t end = 0;
  std::string qualifier;
  std::string name;
  jetsql::Literal literal;
  std::vector<Expression*> operands;
  Select* select = nullptr;

  // What the resolver finds out.
  Type type = Type::Unknown;
  const Binding* binding = nullptr;        // of a Column: where it comes from
  const jetsql::Column* column = nullptr;  // and which one it is
  const Expression* stands_for = nullptr;  // of a Column that names an output of its select
  const BuiltIn* built_in = nullptr;       // of a Call
  bool aggregated = false;                 // an aggregate stands within
  std::uint32_t weight = 1;                // nodes below, names counted as what they stand for
  bool resolving = false;                  // guards against names that stand for themselves
  bool resolved = false;
};

struct Source {
  enum class Kind : std::uint8_t { Table, Derived, Inner, Left, Right };
  Kind kind = Kind::Table;
  std::uint32_t begin = 0;
  std::string name;   // of a Table
  std::string alias;  // or empty
  Select* select = nullptr;
  const Binding* binding = nullptr;  // what the resolver made of a Table or Derived
  Source* left = nullptr;
  Source* right = nullptr;
  Expression* on = nullptr;
};

struct Output {
  Expression* value = nullptr;
  std::string alias;
};

struct Ordering {
  Expression* value = nullptr;
  bool descending = false;
};

struct Select {
  bool distinct = false;
  bool top_percent = false;
  std::int64_t top = -1;  // -1: all rows
  std::uint32_t begin = 0;
  std::vector<Output> outputs;
  std::string into;
  std::vector<Source*> from;  // parted by commas
  Expression* where = nullptr;
  std::vector<Expression*> group;
  Expression* having = nullptr;
  std::vector<Ordering> order;  // of the whole union where there is one

  struct Joined {
    bool all = false;
    Select* select = nullptr;
  };
  std::vector<Joined> unions;

  Scope* scope = nullptr;  // what the resolver made of it
};

}  // namespace rk::jetsql
