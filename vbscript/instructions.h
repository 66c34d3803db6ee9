// The compact form that programs run in: register instructions of 16 bytes.
//
// An operand names a place: two tables away at most, never a name. Statements begin at marks, which
// give the line of an error and the place where On Error Resume Next goes on: the first mark that
// may be resumed at behind the instruction that failed. Blocks are laid out in the order of the
// source, so that the rule holds for conditions and loops as the language has it: behind a failing
// If condition comes the Then block.
#ifndef RK_VBSCRIPT_INSTRUCTIONS_H_
#define RK_VBSCRIPT_INSTRUCTIONS_H_

#include <cstdint>

namespace rk::vbscript {

// Three bits say which table, the others the place in it.
using Operand = std::uint32_t;

enum class Place : std::uint32_t {
  Register,   // of the frame: parameters by value, local variables, temporaries
  Constant,   // of the unit
  Global,     // of the program's run
  Field,      // of the object whose method runs
  Reference,  // a variable elsewhere, by the frame's table: parameters by reference
  Outer,      // a variable elsewhere, by the unit's table: names of code made at run time
};

inline constexpr unsigned kPlaceShift = 29;
inline constexpr Operand kIndexMask = (Operand{1} << kPlaceShift) - 1;
inline constexpr Operand kNoOperand = ~Operand{0};

constexpr Operand operand(Place place, std::uint32_t index) {
  return static_cast<Operand>(place) << kPlaceShift | index;
}
constexpr Place place_of(Operand o) {
  return static_cast<Place>(o >> kPlaceShift);
}
constexpr std::uint32_t index_of(Operand o) {
  return o & kIndexMask;
}

// How `a` and `b` of a comparison meet: the relation, and which side is a literal.
enum class Relation : std::uint16_t { Equal, NotEqual, Less, Greater, LessEqual, GreaterEqual };
inline constexpr std::uint16_t kRelationMask = 7;
inline constexpr std::uint16_t kLeftLiteral = 8;
inline constexpr std::uint16_t kRightLiteral = 16;
// Case tests: a text that is no number is unequal to a number instead of an error.
inline constexpr std::uint16_t kCaseTest = 32;

// In the notes a, b, c are operands unless said otherwise; list(c) is the list that begins there.
// clang-format off
enum class Op : std::uint16_t {
  Let,        // a = b; an object gives its default member
  LetMove,    // the same from temporary b, which becomes Empty
  Copy,       // a = b as it is
  SetObject,  // Set a = b
  Clear,      // b registers from index a become Empty
  Add, Subtract, Multiply, Divide, IntegerDivide, Modulo, Power, Negate, Plus, Concatenate,  // a = b o c
  Not, And, Or, Xor, Eqv, Imp, Is,
  Compare,      // a = b relation(n) c
  JumpCompare,  // to c (an instruction) unless a relation(n) b
  Jump,         // to c
  JumpFalse,    // to c where a is false or Null
  JumpTrue,     // to c where a is true
  Loop,         // to c, backwards
  ConcatenateMany,  // a = all of list(c) joined; list: count, operands
  AppendHeld,       // a = b & c, where temporary b holds what a was
  Index1,           // a = b(c)
  Index,            // a = b(list(c)); list: count, operands
  StoreIndex1,      // a(b) = c
  StoreIndex,       // a(list(b)) = c; n: 1 for Set
  MemberGet,   // a = b.name(...); list(c): count, site, name constant, operands
  MemberCall,  // b.name ...; the same
  MemberLet,   // b.name(...) = a; the same
  MemberSet,
  CallProcedure,  // a = procedure index b (list(c)); list: count, operands
  CallOwn,        // the same, code index b of this unit, on the same object
  CallName,       // a = the value or procedure in global slot index b (list(c))
  CallDynamic,    // a = procedure named by constant index b (list(c))
  CallValue,      // a list(c), as a statement; b: constant index of its name
  BuiltIn,        // a = built-in b (an index) of list(c)
  New,            // a = New class b (an index)
  NewNamed,       // a = New class named by constant index b
  Me,             // a = Me
  LoadName,       // a = what global slot index b means now
  CheckName,      // raises 500 while global slot index b is undefined; n: 1 where it is passed
  FindShared,     // shared name a (an index): code run meanwhile may have made the script's
  Birth,          // global slot index b exists from now on
  ForStart,       // list(c): variable, from, to, step, hidden; jumps to a (an instruction) past it
  ForNext,        // a: variable; b: first of the hidden registers (an index); to c while it goes on
  EachStart,      // a: hidden register; b: what is walked; to c
  EachNext,       // a: variable; b: hidden register; to c with the next item
  WithStart,      // a: hidden register = b, an object
  OnErrorResume,
  OnErrorStop,
  Return,
  Raise,         // error number b about the name in constant index c (or kNoOperand)
  WriteLiteral,  // b: constant index
  WriteValue,    // b
  ReDim,         // a(list(c)); n: 1 for Preserve
  DimArray,      // a = a new array; list(c): count, bounds; n: 1 for a fixed one
  Erase,         // a
  StorePath,     // a(...)(...) = c; list(b): rows of indexes, a count before each; n: 1 for Set
  WriteBack,     // a(...) = c where c is no longer what b was; the rows: list of Extra behind it
  Extra,         // carries operands of the instruction before
};
// clang-format on

struct Instruction {
  Op op;
  std::uint16_t n;
  std::uint32_t a;
  std::uint32_t b;
  std::uint32_t c;
};

static_assert(sizeof(Instruction) == 16);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_INSTRUCTIONS_H_
