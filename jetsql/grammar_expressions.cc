// Expressions of Jet SQL, by binding power.
#include <algorithm>

#include "jetsql/grammar.h"
#include "jetsql/letters.h"
#include "jetsql/parser.h"

namespace rk::jetsql {

namespace {

// From the loosest binding to the tightest.
enum Power : int {
  kImp = 1,
  kEqv,
  kXor,
  kOr,
  kAnd,
  kNot,
  kCompare,
  kJoin,
  kAdd,
  kModulo,
  kIntegerDivide,
  kMultiply,
  kNegate,
  kRaise
};

struct Infix {
  Operator op = Operator::None;
  int power = 0;
};

Infix symbol_operator(char symbol) {
  switch (symbol) {
    case '=':
      return {Operator::Equal, kCompare};
    case kNotEqual:
      return {Operator::NotEqual, kCompare};
    case '<':
      return {Operator::Less, kCompare};
    case '>':
      return {Operator::Greater, kCompare};
    case kLessEqual:
      return {Operator::LessEqual, kCompare};
    case kGreaterEqual:
      return {Operator::GreaterEqual, kCompare};
    case '&':
      return {Operator::Join, kJoin};
    case '+':
      return {Operator::Add, kAdd};
    case '-':
      return {Operator::Subtract, kAdd};
    case '\\':
      return {Operator::IntegerDivide, kIntegerDivide};
    case '*':
      return {Operator::Multiply, kMultiply};
    case '/':
      return {Operator::Divide, kMultiply};
    case '^':
      return {Operator::Power, kRaise};
    default:
      return {};
  }
}

Infix word_operator(std::string_view word) {
  if (same_letters(word, "and")) return {Operator::And, kAnd};
  if (same_letters(word, "or")) return {Operator::Or, kOr};
  if (same_letters(word, "mod")) return {Operator::Modulo, kModulo};
  if (same_letters(word, "xor")) return {Operator::Xor, kXor};
  if (same_letters(word, "eqv")) return {Operator::Eqv, kEqv};
  if (same_letters(word, "imp")) return {Operator::Imp, kImp};
  return {};
}

}  // namespace

Expression* Grammar::node(Expression::Kind kind, std::uint32_t begin) {
  Expression* made = tree_.expression();
  made->kind = kind;
  made->begin = begin;
  return made;
}

Expression* Grammar::finished(Expression* made) {
  for (const Expression* operand : made->operands) {
    made->height = std::max(made->height, operand->height + 1);
  }
  if (made->height > kMaxHeight) {
    tokens_.fail_at(made->begin, "Expression too complex in query expression");
  }
  made->end = std::max(made->begin, tokens_.last_end());
  return made;
}

Expression* Grammar::binary(Operator op, Expression* left, Expression* right) {
  Expression* made = node(Expression::Kind::Binary, left->begin);
  made->op = op;
  made->operands = {left, right};
  return finished(made);
}

bool Grammar::at_select() const {
  return tokens_.at_word("select");
}

Expression* Grammar::expression(int power) {
  const Deeper deeper(depth_, tokens_);
  Expression* left = prefix();
  for (;;) {
    const Token& token = tokens_.peek();
    if (token.kind == TokenKind::Word) {
      if (tokens_.at_word("is") && power <= kCompare) {
        left = is_null(left);
        continue;
      }
      const bool negated = tokens_.at_word("not");
      const std::size_t ahead = negated ? 1 : 0;
      const bool word_compares = tokens_.at_word("like", ahead) || tokens_.at_word("in", ahead) ||
                                 tokens_.at_word("between", ahead);
      if (word_compares && power <= kCompare) {
        if (negated) tokens_.take();
        left = comparison_word(left, negated);
        continue;
      }
    }
    Infix infix;
    if (token.kind == TokenKind::Symbol) infix = symbol_operator(token.symbol);
    if (token.kind == TokenKind::Word) infix = word_operator(name_text(tokens_.sql(), token));
    if (infix.op == Operator::None || infix.power < power) return left;
    tokens_.take();
    // "< >" and "> =" may be written apart.
    if (infix.op == Operator::Less && tokens_.take_symbol('>')) infix.op = Operator::NotEqual;
    if (infix.op == Operator::Less && tokens_.take_symbol('=')) infix.op = Operator::LessEqual;
    if (infix.op == Operator::Greater && tokens_.take_symbol('='))
      infix.op = Operator::GreaterEqual;
    left = binary(infix.op, left, expression(infix.power + 1));
  }
}

Expression* Grammar::prefix() {
  const std::uint32_t begin = tokens_.peek().begin;
  if (tokens_.take_word("not")) {
    Expression* made = node(Expression::Kind::Unary, begin);
    made->op = Operator::Not;
    made->operands = {expression(kNot)};
    return finished(made);
  }
  if (tokens_.take_symbol('-')) {
    Expression* made = node(Expression::Kind::Unary, begin);
    made->op = Operator::Negate;
    made->operands = {expression(kNegate)};
    return finished(made);
  }
  if (tokens_.take_symbol('+')) return expression(kNegate);
  return primary();
}

Expression* Grammar::primary() {
  const Token& token = tokens_.peek();
  switch (token.kind) {
    case TokenKind::Number:
    case TokenKind::Text:
    case TokenKind::Date:
      return literal();
    case TokenKind::Question: {
      const std::uint32_t begin = tokens_.take().begin;
      return question(begin, tree_.questions++);
    }
    case TokenKind::Variable: {
      if (!same_letters(name_text(tokens_.sql(), token), "@@identity"))
        tokens_.fail(kMissingOperator);
      Expression* made = node(Expression::Kind::Identity, token.begin);
      tokens_.take();
      return finished(made);
    }
    case TokenKind::Symbol:
      if (token.symbol == '(') return bracketed();
      break;
    case TokenKind::Word:
      if (tokens_.at_word("exists")) return exists();
      return name_or_call();
    case TokenKind::Name:
      return name_or_call();
    default:
      break;
  }
  tokens_.fail(kMissingOperator);
}

Expression* Grammar::literal() {
  Expression* made = node(Expression::Kind::Literal, tokens_.peek().begin);
  made->parameter = tokens_.parameter_of(tokens_.place());
  made->literal = literal_value(tokens_.sql(), tokens_.take());
  return finished(made);
}

// A value that the page binds: a "?", or a name out of the Parameters clause.
Expression* Grammar::question(std::uint32_t begin, std::size_t number) {
  Expression* made = node(Expression::Kind::Question, begin);
  made->parameter = static_cast<int>(number);
  return finished(made);
}

Expression* Grammar::bracketed() {
  const std::uint32_t begin = tokens_.take().begin;
  Expression* made = nullptr;
  if (at_select()) {
    made = node(Expression::Kind::Subselect, begin);
    made->select = query();
    finished(made);
  } else {
    made = expression();
  }
  tokens_.expect_symbol(')', kMissingOperator);
  return made;
}

Expression* Grammar::exists() {
  Expression* made = node(Expression::Kind::Exists, tokens_.take().begin);
  tokens_.expect_symbol('(', "Syntax error in EXISTS");
  made->select = query();
  tokens_.expect_symbol(')', "Syntax error in EXISTS");
  return finished(made);
}

Expression* Grammar::name_or_call() {
  const Token token = tokens_.peek();
  const std::string_view word = name_text(tokens_.sql(), token);
  if (token.kind == TokenKind::Word) {
    if (same_letters(word, "true") || same_letters(word, "false") || same_letters(word, "null")) {
      Expression* constant = node(Expression::Kind::Constant, token.begin);
      constant->name = lower_letters(word);
      tokens_.take();
      return finished(constant);
    }
    // Left and Right are join words, Asc is one of Order By, and all three are functions.
    const bool callable = tokens_.at_name() || same_letters(word, "left") ||
                          same_letters(word, "right") || same_letters(word, "asc");
    if (callable && tokens_.at_symbol('(', 1)) {
      tokens_.take();
      return call(lower_letters(word), token.begin);
    }
  }
  Expression* column = node(Expression::Kind::Column, token.begin);
  column->name = tokens_.expect_name(kMissingOperator);
  if (tokens_.at_symbol('.') || tokens_.at_symbol('!')) {
    tokens_.take();
    column->qualifier = column->name;
    column->name = tokens_.expect_name(kMissingOperator);
    return finished(column);
  }
  const auto& declared = tree_.parameters;
  const auto found = std::find(declared.begin(), declared.end(), lower_letters(column->name));
  if (found != declared.end()) {
    return question(token.begin, static_cast<std::size_t>(found - declared.begin()));
  }
  return finished(column);
}

Expression* Grammar::call(std::string name, std::uint32_t begin) {
  Expression* made = node(Expression::Kind::Call, begin);
  made->name = std::move(name);
  tokens_.expect_symbol('(', kMissingOperator);
  if (tokens_.take_symbol('*')) {
    made->star = true;
  } else if (!tokens_.at_symbol(')')) {
    made->operands = expressions();
  }
  tokens_.expect_symbol(')', kMissingOperator);
  return finished(made);
}

Expression* Grammar::is_null(Expression* left) {
  tokens_.take();
  Expression* made = node(Expression::Kind::IsNull, left->begin);
  made->negated = tokens_.take_word("not");
  tokens_.expect_word("null", kMissingOperator);
  made->operands = {left};
  return finished(made);
}

Expression* Grammar::comparison_word(Expression* left, bool negated) {
  if (tokens_.take_word("between")) return between(left, negated);
  if (tokens_.take_word("in")) return in_list(left, negated);
  tokens_.take();
  Expression* made = binary(Operator::Like, left, expression(kCompare + 1));
  made->negated = negated;
  return made;
}

Expression* Grammar::between(Expression* left, bool negated) {
  Expression* made = node(Expression::Kind::Between, left->begin);
  made->negated = negated;
  Expression* low = expression(kCompare + 1);
  tokens_.expect_word("and", "Between operator without And in query expression");
  made->operands = {left, low, expression(kCompare + 1)};
  return finished(made);
}

Expression* Grammar::in_list(Expression* left, bool negated) {
  constexpr std::string_view kComplaint = "Syntax error (In without its list) in query expression";
  Expression* made = node(Expression::Kind::In, left->begin);
  made->negated = negated;
  made->operands = {left};
  tokens_.expect_symbol('(', kComplaint);
  if (at_select()) {
    made->select = query();
  } else {
    if (tokens_.at_symbol(')')) tokens_.fail(kComplaint);
    for (Expression* item : expressions()) made->operands.push_back(item);
  }
  tokens_.expect_symbol(')', kMissingOperator);
  return finished(made);
}

std::vector<Expression*> Grammar::expressions() {
  std::vector<Expression*> list;
  do {
    list.push_back(expression());
  } while (tokens_.take_symbol(','));
  return list;
}

}  // namespace rk::jetsql
