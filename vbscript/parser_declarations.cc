#include "value/arithmetic.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/text.h"
#include "vbscript/parser.h"
#include "vbscript/syntax_errors.h"

namespace rk::vbscript {

void Parser::dim_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Dim);
  ++at_;
  s.declarators = declarators();
}

std::vector<Declarator> Parser::declarators() {
  std::vector<Declarator> all;
  do {
    Declarator d;
    d.position = position();
    d.name = identifier();
    if (is(TokenKind::Open)) {
      d.is_array = true;
      d.bounds = bounds();
    }
    all.push_back(std::move(d));
  } while (accept(TokenKind::Comma));
  return all;
}

std::vector<std::int32_t> Parser::bounds() {
  std::vector<std::int32_t> bounds;
  ++at_;
  if (accept(TokenKind::Close)) return bounds;
  do {
    if (!is(TokenKind::Constant)) fail(syntax::kExpectedInteger);
    const Value& value = here().value;
    if (value.kind() == Value::Kind::Integer) {
      bounds.push_back(value.as_integer());
    } else if (value.kind() == Value::Kind::Long) {
      bounds.push_back(value.as_long());
    } else {
      fail(syntax::kExpectedInteger);
    }
    if (bounds.back() < 0 || bounds.size() > kMaxArrayDimensions) fail(syntax::kExpectedInteger);
    ++at_;
  } while (accept(TokenKind::Comma));
  expect(TokenKind::Close, syntax::kExpectedClose);
  return bounds;
}

// Behind the word Const.
void Parser::const_statement(Block& out) {
  Statement& s = add(out, Statement::Kind::Const);
  do {
    Constant c;
    c.position = position();
    c.name = identifier();
    expect(TokenKind::Equal, syntax::kExpectedEquals);
    c.value = constant_value();
    s.constants.push_back(std::move(c));
  } while (accept(TokenKind::Comma));
}

// A literal with signs and brackets, or a constant word.
Value Parser::constant_value() {
  const Deeper deeper(*this);
  if (accept(TokenKind::Minus)) {
    const Value value = constant_value();
    if (value.is_null()) return value;
    if (value.is_text() && !parse_number(value.as_view())) fail(syntax::kExpectedLiteral);
    return negate(value);
  }
  if (accept(TokenKind::Plus)) return constant_value();
  if (accept(TokenKind::Open)) {
    Value value = constant_value();
    expect(TokenKind::Close, syntax::kExpectedClose);
    return value;
  }
  Value value = here().value;
  if (is(Keyword::True) || is(Keyword::False)) {
    value = Value::boolean(is(Keyword::True));
  } else if (is(Keyword::Null)) {
    value = Value::null();
  } else if (is(Keyword::Nothing)) {
    value = Value::nothing();
  } else if (!is(Keyword::Empty) && !is(TokenKind::Constant)) {
    fail(syntax::kExpectedLiteral);
  }
  ++at_;
  return value;
}

// Public and Private outside of a class: what they say is the same there.
void Parser::visible_declaration(Block& out) {
  const bool is_public = is(Keyword::Public);
  ++at_;
  if (is(Keyword::Default)) fail(syntax::kInsideClass);
  if (is(Keyword::Sub)) {
    tree_->procedures.push_back(procedure(Procedure::Kind::Sub, is_public, false));
  } else if (is(Keyword::Function)) {
    tree_->procedures.push_back(procedure(Procedure::Kind::Function, is_public, false));
  } else if (accept(Keyword::Const)) {
    const_statement(out);
    statement_end();
  } else {
    Statement& s = add(out, Statement::Kind::Dim);
    s.declarators = declarators();
    statement_end();
  }
}

// From the word Sub, Function or Property to its end.
const Procedure* Parser::procedure(Procedure::Kind kind, bool is_public, bool is_default) {
  const Deeper deeper(*this);
  ++at_;
  if (kind == Procedure::Kind::PropertyGet) kind = property_kind();
  Procedure& p = tree_->procedure_store.emplace_back();
  p.kind = kind;
  p.is_public = is_public;
  p.is_default = is_default;
  p.position = position();
  p.name = identifier();
  if (is(TokenKind::Open)) {
    p.parameters = parameters();
    // A statement may follow in the same line, but this is a type, which the language has not.
    if (is(TokenKind::Name) && equal_ignoring_case(here().text, "as") &&
        ahead().kind == TokenKind::Name) {
      fail(syntax::kExpectedEndOfStatement);
    }
  } else if (!at_statement_end()) {
    fail(syntax::kExpectedEndOfStatement);
  }
  const Enclosing outside = enclosing_;
  enclosing_ = Enclosing{.in_procedure = true, .procedure = kind};
  p.body = block({Keyword::End});
  enclosing_ = outside;
  procedure_end(p);
  return &p;
}

