// What names mean and what types expressions have.
#include "jetsql/built_ins.h"
#include "jetsql/letters.h"
#include "jetsql/resolver.h"

namespace rk::jetsql {

namespace {

Type literal_type(const Literal& literal) {
  switch (literal.kind) {
    case Literal::Kind::Text:
      return Type::Text;
    case Literal::Kind::Integer:
      return Type::Integer;
    case Literal::Kind::Double:
      return Type::Double;
    case Literal::Kind::Date:
      return Type::Date;
    default:
      return Type::Unknown;
  }
}

Type unary_type(Operator op, Type operand) {
  if (op == Operator::Not) return Type::Boolean;
  if (operand == Type::Boolean) return Type::Integer;
  return is_number(operand) ? operand : Type::Double;
}

}  // namespace

Type Resolver::resolve(Expression& e, Scope& scope) {
  if (e.resolved) return e.type;
  if (e.resolving) {
    fail(kSyntaxError, "Circular reference caused by alias '" + e.name + "'.", e.begin);
  }
  e.resolving = true;
  e.type = type_of(e, scope);
  weigh(e);
  e.resolving = false;
  e.resolved = true;
  return e.type;
}

Type Resolver::type_of(Expression& e, Scope& scope) {
  switch (e.kind) {
    case Expression::Kind::Literal:
      return literal_type(e.literal);
    case Expression::Kind::Constant:
      return e.name == "null" ? Type::Unknown : Type::Boolean;
    case Expression::Kind::Column:
      return resolve_column(e, scope);
    case Expression::Kind::Identity:
      return Type::Integer;
    case Expression::Kind::Unary:
      return unary_type(e.op, resolve(*e.operands[0], scope));
    case Expression::Kind::Binary:
      return resolve_binary(e, scope);
    case Expression::Kind::IsNull:
    case Expression::Kind::Between:
    case Expression::Kind::In:
    case Expression::Kind::Exists:
    case Expression::Kind::Subselect:
      return resolve_subselect(e, scope);
    case Expression::Kind::Call:
      return resolve_call(e, scope);
    case Expression::Kind::Question:
      return Type::Unknown;
    case Expression::Kind::Star:
      fail(kSyntaxError, "Syntax error: '*' is no value.", e.begin);
  }
  return Type::Unknown;
}

void Resolver::weigh(Expression& e) const {
  const auto add = [&](const Expression& inner) {
    e.weight += inner.weight;
    e.aggregated = e.aggregated || inner.aggregated;
    if (e.weight > kMaxWeight) fail(kSyntaxError, "Query is too complex.", e.begin);
  };
  e.aggregated = e.built_in != nullptr && e.built_in->aggregate();
  for (const Expression* operand : e.operands) add(*operand);
  if (e.stands_for != nullptr) add(*e.stands_for);
}

Type Resolver::resolve_subselect(Expression& e, Scope& scope) {
  for (Expression* operand : e.operands) resolve(*operand, scope);
  if (e.select == nullptr) return Type::Boolean;
  resolve_query(*e.select, &scope);
  if (e.kind == Expression::Kind::Exists) return Type::Boolean;
  if (e.select->scope->outputs.size() != 1) {
    fail(kSyntaxError,
         "You have written a subquery that can return more than one field without using the EXISTS "
         "reserved word in the main query's FROM clause.",
         e.begin);
  }
  if (e.kind == Expression::Kind::In) return Type::Boolean;
  return e.select->scope->outputs[0].type;
}

bool Resolver::find_column(Expression& e, const Scope& scope) const {
  for (const Binding& binding : scope.bindings) {
    if (!e.qualifier.empty() && !same_letters(binding.name, e.qualifier)) continue;
    const Column* column = binding.table->column(e.name);
    if (column == nullptr) continue;
    if (e.column != nullptr) {
      fail(kSyntaxError,
           "The specified field '" + e.name +
               "' could refer to more than one table listed in the FROM clause of your SQL "
               "statement.",
           e.begin);
    }
    e.binding = &binding;
    e.column = column;
  }
  return e.column != nullptr;
}

bool Resolver::find_output(Expression& e, Scope& scope) {
  if (!scope.sees_outputs || !e.qualifier.empty() || scope.select == nullptr) return false;
  for (const Output& output : scope.select->outputs) {
    if (output.alias.empty() || !same_letters(output.alias, e.name)) continue;
    resolve(*output.value, scope);
    e.stands_for = output.value;
    return true;
  }
  return false;
}

Type Resolver::resolve_column(Expression& e, Scope& scope) {
  if (find_column(e, scope)) return e.column->type;
  if (find_output(e, scope)) return e.stands_for->type;
  for (const Scope* outer = scope.outer; outer != nullptr; outer = outer->outer) {
    if (find_column(e, *outer)) return e.column->type;
  }
  const bool yes = same_letters(e.name, "yes") || same_letters(e.name, "on");
  const bool no = same_letters(e.name, "no") || same_letters(e.name, "off");
  if (!e.qualifier.empty() || !(yes || no)) {
    missing_value(e.qualifier.empty() ? e.name : e.qualifier + "." + e.name, e.begin);
  }
  e.kind = Expression::Kind::Constant;
  e.name = yes ? "true" : "false";
  return Type::Boolean;
}

namespace {

Type number_type(Type a, Type b) {
  if (!is_number(a) || !is_number(b)) return Type::Unknown;
  if (a == Type::Double || b == Type::Double) return Type::Double;
  if (a == Type::Currency || b == Type::Currency) return Type::Currency;
  return Type::Integer;
}

Type sum_type(Operator op, Type a, Type b) {
  if (a == Type::Boolean) a = Type::Integer;
  if (b == Type::Boolean) b = Type::Integer;
  if (op == Operator::Add && a == Type::Text && b == Type::Text) return Type::Text;
  if (a == Type::Date && b == Type::Date) return op == Operator::Add ? Type::Date : Type::Double;
  if (a == Type::Date && is_number(b)) return Type::Date;
  if (b == Type::Date && is_number(a)) return Type::Date;
  if (op == Operator::Subtract && number_type(a, b) == Type::Unknown) return Type::Double;
  return number_type(a, b);
}

}  // namespace

Type Resolver::resolve_binary(Expression& e, Scope& scope) {
  const Type a = resolve(*e.operands[0], scope);
  const Type b = resolve(*e.operands[1], scope);
  switch (e.op) {
    case Operator::Join:
      return Type::Text;
    case Operator::Add:
    case Operator::Subtract:
      return sum_type(e.op, a, b);
    case Operator::Multiply: {
      const Type product = number_type(a == Type::Boolean ? Type::Integer : a,
                                       b == Type::Boolean ? Type::Integer : b);
      return product == Type::Unknown ? Type::Double : product;
    }
    case Operator::Divide:
    case Operator::Power:
      return Type::Double;
    case Operator::Modulo:
    case Operator::IntegerDivide:
      return Type::Integer;
    default:
      return Type::Boolean;
  }
}

Type Resolver::resolve_call(Expression& e, Scope& scope) {
  e.built_in = built_in(e.name);
  if (e.built_in == nullptr) {
    fail(kSyntaxError, "Undefined function '" + e.name + "' in expression.", e.begin);
  }
  const auto count = static_cast<int>(e.operands.size()) + (e.star ? 1 : 0);
  const bool pairs = e.built_in->form != BuiltIn::Form::Switch || count % 2 == 0;
  const bool star = !e.star || e.built_in->form == BuiltIn::Form::Count;
  if (count < e.built_in->least || count > e.built_in->most || !pairs || !star) {
    fail(kSyntaxError,
         "Wrong number of arguments used with function '" + e.name + "' in query expression.",
         e.begin);
  }
  const bool allowed = scope.aggregates;
  if (e.built_in->aggregate()) {
    if (!allowed)
      fail(kSyntaxError, "Cannot have aggregate function '" + e.name + "' here.", e.begin);
    scope.aggregates = false;
  }
  for (Expression* operand : e.operands) resolve(*operand, scope);
  scope.aggregates = allowed;
  return call_type(e);
}

namespace {

// The type of what may come out of several expressions, of which a Null says nothing.
Type type_of_any(const std::vector<Expression*>& operands, std::size_t first, std::size_t step) {
  const Expression* typed = nullptr;
  Type common = Type::Unknown;
  for (std::size_t i = first; i < operands.size(); i += step) {
    const Expression& each = *operands[i];
    if (is_null(&each)) continue;
    common = typed == nullptr ? each.type : common_type(common, each.type);
    typed = &each;
  }
  return common;
}

}  // namespace

Type Resolver::call_type(const Expression& e) const {
  const BuiltIn& called = *e.built_in;
  if (called.type != Type::Unknown || e.operands.empty()) return called.type;
  const Type first = e.operands[0]->type;
  switch (called.form) {
    case BuiltIn::Form::IIf:
      return type_of_any(e.operands, 1, 1);
    case BuiltIn::Form::Nz:
      return e.operands.size() > 1 ? common_type(first, e.operands[1]->type) : first;
    case BuiltIn::Form::Switch:
    case BuiltIn::Form::Choose:
      return type_of_any(e.operands, 1, called.form == BuiltIn::Form::Switch ? 2 : 1);
    default:
      break;
  }
  // Abs, Int, Fix, Round, Sum, Min, Max, First, Last: the type of what they are given, but that a
  // True that is counted with is a number.
  const bool cuts_time = called.target == "jet_int" || called.target == "jet_fix";
  if (first == Type::Date && cuts_time) return Type::Date;
  const bool number = called.form == BuiltIn::Form::Plain || called.target == "sum";
  if (first == Type::Boolean) return Type::Integer;
  if (number && !is_number(first)) return first == Type::Unknown ? Type::Unknown : Type::Double;
  return first;
}

bool is_null(const Expression* e) {
  return e != nullptr && e->kind == Expression::Kind::Constant && same_letters(e->name, "null");
}

bool is_number(Type type) {
  return type == Type::Integer || type == Type::Double || type == Type::Currency;
}

Type common_type(Type a, Type b) {
  if (a == b) return a;
  if (a == Type::Boolean && is_number(b)) return b;
  if (b == Type::Boolean && is_number(a)) return a;
  return number_type(a, b);
}

bool same_expression(const Expression& a, const Expression& b) {
  if (&a == &b) return true;
  if (a.kind != b.kind || a.op != b.op || a.negated != b.negated || a.star != b.star) return false;
  if (a.select != nullptr || b.select != nullptr) return false;
  if (a.operands.size() != b.operands.size()) return false;
  switch (a.kind) {
    case Expression::Kind::Column:
      return a.column == b.column && a.binding == b.binding && a.stands_for == b.stands_for;
    case Expression::Kind::Literal:
      if (a.literal.kind != b.literal.kind) return false;
      // A literal that became a parameter has another value in the next text of its key.
      if (a.parameter >= 0 || b.parameter >= 0) break;
      if (a.literal.text != b.literal.text || a.literal.integer != b.literal.integer ||
          a.literal.number != b.literal.number) {
        return false;
      }
      break;
    case Expression::Kind::Question:
      return false;
    default:
      if (!same_letters(a.name, b.name)) return false;
  }
  for (std::size_t i = 0; i < a.operands.size(); ++i) {
    if (!same_expression(*a.operands[i], *b.operands[i])) return false;
  }
  return true;
}

}  // namespace rk::jetsql
