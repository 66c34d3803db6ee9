#include "jetsql/lexer.h"

#include <array>
#include <charconv>

#include "jetsql/days.h"
#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

enum Class : std::uint8_t { kWordMore = 1, kBlank = 2, kNotInName = 4 };

// OPTIMIZATION: one look-up a character where a page's text is told from kept ones; the table is
// filled by the rules of letters.h.
constexpr std::array<std::uint8_t, 256> kClasses = [] {
  std::array<std::uint8_t, 256> classes{};
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    unsigned flags = 0;
    if (continues_word(c)) flags |= kWordMore;
    if (is_blank(c)) flags |= kBlank;
    // A second "[", a NUL or the other kind of bracket cannot stand in a name.
    if (c == '[' || c == ']' || c == '`' || c == '\0') flags |= kNotInName;
    classes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(flags);
  }
  return classes;
}();

constexpr bool is(char c, Class flag) {
  return (kClasses[static_cast<unsigned char>(c)] & flag) != 0;
}

// Whether a clause word changes what becomes of literals behind it: 1 they become parameters, 0
// they stay in the text, -1 it is no clause word.
int clause_takes_values(std::string_view word) {
  switch (lower(word[0])) {
    case 'w':
      return same_letters(word, "where") ? 1 : -1;
    case 'h':
      return same_letters(word, "having") ? 1 : -1;
    case 'v':
      return same_letters(word, "values") ? 1 : -1;
    case 's':
      return same_letters(word, "set") ? 1 : same_letters(word, "select") ? 0 : -1;
    case 'o':
      return same_letters(word, "on") ? 1 : same_letters(word, "order") ? 0 : -1;
    case 'g':
      return same_letters(word, "group") ? 0 : -1;
    case 'f':
      return same_letters(word, "from") ? 0 : -1;
    case 'u':
      return same_letters(word, "union") ? 0 : -1;
    default:
      return -1;
  }
}

// Digits alone are looked at only where they are so many that it could matter.
bool held_by_a_double(std::string_view digits, bool exponent) {
  constexpr std::size_t kAlwaysHeld = 300;
  if (digits.size() < kAlwaysHeld && !exponent) return true;
  double value = 0;
  return std::from_chars(digits.data(), digits.data() + digits.size(), value).ec == std::errc();
}

}  // namespace

Token Lexer::made(TokenKind kind, std::size_t begin) {
  Token token;
  token.kind = kind;
  token.begin = static_cast<std::uint32_t>(begin);
  token.end = static_cast<std::uint32_t>(position_);
  const bool literal =
      kind == TokenKind::Number || kind == TokenKind::Text || kind == TokenKind::Date;
  if (literal && values_ && parameters_ < kMaxParameters) {
    token.takes_value = true;
    ++parameters_;
  }
  return token;
}

Token Lexer::refused(Refusal refusal, std::size_t begin) {
  position_ = sql_.size();
  Token token = made(TokenKind::Refused, begin);
  token.refusal = refusal;
  return token;
}

Token Lexer::next() {
  while (position_ < sql_.size() && is(sql_[position_], kBlank)) ++position_;
  const std::size_t begin = position_;
  if (begin >= sql_.size()) return made(TokenKind::End, begin);
  const char c = sql_[begin];
  if (begins_word(c)) return word(begin);
  if (is_digit(c) || (c == '.' && is_digit(at(begin + 1)))) return number(begin);
  switch (c) {
    case '[':
      return name(begin, ']');
    case '`':
      return name(begin, '`');
    case '\'':
    case '"':
      return text(begin, c);
    case '#':
      return date(begin);
    default:
      return symbol(begin);
  }
}

Token Lexer::word(std::size_t begin) {
  while (position_ < sql_.size() && is(sql_[position_], kWordMore)) ++position_;
  follow_clause(sql_.substr(begin, position_ - begin));
  return made(TokenKind::Word, begin);
}

void Lexer::follow_clause(std::string_view word) {
  if (word.size() < 2 || word.size() > 6) return;
  const int change = clause_takes_values(word);
  if (change >= 0) values_ = change != 0;
}

Token Lexer::name(std::size_t begin, char close) {
  std::size_t end = begin + 1;
  bool blank = true;
  while (end < sql_.size() && !is(sql_[end], kNotInName)) {
    blank = blank && is(sql_[end], kBlank);
    ++end;
  }
  if (at(end) != close || end >= sql_.size()) return refused(Refusal::OpenName, begin);
  if (blank) return refused(Refusal::EmptyName, begin);
  position_ = end + 1;
  return made(TokenKind::Name, begin);
}

