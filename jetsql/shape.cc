#include "jetsql/lexer.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

namespace {

// Neither can stand in a text that the lexer takes, but within a quoted one, and there it does not
// follow a part of the key that ends outside quotes: two texts of one key have one skeleton.
constexpr char kMark = '\x01';
constexpr char kWholeText = '\x02';

char mark_of(Literal::Kind kind) {
  switch (kind) {
    case Literal::Kind::Text:
      return 't';
    case Literal::Kind::Integer:
      return 'i';
    case Literal::Kind::Double:
      return 'd';
    default:
      return '#';
  }
}

}  // namespace

void read_shape(std::string_view sql, Shape& shape) {
  shape.key.clear();
  shape.literals.clear();
  std::size_t copied = 0;
  Lexer lexer(sql.substr(0, kMaxTextBytes));
  Token token = sql.size() > kMaxTextBytes ? Token{TokenKind::Refused} : lexer.next();
  for (; token.kind != TokenKind::End; token = lexer.next()) {
    if (token.kind == TokenKind::Refused) {
      shape.key.assign(1, kWholeText).append(sql);
      shape.literals.clear();
      return;
    }
    if (!token.takes_value) continue;
    shape.literals.push_back(literal_value(sql, token));
    shape.key.append(sql.substr(copied, token.begin - copied));
    shape.key += kMark;
    shape.key += mark_of(shape.literals.back().kind);
    copied = token.end;
  }
  shape.key.append(sql.substr(copied));
}

}  // namespace rk::jetsql
