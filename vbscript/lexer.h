// Lexer: the tokens of a source. One pass over all pieces; throws SyntaxError.
//
// Tokens view the texts of the source, which must outlive them. A piece's end is a NewLine.
#ifndef RK_VBSCRIPT_LEXER_H_
#define RK_VBSCRIPT_LEXER_H_

#include <string_view>
#include <vector>

#include "vbscript/source.h"
#include "vbscript/syntax_error.h"
#include "vbscript/token.h"

namespace rk::vbscript {

class Lexer {
 public:
  explicit Lexer(const Source& source) : source_(source) {}
  std::vector<Token> tokens();

 private:
  void piece(int index);
  void script_token();
  void blanks_and_comments();
  bool line_continues();
  void line_end();
  void skip_to_line_end();
  void name();
  void bracketed_name();
  void number();
  void based_number(int base, std::size_t digits);
  bool based_number_follows();
  void text();
  void date();
  void punctuation();
  Token& add(TokenKind kind, std::size_t begin);
  void add_constant(Value value, std::size_t begin);
  bool behind_operand() const;
  bool behind_called_name() const;
  char at(std::size_t offset) const { return offset < text_.size() ? text_[offset] : '\0'; }
  [[noreturn]] void fail(const KnownError& error, std::size_t offset) const;

  const Source& source_;
  std::vector<Token> tokens_;
  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t behind_token_ =
      0;  // where the blanks before at_ begin: errors at a line's end are there
  int piece_ = 0;
  bool after_blank_ = false;
};

// The file, line and column of an offset in a piece, with its source line.
SyntaxError::Place place_in(const Source& source, int piece, std::size_t offset);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_LEXER_H_
