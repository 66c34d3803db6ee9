// Jet SQL text -> tokens, one at a time and without a copy. The lexer also knows, by the clause
// words and brackets that it has passed, whether a literal stands where a value may stand; both
// read_shape() and the parser take that from here, so that they always agree which literals become
// parameters. Thread rule: one lexer on one thread.
#pragma once

#include <cstdint>
#include <string_view>

#include "jetsql/translate.h"

namespace rk::jetsql {

enum class TokenKind : std::uint8_t {
  End,
  Word,      // letters without brackets: a keyword or a name
  Name,      // [name] or `name`
  Number,    // 5, 5.5, .5, 5e3
  Text,      // 'text' or "text"
  Date,      // #date#
  Question,  // ?
  Variable,  // @@identity
  Symbol,    // an operator or a mark
  Refused    // the lexer cannot go on; see Refusal
};

enum class Refusal : std::uint8_t {
  None,
  OpenText,
  OpenName,
  EmptyName,
  BadDate,
  BadNumber,
  Comment,
  Character
};

struct Token {
  TokenKind kind = TokenKind::End;
  Refusal refusal = Refusal::None;
  char symbol = 0;           // of a Symbol: the character, or kNotEqual, kLessEqual, kGreaterEqual
  bool takes_value = false;  // of a literal: it becomes a parameter
  std::uint32_t begin = 0;   // byte offsets in the text
  std::uint32_t end = 0;
};

inline constexpr char kNotEqual = 'N';
inline constexpr char kLessEqual = 'L';
inline constexpr char kGreaterEqual = 'G';

// A text may be this long. Longer ones are refused before they are read: offsets have 32 bits, and
// no page writes a megabyte of SQL.
inline constexpr std::size_t kMaxTextBytes = 1 << 20;

// SQLite takes 32766 parameters; an Insert or In list with more literals than this keeps the rest
// in its text.
inline constexpr std::size_t kMaxParameters = 1000;

class Lexer {
 public:
  explicit Lexer(std::string_view sql) : sql_(sql) {}

  Token next();

 private:
  Token made(TokenKind kind, std::size_t begin);
  Token refused(Refusal refusal, std::size_t begin);
  Token word(std::size_t begin);
  Token name(std::size_t begin, char close);
  Token text(std::size_t begin, char quote);
  Token date(std::size_t begin);
  Token number(std::size_t begin);
  Token symbol(std::size_t begin);
  void follow_clause(std::string_view word);
  char at(std::size_t i) const { return i < sql_.size() ? sql_[i] : '\0'; }

  std::string_view sql_;
  std::size_t position_ = 0;
  std::size_t parameters_ = 0;
  bool values_ = false;  // in a clause whose literals become parameters
  std::uint64_t enclosing_ =
      0;  // values_ of the enclosing brackets, the innermost in the lowest bit
};

// The value of a literal token (Number, Text, Date).
Literal literal_value(std::string_view sql, const Token& token);

// The name in a Word or Name token, without brackets.
std::string_view name_text(std::string_view sql, const Token& token);

}  // namespace rk::jetsql
