// The tokens of one text with one token of look-ahead and more, and the errors that name their
// place. Shared by the parts of the parser. Thread rule: one stream on one thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jetsql/lexer.h"
#include "jetsql/sql_error.h"

namespace rk::jetsql {

class TokenStream {
 public:
  // Raises SqlError where the lexer refuses the text.
  explicit TokenStream(std::string_view sql);

  const Token& peek(std::size_t ahead = 0) const;
  Token take();
  std::size_t place() const { return next_; }
  // Where the token before the next one ends.
  std::uint32_t last_end() const { return next_ == 0 ? 0 : tokens_[next_ - 1].end; }

  bool at_end() const { return peek().kind == TokenKind::End; }
  bool at_word(std::string_view word, std::size_t ahead = 0) const;
  bool at_symbol(char symbol, std::size_t ahead = 0) const;
  bool take_word(std::string_view word);
  bool take_symbol(char symbol);

  // Each raises kSyntaxError with `complaint` where something else stands.
  void expect_word(std::string_view word, std::string_view complaint);
  void expect_symbol(char symbol, std::string_view complaint);
  // A name of a table, column or alias: in brackets, or a word that is not reserved.
  bool at_name(std::size_t ahead = 0) const;
  std::string expect_name(std::string_view complaint);
  // A whole number without a sign.
  std::int64_t expect_whole_number(std::string_view complaint);

  [[noreturn]] void fail(std::string_view complaint) const;
  [[noreturn]] void fail_at(std::size_t position, std::string_view complaint) const;

  // Numbers of the literals that become parameters, in order of their tokens.
  int parameter_of(std::size_t place) const { return parameters_[place]; }
  std::string_view sql() const { return sql_; }
  // The text from one offset to another, shortened for an error's text.
  std::string excerpt(std::size_t begin, std::size_t end) const;

 private:
  std::string_view sql_;
  std::vector<Token> tokens_;
  std::vector<int> parameters_;
  std::size_t next_ = 0;
};

// Words that cannot be names without brackets.
bool is_reserved(std::string_view word);

}  // namespace rk::jetsql