Token Lexer::text(std::size_t begin, char quote) {
  std::size_t end = sql_.find(quote, begin + 1);
  while (end != std::string_view::npos && at(end + 1) == quote && end + 1 < sql_.size()) {
    end = sql_.find(quote, end + 2);
  }
  if (end == std::string_view::npos) return refused(Refusal::OpenText, begin);
  position_ = end + 1;
  return made(TokenKind::Text, begin);
}

Token Lexer::date(std::size_t begin) {
  const std::size_t end = sql_.find('#', begin + 1);
  if (end == std::string_view::npos) return refused(Refusal::BadDate, begin);
  if (!parse_date(sql_.substr(begin + 1, end - begin - 1))) {
    return refused(Refusal::BadDate, begin);
  }
  position_ = end + 1;
  return made(TokenKind::Date, begin);
}

Token Lexer::number(std::size_t begin) {
  while (is_digit(at(position_))) ++position_;
  if (at(position_) == '.') {
    ++position_;
    while (is_digit(at(position_))) ++position_;
  }
  bool exponential = false;
  if (lower(at(position_)) == 'e') {
    // "5Eqv x" and the like: an exponent only with its digits.
    std::size_t exponent = position_ + 1;
    if (at(exponent) == '+' || at(exponent) == '-') ++exponent;
    if (is_digit(at(exponent))) {
      while (is_digit(at(exponent))) ++exponent;
      position_ = exponent;
      exponential = true;
    }
  }
  if (!held_by_a_double(sql_.substr(begin, position_ - begin), exponential)) {
    return refused(Refusal::BadNumber, begin);
  }
  return made(TokenKind::Number, begin);
}

Token Lexer::symbol(std::size_t begin) {
  const char c = sql_[begin];
  const char following = at(begin + 1);
  ++position_;
  char symbol = c;
  switch (c) {
    case '<':
      if (following == '>') symbol = kNotEqual;
      if (following == '=') symbol = kLessEqual;
      break;
    case '>':
      if (following == '=') symbol = kGreaterEqual;
      break;
    case '-':
      if (following == '-') return refused(Refusal::Comment, begin);
      break;
    case '/':
      if (following == '*') return refused(Refusal::Comment, begin);
      break;
    case '(':
      enclosing_ = enclosing_ << 1 | (values_ ? 1U : 0U);
      break;
    case ')':
      values_ = (enclosing_ & 1U) != 0;
      enclosing_ >>= 1;
      break;
    case '?':
      return made(TokenKind::Question, begin);
    case '@':
      if (following != '@' || !begins_word(at(begin + 2)))
        return refused(Refusal::Character, begin);
      ++position_;
      while (continues_word(at(position_))) ++position_;
      return made(TokenKind::Variable, begin);
    case '=':
    case '+':
    case '*':
    case '\\':
    case '^':
    case '&':
    case ',':
    case '.':
    case ';':
    case '!':
      break;
    default:
      return refused(Refusal::Character, begin);
  }
  if (symbol != c) ++position_;
  Token token = made(TokenKind::Symbol, begin);
  token.symbol = symbol;
  return token;
}

namespace {

std::string unquoted(std::string_view inside, char quote) {
  std::string text;
  text.reserve(inside.size());
  for (std::size_t i = 0; i < inside.size(); ++i) {
    text += inside[i];
    if (inside[i] == quote) ++i;
  }
  return text;
}

Literal number_value(std::string_view digits) {
  Literal literal;
  const char* last = digits.data() + digits.size();
  std::int64_t whole = 0;
  const auto read = std::from_chars(digits.data(), last, whole);
  if (read.ec == std::errc() && read.ptr == last) {
    literal.kind = Literal::Kind::Integer;
    literal.integer = whole;
    return literal;
  }
  literal.kind = Literal::Kind::Double;
  std::from_chars(digits.data(), last, literal.number);
  return literal;
}

}  // namespace

Literal literal_value(std::string_view sql, const Token& token) {
  const std::string_view whole = sql.substr(token.begin, token.end - token.begin);
  if (token.kind == TokenKind::Number) return number_value(whole);
  const std::string_view inside = whole.substr(1, whole.size() - 2);
  Literal literal;
  if (token.kind == TokenKind::Date) {
    literal.kind = Literal::Kind::Date;
    literal.number = parse_date(inside).value_or(0);
    return literal;
  }
  literal.kind = Literal::Kind::Text;
  if (inside.find(whole[0]) == std::string_view::npos) {
    literal.text.assign(inside);
  } else {
    literal.text = unquoted(inside, whole[0]);
  }
  return literal;
}

std::string_view name_text(std::string_view sql, const Token& token) {
  if (token.kind == TokenKind::Name)
    return sql.substr(token.begin + 1, token.end - token.begin - 2);
  return sql.substr(token.begin, token.end - token.begin);
}

}  // namespace rk::jetsql
