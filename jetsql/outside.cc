// What came from outside has one place in a SQL text: within quotes that it does not close, or as a
// number. Anything more would be a second author of the statement.
#include "jetsql/letters.h"
#include "jetsql/lexer.h"
#include "jetsql/token_stream.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

[[noreturn]] void refuse(std::string_view sql, std::size_t begin, std::size_t end) {
  std::string_view value = sql.substr(begin, end - begin);
  while (!value.empty() && is_blank(value.front())) value.remove_prefix(1);
  while (!value.empty() && is_blank(value.back())) value.remove_suffix(1);
  // A word of the language's own is a word like any other here.
  bool word = !value.empty() && begins_word(value.front());
  for (const char c : value) word = word && continues_word(c);
  if (word) {
    throw SqlError(kNoValueGiven, "No value given for one or more required parameters.", begin);
  }
  throw SqlError(kSyntaxError, "Syntax error (missing operator) in query expression.", begin);
}

// The quote whose text is open behind sql[0, end), '\0' where none is, and 'x' where something else
// is open there: a name, a date, or what the lexer refuses.
char open_quote(std::string_view sql, std::size_t end) {
  Lexer lexer(sql.substr(0, end));
  for (;;) {
    const Token token = lexer.next();
    if (token.kind == TokenKind::End) return '\0';
    if (token.kind != TokenKind::Refused) continue;
    return token.refusal == Refusal::OpenText ? sql[token.begin] : 'x';
  }
}

// Every quote of the kind is doubled, so that none closes the text.
bool stays_within(std::string_view value, char quote) {
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != quote) continue;
    if (i + 1 >= value.size() || value[i + 1] != quote) return false;
    ++i;
  }
  return true;
}

std::size_t skip_digits(std::string_view value, std::size_t at) {
  while (at < value.size() && is_digit(value[at])) ++at;
  return at;
}

// A sign, digits, a decimal part, an exponent, with blanks or tabs around it.
bool is_one_number(std::string_view value) {
  const auto padding = [](char c) { return c == ' ' || c == '\t'; };
  while (!value.empty() && padding(value.front())) value.remove_prefix(1);
  while (!value.empty() && padding(value.back())) value.remove_suffix(1);
  std::size_t at = !value.empty() && (value[0] == '+' || value[0] == '-') ? 1 : 0;
  const std::size_t whole = skip_digits(value, at);
  std::size_t digits = whole - at;
  at = whole;
  if (at < value.size() && value[at] == '.') {
    const std::size_t part = skip_digits(value, at + 1);
    digits += part - at - 1;
    at = part;
  }
  if (digits == 0) return false;
  if (at < value.size() && lower(value[at]) == 'e') {
    ++at;
    if (at < value.size() && (value[at] == '+' || value[at] == '-')) ++at;
    const std::size_t exponent = skip_digits(value, at);
    if (exponent == at) return false;
    at = exponent;
  }
  return at == value.size();
}

// What stands beside the number must not become one token with it, nor a comment with its sign.
bool stands_alone(std::string_view sql, std::size_t begin, std::size_t end) {
  const auto sticks = [](char c) {
    return continues_word(c) || c == '.' || c == '-' || c == '+' || c == '#' || c == '@';
  };
  if (begin > 0 && sticks(sql[begin - 1])) return false;
  return end >= sql.size() || !sticks(sql[end]);
}

// 1e999 is none that a column could be compared with.
bool is_held(std::string_view value) {
  Lexer lexer(value);
  Token token = lexer.next();
  if (token.kind == TokenKind::Symbol) token = lexer.next();
  return token.kind == TokenKind::Number;
}

}  // namespace

void check_outside(std::string_view sql, std::size_t begin, std::size_t end) {
  const std::string_view value = sql.substr(begin, end - begin);
  const char quote = open_quote(sql, begin);
  if (quote == '\'' || quote == '"') {
    if (!stays_within(value, quote)) refuse(sql, begin, end);
    return;
  }
  const bool number = quote == '\0' && is_one_number(value) && is_held(value);
  if (!number || !stands_alone(sql, begin, end)) refuse(sql, begin, end);
}

}  // namespace rk::jetsql
