#include "vbscript/lexer.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <string>

#include "value/conversions.h"
#include "value/dates.h"
#include "vbscript/limits.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}
bool in_name(char c) {
  return is_letter(c) || is_digit(c) || c == '_';
}
bool is_line_end(char c) {
  return c == '\n' || c == '\r';
}

// What separates tokens besides blank and tab: the wide blank of Chinese texts is no letter, and a
// byte-order mark may stand where files were joined.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kWideBlank = "\xE3\x80\x80";

int digit_value(char c) {
  if (is_digit(c)) return c - '0';
  const char lower = ascii_lower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

Value decimal_constant(const std::string& digits) {
  const double number = std::strtod(digits.c_str(), nullptr);
  if (digits.find_first_of(".eE") != std::string::npos) return Value::real(number);
  if (number <= std::numeric_limits<std::int16_t>::max()) {
    return Value::integer(static_cast<std::int16_t>(number));
  }
  if (number <= std::numeric_limits<std::int32_t>::max()) {
    return Value::long_integer(static_cast<std::int32_t>(number));
  }
  return Value::real(number);
}

}  // namespace

SyntaxError::Place place_in(const Source& source, int piece, std::size_t offset) {
  SyntaxError::Place place;
  if (source.pieces.empty()) return place;
  const SourcePiece& from = source.pieces.at(static_cast<std::size_t>(piece));
  const std::string_view text = from.text;
  offset = std::min(offset, text.size());
  std::size_t line_start = 0;
  place.line = from.line;
  for (std::size_t i = 0; i < offset; ++i) {
    const bool ends =
        text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n'));
    if (!ends) continue;
    ++place.line;
    line_start = i + 1;
  }
  const std::size_t line_end = text.find_first_of("\r\n", line_start);
  place.source_line =
      text.substr(line_start, line_end == text.npos ? text.npos : line_end - line_start);
  const std::size_t before = std::min(offset - line_start, place.source_line.size());
  const auto characters = std::count_if(
      place.source_line.begin(), place.source_line.begin() + static_cast<std::ptrdiff_t>(before),
      [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
  place.column = static_cast<int>(characters) + 1;
  place.indent = static_cast<int>(characters);
  if (line_start == 0) place.column += from.column - 1;
  place.path = source.files.empty() ? "" : source.files.at(static_cast<std::size_t>(from.file));
  return place;
}

std::vector<Token> Lexer::tokens() {
  for (std::size_t i = 0; i < source_.pieces.size(); ++i) piece(static_cast<int>(i));
  if (!source_.pieces.empty()) piece_ = static_cast<int>(source_.pieces.size()) - 1;
  add(TokenKind::EndOfSource, text_.size());
  return std::move(tokens_);
}

void Lexer::piece(int index) {
  const SourcePiece& from = source_.pieces[static_cast<std::size_t>(index)];
  piece_ = index;
  text_ = from.text;
  at_ = 0;
  after_blank_ = true;
  // Whatever reads texts further on relies on their form.
  if (!is_valid_utf8(text_)) fail(syntax::kInvalidCharacter, 0);
  if (from.kind == SourcePiece::Kind::Literal) {
    if (text_.empty()) return;
    add(TokenKind::WriteLiteral, 0).value = Value::text(text_);
    add(TokenKind::NewLine, text_.size());
    return;
  }
  if (from.kind == SourcePiece::Kind::Expression) add(TokenKind::WriteValue, 0);
  while (true) {
    behind_token_ = at_;
    blanks_and_comments();
    if (at_ >= text_.size()) break;
    script_token();
  }
  add(TokenKind::NewLine, behind_token_);
}

void Lexer::script_token() {
  const char c = text_[at_];
  if (is_line_end(c)) {
    line_end();
  } else if (is_letter(c)) {
    name();
  } else if (is_digit(c) || (c == '.' && is_digit(at(at_ + 1)))) {
    number();
  } else if (c == '"') {
    text();
  } else if (c == '#') {
    date();
  } else if (c == '[') {
    bracketed_name();
  } else {
    punctuation();
  }
}

void Lexer::blanks_and_comments() {
  after_blank_ = tokens_.empty() || tokens_.back().kind == TokenKind::NewLine;
  while (at_ < text_.size()) {
    const char c = text_[at_];
    if (c == ' ' || c == '\t' || c == '\v' || c == '\f' || c == '\0') {
      ++at_;
    } else if (text_.substr(at_, kByteOrderMark.size()) == kByteOrderMark) {
      at_ += kByteOrderMark.size();
    } else if (c == '_' && line_continues()) {
      // line_continues moved past the line end.
    } else if (c == '\'') {
      skip_to_line_end();
    } else {
      return;
    }
    after_blank_ = true;
  }
}

// "_", blanks and a line end: the statement goes on in the next line.
bool Lexer::line_continues() {
  std::size_t end = at_ + 1;
  while (at(end) == ' ' || at(end) == '\t') ++end;
  if (end >= text_.size() || !is_line_end(text_[end])) return false;
  at_ = end + (text_[end] == '\r' && at(end + 1) == '\n' ? 2 : 1);
  return true;
}

void Lexer::line_end() {
  at_ += text_[at_] == '\r' && at(at_ + 1) == '\n' ? 2 : 1;
  add(TokenKind::NewLine, behind_token_);
}

void Lexer::skip_to_line_end() {
  while (at_ < text_.size() && !is_line_end(text_[at_])) ++at_;
}

void Lexer::name() {
  const std::size_t begin = at_;
  if (text_.substr(at_, kWideBlank.size()) == kWideBlank) fail(syntax::kInvalidCharacter, at_);
  while (at_ < text_.size() && in_name(text_[at_])) ++at_;
  const std::string_view word = text_.substr(begin, at_ - begin);
  if (word.size() > kMaxNameLength) fail(syntax::kIdentifierTooLong, begin);
  const bool behind_dot = !tokens_.empty() && (tokens_.back().kind == TokenKind::Dot ||
                                               tokens_.back().kind == TokenKind::WithDot);
  const Keyword keyword = behind_dot ? Keyword::None : keyword_of(word);
  if (keyword == Keyword::Rem) {
    skip_to_line_end();
    return;
  }
  Token& token = add(TokenKind::Name, begin);
  token.keyword = keyword;
  token.text = word;
}

void Lexer::bracketed_name() {
  const std::size_t begin = at_;
  const std::size_t end = text_.find_first_of("]\r\n", begin);
  if (end == text_.npos || text_[end] != ']') fail(syntax::kExpectedBracket, begin);
  if (end - begin - 1 > kMaxNameLength) fail(syntax::kIdentifierTooLong, begin);
  at_ = end + 1;
  add(TokenKind::Name, begin).text = text_.substr(begin + 1, end - begin - 1);
}

void Lexer::number() {
  const std::size_t begin = at_;
  const auto digits = [&] {
    while (is_digit(at(at_))) ++at_;
  };
  digits();
  if (at(at_) == '.') {
    ++at_;
    digits();
  }
  // Words may stand right behind a number: `If a = 1Then b = 2Else b = 3`.
  const char behind_e = at(at_ + 1);
  if (ascii_lower(at(at_)) == 'e' && !is_letter(behind_e)) {
    const std::size_t mark = at_++;
    if (at(at_) == '+' || at(at_) == '-') ++at_;
    if (!is_digit(at(at_))) fail(syntax::kInvalidNumber, mark);
    digits();
  }
  const Value value = decimal_constant(std::string(text_.substr(begin, at_ - begin)));
  if (value.kind() == Value::Kind::Double &&
      value.as_double() > std::numeric_limits<double>::max()) {
    fail(syntax::kInvalidNumber, begin);
  }
  add_constant(value, begin);
}

// "&H1F", "&O17", "&17"; but "&" joins behind an operand, so that x&hex(1) is read as meant. Behind
// what a statement begins with and a blank it is an argument: Show &H1F.
bool Lexer::based_number_follows() {
  if (behind_operand() && !(after_blank_ && behind_called_name())) return false;
  const char mark = ascii_lower(at(at_ + 1));
  if (mark == 'h') return digit_value(at(at_ + 2)) < 16;
  return mark == 'o' || (mark >= '0' && mark <= '7');
}

void Lexer::based_number(int base, std::size_t digits) {
  const std::size_t begin = at_;
  at_ = digits;
  std::uint64_t number = 0;
  while (digit_value(at(at_)) < base) {
    number = number * static_cast<std::uint64_t>(base) +
             static_cast<std::uint64_t>(digit_value(at(at_)));
    if (number > 0xFFFFFFFFu) fail(syntax::kInvalidNumber, begin);
    ++at_;
  }
  if (at_ == digits || in_name(at(at_))) fail(syntax::kSyntaxError, begin);
  const auto whole = static_cast<std::uint32_t>(number);
  if (at(at_) == '&') {
    ++at_;
  } else if (whole <= 0xFFFF) {
    // Sixteen bits with their sign: &HFFFF is -1.
    add_constant(Value::integer(static_cast<std::int16_t>(static_cast<std::uint16_t>(whole))),
                 begin);
    return;
  }
  add_constant(Value::long_integer(static_cast<std::int32_t>(whole)), begin);
}

void Lexer::text() {
  const std::size_t begin = at_++;
  std::string content;
  while (true) {
    const std::size_t end = text_.find_first_of("\"\r\n", at_);
    if (end == text_.npos || text_[end] != '"') {
      fail(syntax::kUnterminatedString, end == text_.npos ? text_.size() : end);
    }
    content.append(text_, at_, end - at_);
    at_ = end + 1;
    if (at(at_) != '"') break;
    content += '"';
    ++at_;
  }
  add_constant(Value::text(content), begin);
}

void Lexer::date() {
  const std::size_t begin = at_;
  const std::size_t end = text_.find_first_of("#\r\n", begin + 1);
  if (end == text_.npos || text_[end] != '#') fail(syntax::kSyntaxError, begin);
  const std::optional<double> days = parse_date(text_.substr(begin + 1, end - begin - 1));
  if (!days) fail(syntax::kSyntaxError, begin);
  at_ = end + 1;
  add_constant(Value::date(*days), begin);
}

void Lexer::punctuation() {
  const std::size_t begin = at_;
  const char c = text_[at_];
  const char next = at(at_ + 1);
  if (c == '&' && based_number_follows()) {
    const char mark = ascii_lower(next);
    based_number(mark == 'h' ? 16 : 8, at_ + (mark == 'h' || mark == 'o' ? 2 : 1));
    return;
  }
  const auto is_pair = [&](char first, char second) { return c == first && next == second; };
  if (is_pair('<', '=') || is_pair('=', '<')) {
    at_ += 2;
    add(TokenKind::LessEqual, begin);
    return;
  }
  if (is_pair('>', '=') || is_pair('=', '>')) {
    at_ += 2;
    add(TokenKind::GreaterEqual, begin);
    return;
  }
  if (is_pair('<', '>') || is_pair('>', '<')) {
    at_ += 2;
    add(TokenKind::NotEqual, begin);
    return;
  }
  constexpr std::string_view kSigns = ":.,()+-*/\\^&=<>";
  constexpr TokenKind kKinds[] = {TokenKind::Colon,     TokenKind::Dot,   TokenKind::Comma,
                                  TokenKind::Open,      TokenKind::Close, TokenKind::Plus,
                                  TokenKind::Minus,     TokenKind::Star,  TokenKind::Slash,
                                  TokenKind::Backslash, TokenKind::Caret, TokenKind::Ampersand,
                                  TokenKind::Equal,     TokenKind::Less,  TokenKind::Greater};
  const std::size_t sign = kSigns.find(c);
  if (sign == kSigns.npos) fail(syntax::kInvalidCharacter, at_);
  ++at_;
  const bool with_dot = c == '.' && (after_blank_ || !behind_operand());
  add(with_dot ? TokenKind::WithDot : kKinds[sign], begin);
}

bool Lexer::behind_operand() const {
  if (tokens_.empty()) return false;
  const Token& last = tokens_.back();
  if (last.kind == TokenKind::Constant || last.kind == TokenKind::Close) return true;
  if (last.kind != TokenKind::Name) return false;
  switch (last.keyword) {
    case Keyword::Empty:
    case Keyword::False:
    case Keyword::Me:
    case Keyword::Nothing:
    case Keyword::Null:
    case Keyword::True:
      return true;
    default:
      return !reserved(last.keyword);
  }
}

bool Lexer::behind_called_name() const {
  if (tokens_.back().kind != TokenKind::Name) return false;
  if (tokens_.size() == 1) return true;
  const Token& before = tokens_[tokens_.size() - 2];
  return before.kind == TokenKind::NewLine || before.kind == TokenKind::Colon ||
         before.kind == TokenKind::Dot || before.keyword == Keyword::Then ||
         before.keyword == Keyword::Else;
}

Token& Lexer::add(TokenKind kind, std::size_t begin) {
  Token& token = tokens_.emplace_back();
  token.kind = kind;
  token.after_blank = after_blank_;
  token.piece = piece_;
  token.offset = static_cast<std::uint32_t>(begin);
  return token;
}

void Lexer::add_constant(Value value, std::size_t begin) {
  add(TokenKind::Constant, begin).value = std::move(value);
}

void Lexer::fail(const KnownError& error, std::size_t offset) const {
  throw SyntaxError(error, place_in(source_, piece_, offset));
}

}  // namespace rk::vbscript
