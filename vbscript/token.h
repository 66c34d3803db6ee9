// Tokens of the page language, and its keywords.
#ifndef RK_VBSCRIPT_TOKEN_H_
#define RK_VBSCRIPT_TOKEN_H_

#include <cstdint>
#include <string_view>

#include "value/value.h"

namespace rk::vbscript {

// Words that the grammar reserves, and (from Default on) words that mean something only in their
// place and are names elsewhere. Behind a dot every word is a name.
// clang-format off
enum class Keyword : std::uint8_t {
  None,
  And, ByRef, ByVal, Call, Case, Class, Const, Dim, Do, Each, Else, ElseIf, Empty, End, Eqv, Exit,
  False, For, Function, GoTo, If, Imp, In, Is, Let, Loop, Me, Mod, New, Next, Not, Nothing, Null,
  On, Option, Or, Preserve, Private, Public, ReDim, Rem, Resume, Select, Set, Stop, Sub, Then, To,
  True, Until, WEnd, While, With, Xor,
  Default, Erase, Error, Explicit, Get, Property, Step,
};
// clang-format on

inline bool reserved(Keyword word) {
  return word != Keyword::None && word < Keyword::Default;
}

// The keyword that a word spells in any letter case.
Keyword keyword_of(std::string_view word);

enum class TokenKind : std::uint8_t {
  EndOfSource,
  NewLine,  // also the end of a piece
  Colon,
  Name,      // also keywords
  Constant,  // a number, text or date; `value` holds it
  Dot,       // directly behind what it belongs to
  WithDot,   // behind a blank or at the start: `.member` of the With block
  Comma,
  Open,
  Close,
  Plus,
  Minus,
  Star,
  Slash,
  Backslash,
  Caret,
  Ampersand,
  Equal,
  Less,
  Greater,
  LessEqual,
  GreaterEqual,
  NotEqual,
  WriteLiteral,  // page text; `value` holds it
  WriteValue,    // an expression piece begins
};

struct Token {
  TokenKind kind = TokenKind::EndOfSource;
  Keyword keyword = Keyword::None;
  bool after_blank = false;
  int piece = 0;
  std::uint32_t offset = 0;  // in the piece's text
  std::string_view text;     // a name without its brackets
  Value value;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_TOKEN_H_
