// The syntax tree: what the parser makes and the compiler reads. Plain data.
//
// Nodes lie in the tree's own stores and point at one another, so that a tree of any shape is
// destroyed without recursion. Left-deep chains (a & b & c ...) may be thousands of nodes long;
// everything else is bounded by kMaxNesting.
#ifndef RK_VBSCRIPT_SYNTAX_TREE_H_
#define RK_VBSCRIPT_SYNTAX_TREE_H_

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "value/value.h"
#include "vbscript/names.h"

namespace rk::vbscript {

// Where a node came from: piece and offset, as tokens have them.
struct Position {
  int piece = 0;
  std::uint32_t offset = 0;
};

enum class Operator : std::uint8_t {
  Power,
  Negate,
  Plus,
  Multiply,
  Divide,
  IntegerDivide,
  Modulo,
  Add,
  Subtract,
  Concatenate,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessEqual,
  GreaterEqual,
  Is,
  Not,
  And,
  Or,
  Xor,
  Eqv,
  Imp,
};

struct Expression {
  enum class Kind : std::uint8_t {
    Constant,  // value
    Name,      // name
    Me,
    Member,      // left.name
    WithMember,  // .name
    Call,        // left(arguments): an element, a call or a default member
    New,         // New name
    Unary,       // operation left
    Binary,      // left operation right
    Brackets,    // (left)
    Missing,     // an argument left out
  };
  Kind kind = Kind::Constant;
  Operator operation = Operator::Add;
  bool literal = false;  // a Constant written as number or text, not as a word
  NameId name = kNoName;
  Position position;
  Value value;
  const Expression* left = nullptr;
  const Expression* right = nullptr;
  std::vector<const Expression*> arguments;
};

struct Statement;
using Block = std::vector<const Statement*>;

struct Parameter {
  NameId name = kNoName;
  bool by_value = false;
};

// A variable with the bounds of `Dim name(bounds)`; for ReDim the bounds are expressions.
struct Declarator {
  NameId name = kNoName;
  Position position;
  bool is_array = false;
  std::vector<std::int32_t> bounds;             // Dim
  std::vector<const Expression*> redim_bounds;  // ReDim
  const Expression* target = nullptr;           // ReDim: the variable as an expression
  bool is_public = true;                        // of a class
};

struct Constant {
  NameId name = kNoName;
  Position position;
  Value value;
};

struct Procedure {
  enum class Kind : std::uint8_t { Sub, Function, PropertyGet, PropertyLet, PropertySet };
  Kind kind = Kind::Sub;
  NameId name = kNoName;
  Position position;
  Position end;
  bool is_public = true;
  bool is_default = false;
  std::vector<Parameter> parameters;
  Block body;
};

struct Class {
  NameId name = kNoName;
  Position position;
  std::vector<Declarator> fields;
  std::vector<const Procedure*> procedures;
};

struct CaseBranch {
  Position position;
  std::vector<const Expression*> tests;  // none: Case Else
  Block body;
};

struct Statement {
  enum class Kind : std::uint8_t {
    Assign,     // target = value
    SetAssign,  // Set target = value
    Call,       // target arguments
    Dim,        // declarators
    ReDim,      // declarators; preserve
    Erase,      // target
    Const,      // constants
    If,         // branches (a test each; Else has none)
    Select,     // target; branches
    For,        // target = value To limit Step step: body
    ForEach,    // target In value: body
    Do,         // test, value, test_at_end, body
    With,       // value: body
    Exit,       // exit
    OnError,    // resume_next
    OptionExplicit,
    WriteLiteral,  // literal
    WriteValue,    // value
    Stop,
  };
  enum class ExitKind : std::uint8_t { Do, For, Function, Sub, Property };
  enum class Test : std::uint8_t { None, While, Until };

  Kind kind = Kind::Call;
  bool preserve = false;
  bool resume_next = false;
  bool test_at_end = false;
  bool is_while = false;  // While ... Wend, which no Exit leaves
  ExitKind exit = ExitKind::Sub;
  Test test = Test::None;
  Position position;
  Position end;  // of the closing line, where there is one
  const Expression* target = nullptr;
  const Expression* value = nullptr;
  const Expression* limit = nullptr;
  const Expression* step = nullptr;
  std::vector<const Expression*> arguments;
  std::vector<Declarator> declarators;
  std::vector<Constant> constants;
  std::vector<CaseBranch> branches;
  Block body;
  Value literal;
};

struct SyntaxTree {
  Names names;
  bool option_explicit = false;
  Block body;
  std::vector<const Procedure*> procedures;
  std::vector<const Class*> classes;

  std::deque<Expression> expressions;
  std::deque<Statement> statements;
  std::deque<Procedure> procedure_store;
  std::deque<Class> class_store;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_SYNTAX_TREE_H_
