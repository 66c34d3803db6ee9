#include "jetsql/token_stream.h"

#include <limits>

#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

// How much of a text an error's own text repeats.
constexpr std::size_t kExcerptBytes = 120;

// Words that begin, end or join something wherever they stand. Words that Jet knows but that old
// pages use for columns (date, user, type, time, money, password) are names here.
constexpr std::string_view kReserved[] = {
    "all",    "alter", "and",      "as",    "asc",    "between",    "by",    "create",
    "delete", "desc",  "distinct", "drop",  "eqv",    "exists",     "from",  "group",
    "having", "imp",   "in",       "inner", "insert", "into",       "is",    "join",
    "like",   "mod",   "not",      "null",  "on",     "or",         "order", "select",
    "set",    "table", "top",      "union", "update", "values",     "where", "xor",
    "true",   "false", "left",     "right", "outer",  "distinctrow"};

std::string_view refusal_text(Refusal refusal) {
  switch (refusal) {
    case Refusal::OpenText:
      return "Syntax error in string";
    case Refusal::OpenName:
      return "Invalid bracketing of name";
    case Refusal::EmptyName:
      return "Invalid bracketing of name (nothing stands between the brackets)";
    case Refusal::BadDate:
      return "Syntax error in date";
    case Refusal::BadNumber:
      return "Syntax error in number";
    case Refusal::Comment:
      return "Syntax error (comments are not taken)";
    default:
      return "Syntax error (a character that has no meaning here)";
  }
}

}  // namespace

bool is_reserved(std::string_view word) {
  for (const std::string_view reserved : kReserved) {
    if (same_letters(reserved, word)) return true;
  }
  return false;
}

TokenStream::TokenStream(std::string_view sql) : sql_(sql) {
  if (sql.size() > kMaxTextBytes) fail_at(kMaxTextBytes, "The SQL text is too long");
  Lexer lexer(sql);
  tokens_.reserve(sql.size() / 4 + 8);
  int parameters = 0;
  do {
    const Token token = lexer.next();
    if (token.kind == TokenKind::Refused) fail_at(token.begin, refusal_text(token.refusal));
    tokens_.push_back(token);
    parameters_.push_back(token.takes_value ? parameters++ : -1);
  } while (tokens_.back().kind != TokenKind::End);
}

const Token& TokenStream::peek(std::size_t ahead) const {
  const std::size_t place = next_ + ahead;
  return place < tokens_.size() ? tokens_[place] : tokens_.back();
}

Token TokenStream::take() {
  const Token token = peek();
  if (next_ + 1 < tokens_.size()) ++next_;
  return token;
}

bool TokenStream::at_word(std::string_view word, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::Word && same_letters(name_text(sql_, token), word);
}

bool TokenStream::at_symbol(char symbol, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == TokenKind::Symbol && token.symbol == symbol;
}

bool TokenStream::take_word(std::string_view word) {
  if (!at_word(word)) return false;
  take();
  return true;
}

bool TokenStream::take_symbol(char symbol) {
  if (!at_symbol(symbol)) return false;
  take();
  return true;
}

void TokenStream::expect_word(std::string_view word, std::string_view complaint) {
  if (!take_word(word)) fail(complaint);
}

void TokenStream::expect_symbol(char symbol, std::string_view complaint) {
  if (!take_symbol(symbol)) fail(complaint);
}

bool TokenStream::at_name(std::size_t ahead) const {
  const Token& token = peek(ahead);
  if (token.kind == TokenKind::Name) return true;
  return token.kind == TokenKind::Word && !is_reserved(name_text(sql_, token));
}

std::string TokenStream::expect_name(std::string_view complaint) {
  if (!at_name()) fail(complaint);
  return std::string(name_text(sql_, take()));
}

std::int64_t TokenStream::expect_whole_number(std::string_view complaint) {
  if (peek().kind != TokenKind::Number) fail(complaint);
  const Literal value = literal_value(sql_, peek());
  if (value.kind != Literal::Kind::Integer ||
      value.integer > std::numeric_limits<std::int32_t>::max()) {
    fail(complaint);
  }
  take();
  return value.integer;
}

void TokenStream::fail(std::string_view complaint) const {
  fail_at(peek().begin, complaint);
}

void TokenStream::fail_at(std::size_t position, std::string_view complaint) const {
  std::string text(complaint);
  if (position < sql_.size()) {
    text += " at '" + excerpt(position, sql_.size()) + "'";
  }
  throw SqlError(kSyntaxError, text + ".", position);
}

std::string TokenStream::excerpt(std::size_t begin, std::size_t end) const {
  if (end - begin <= kExcerptBytes) return std::string(sql_.substr(begin, end - begin));
  std::size_t cut = begin + kExcerptBytes;
  while (cut > begin && (static_cast<unsigned char>(sql_[cut]) & 0xC0U) == 0x80U) --cut;
  return std::string(sql_.substr(begin, cut - begin)) + "...";
}

}  // namespace rk::jetsql