Procedure::Kind Parser::property_kind() {
  if (accept(Keyword::Get)) return Procedure::Kind::PropertyGet;
  if (accept(Keyword::Let)) return Procedure::Kind::PropertyLet;
  if (accept(Keyword::Set)) return Procedure::Kind::PropertySet;
  fail(syntax::kExpectedLetSetGet);
}

void Parser::procedure_end(Procedure& p) {
  p.end = position();
  expect(Keyword::End, syntax::kExpectedEnd);
  switch (p.kind) {
    case Procedure::Kind::Sub:
      expect(Keyword::Sub, syntax::kExpectedSub);
      break;
    case Procedure::Kind::Function:
      expect(Keyword::Function, syntax::kExpectedFunction);
      break;
    default:
      expect(Keyword::Property, syntax::kExpectedProperty);
  }
  statement_end();
}

std::vector<Parameter> Parser::parameters() {
  std::vector<Parameter> all;
  ++at_;
  if (accept(TokenKind::Close)) return all;
  do {
    const Position where = position();
    all.push_back(parameter());
    const auto same = [&](const Parameter& p) { return p.name == all.back().name; };
    if (std::find_if(all.begin(), all.end() - 1, same) != all.end() - 1) {
      fail(syntax::kNameRedefined, where);
    }
  } while (accept(TokenKind::Comma));
  expect(TokenKind::Close, syntax::kExpectedClose);
  return all;
}

Parameter Parser::parameter() {
  Parameter p;
  if (accept(Keyword::ByVal)) {
    p.by_value = true;
  } else {
    accept(Keyword::ByRef);
  }
  p.name = identifier();
  if (accept(TokenKind::Open)) expect(TokenKind::Close, syntax::kExpectedClose);
  return p;
}

// --- classes ----------------------------------------------------------------------------------

void Parser::class_declaration() {
  ++at_;
  Class& c = tree_->class_store.emplace_back();
  c.position = position();
  c.name = identifier();
  statement_end();
  in_class_ = true;
  while (true) {
    skip_separators();
    if (is(TokenKind::EndOfSource) || is(Keyword::End)) break;
    if (at_blank_text()) {
      ++at_;
      continue;
    }
    class_member(c);
  }
  in_class_ = false;
  expect(Keyword::End, syntax::kExpectedEnd);
  expect(Keyword::Class, syntax::kExpectedClass);
  statement_end();
  tree_->classes.push_back(&c);
}

void Parser::class_member(Class& c) {
  const bool is_private = is(Keyword::Private);
  const bool is_public = accept(Keyword::Public);
  if (is_private) ++at_;
  const bool is_default =
      is(Keyword::Default) && (is_public || is_private || ahead().kind == TokenKind::Name);
  if (is_default) {
    if (!is_public) fail(syntax::kDefaultPublic);
    ++at_;
  }
  if (is(Keyword::Sub) || is(Keyword::Function) || is(Keyword::Property)) {
    class_procedure(c, !is_private, is_default);
    return;
  }
  if (is_default) fail(syntax::kDefaultPlace);
  if (!is_public && !is_private && !accept(Keyword::Dim)) fail(syntax::kSyntaxError);
  for (Declarator& d : declarators()) {
    d.is_public = !is_private;
    c.fields.push_back(std::move(d));
  }
  statement_end();
}

void Parser::class_procedure(Class& c, bool is_public, bool is_default) {
  Procedure::Kind kind = Procedure::Kind::PropertyGet;
  if (is(Keyword::Sub)) kind = Procedure::Kind::Sub;
  if (is(Keyword::Function)) kind = Procedure::Kind::Function;
  const Position where = position();
  const Procedure* p = procedure(kind, is_public, is_default);
  if (is_default) check_default(c, *p, where);
  check_arguments(*p);
  c.procedures.push_back(p);
}

void Parser::check_default(const Class& c, const Procedure& p, Position where) const {
  if (p.kind == Procedure::Kind::PropertyLet || p.kind == Procedure::Kind::PropertySet) {
    fail(syntax::kDefaultGet, where);
  }
  const auto other = [&](const Procedure* q) { return q->is_default; };
  if (std::any_of(c.procedures.begin(), c.procedures.end(), other)) {
    fail(syntax::kManyDefaults, where);
  }
}

void Parser::check_arguments(const Procedure& p) const {
  const bool assigns =
      p.kind == Procedure::Kind::PropertyLet || p.kind == Procedure::Kind::PropertySet;
  if (assigns && p.parameters.empty()) fail(syntax::kPropertyArgument, p.position);
  const std::string& name = tree_->names.folded(p.name);
  const bool special = name == "class_initialize" || name == "class_terminate";
  if (special && p.kind == Procedure::Kind::Sub && !p.parameters.empty()) {
    fail(syntax::kInitializeArguments, p.position);
  }
}

}  // namespace rk::vbscript
