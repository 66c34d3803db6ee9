#include <optional>

#include "vbscript/limits.h"
#include "vbscript/parser.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

namespace {

struct Binding {
  Operator operation;
  int power;
};

// From loose to tight. Not and the sign stand between: their operands bind as tight as they do.
constexpr int kNotPower = 7;
constexpr int kComparisonPower = 8;
constexpr int kSignPower = 14;
constexpr int kPowerPower = 15;

std::optional<Binding> word_binding(Keyword word) {
  switch (word) {
    case Keyword::Imp:
      return Binding{Operator::Imp, 1};
    case Keyword::Eqv:
      return Binding{Operator::Eqv, 2};
    case Keyword::Xor:
      return Binding{Operator::Xor, 3};
    case Keyword::Or:
      return Binding{Operator::Or, 4};
    case Keyword::And:
      return Binding{Operator::And, 5};
    case Keyword::Is:
      return Binding{Operator::Is, kComparisonPower};
    case Keyword::Mod:
      return Binding{Operator::Modulo, 11};
    default:
      return std::nullopt;
  }
}

std::optional<Binding> binding_of(const Token& token) {
  switch (token.kind) {
    case TokenKind::Name:
      return word_binding(token.keyword);
    case TokenKind::Equal:
      return Binding{Operator::Equal, kComparisonPower};
    case TokenKind::NotEqual:
      return Binding{Operator::NotEqual, kComparisonPower};
    case TokenKind::Less:
      return Binding{Operator::Less, kComparisonPower};
    case TokenKind::Greater:
      return Binding{Operator::Greater, kComparisonPower};
    case TokenKind::LessEqual:
      return Binding{Operator::LessEqual, kComparisonPower};
    case TokenKind::GreaterEqual:
      return Binding{Operator::GreaterEqual, kComparisonPower};
    case TokenKind::Ampersand:
      return Binding{Operator::Concatenate, 9};
    case TokenKind::Plus:
      return Binding{Operator::Add, 10};
    case TokenKind::Minus:
      return Binding{Operator::Subtract, 10};
    case TokenKind::Backslash:
      return Binding{Operator::IntegerDivide, 12};
    case TokenKind::Star:
      return Binding{Operator::Multiply, 13};
    case TokenKind::Slash:
      return Binding{Operator::Divide, 13};
    case TokenKind::Caret:
      return Binding{Operator::Power, kPowerPower};
    default:
      return std::nullopt;
  }
}

}  // namespace

// Operators of the same power group to the left, so what stands to the right binds tighter.
const Expression* Parser::expression(int power) {
  const Deeper deeper(*this);
  const Expression* left = operand();
  while (const std::optional<Binding> binding = binding_of(here())) {
    if (binding->power <= power) break;
    const Position where = position();
    ++at_;
    const Expression* right = expression(binding->power);
    Expression& both = make(Expression::Kind::Binary, where);
    both.operation = binding->operation;
    both.left = left;
    both.right = right;
    left = &both;
  }
  return left;
}

const Expression* Parser::operand() {
  if (is(Keyword::Not)) return unary(Operator::Not, kNotPower - 1);
  if (is(TokenKind::Minus)) return unary(Operator::Negate, kSignPower - 1);
  if (is(TokenKind::Plus)) return unary(Operator::Plus, kSignPower - 1);
  return primary();
}

const Expression* Parser::unary(Operator operation, int power) {
  const Position where = position();
  ++at_;
  const Expression* inner = expression(power);
  Expression& result = make(Expression::Kind::Unary, where);
  result.operation = operation;
  result.left = inner;
  return &result;
}

const Expression* Parser::primary() {
  const Token& token = here();
  switch (token.kind) {
    case TokenKind::Constant: {
      Expression& constant = make(Expression::Kind::Constant, position());
      constant.value = token.value;
      constant.literal = token.value.kind() != Value::Kind::Date;
      ++at_;
      return &constant;
    }
    case TokenKind::Open:
      return postfix(bracketed());
    case TokenKind::WithDot: {
      const Position where = position();
      ++at_;
      if (!is(TokenKind::Name)) fail(syntax::kExpectedIdentifier);
      Expression& member = make(Expression::Kind::WithMember, where);
      member.name = tree_->names.id(here().text);
      ++at_;
      return postfix(&member);
    }
    case TokenKind::Name:
      if (reserved(token.keyword)) return keyword_operand();
      ++at_;
      return postfix(name_expression(token));
    default:
      fail(syntax::kExpectedExpression);
  }
}

const Expression* Parser::keyword_operand() {
  Expression& result = make(Expression::Kind::Constant, position());
  switch (here().keyword) {
    case Keyword::True:
    case Keyword::False:
      result.value = Value::boolean(here().keyword == Keyword::True);
      break;
    case Keyword::Null:
      result.value = Value::null();
      break;
    case Keyword::Empty:
      break;
    case Keyword::Nothing:
      result.value = Value::nothing();
      break;
    case Keyword::Me:
      if (!in_class_) fail(syntax::kInvalidMe);
      result.kind = Expression::Kind::Me;
      ++at_;
      return postfix(&result);
    case Keyword::New:
      return new_object();
    default:
      fail(syntax::kExpectedExpression);
  }
  ++at_;
  return &result;
}

const Expression* Parser::name_expression(const Token& token) {
  Expression& name = make(Expression::Kind::Name, {token.piece, token.offset});
  name.name = tree_->names.id(token.text);
  return &name;
}

const Expression* Parser::postfix(const Expression* base) {
  for (int links = 0;; ++links) {
    if (links > kMaxLinks) fail(syntax::kOutOfMemory);
    const Position where = position();
    if (is(TokenKind::Open)) {
      Expression& call = make(Expression::Kind::Call, where);
      call.left = base;
      call.arguments = arguments_in_brackets();
      base = &call;
    } else if (is(TokenKind::Dot)) {
      ++at_;
      if (!is(TokenKind::Name)) fail(syntax::kExpectedIdentifier);
      Expression& member = make(Expression::Kind::Member, where);
      member.left = base;
      member.name = tree_->names.id(here().text);
      ++at_;
      base = &member;
    } else {
      return base;
    }
  }
}

const Expression* Parser::bracketed() {
  const Position where = position();
  ++at_;
  const Expression* inner = expression();
  expect(TokenKind::Close, syntax::kExpectedClose);
  Expression& brackets = make(Expression::Kind::Brackets, where);
  brackets.left = inner;
  return &brackets;
}

const Expression* Parser::new_object() {
  Expression& result = make(Expression::Kind::New, position());
  ++at_;
  result.name = identifier();
  return postfix(&result);
}

std::vector<const Expression*> Parser::arguments_in_brackets() {
  const Deeper deeper(*this);
  expect(TokenKind::Open, syntax::kExpectedOpen);
  std::vector<const Expression*> arguments;
  if (!is(TokenKind::Close)) arguments = argument_list();
  expect(TokenKind::Close, syntax::kExpectedClose);
  return arguments;
}

std::vector<const Expression*> Parser::argument_list() {
  std::vector<const Expression*> arguments;
  while (true) {
    if (is(TokenKind::Comma) || is(TokenKind::Close) || at_statement_end()) {
      arguments.push_back(&make(Expression::Kind::Missing, position()));
    } else {
      arguments.push_back(expression());
    }
    if (!accept(TokenKind::Comma)) return arguments;
  }
}

Expression& Parser::make(Expression::Kind kind, Position where) {
  Expression& expression = tree_->expressions.emplace_back();
  expression.kind = kind;
  expression.position = where;
  return expression;
}

}  // namespace rk::vbscript
