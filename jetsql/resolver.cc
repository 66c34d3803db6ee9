#include "jetsql/resolver.h"

#include "jetsql/built_ins.h"
#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

// A column of the table's own may hide one of the three names of its rows' number.
std::string row_id_name(const Table& table) {
  if (!table.row_ids) return "";
  for (const char* name : {"rowid", "_rowid_", "oid"}) {
    if (table.column(name) == nullptr) return name;
  }
  return "";
}

bool same_name(std::string_view a, std::string_view b) {
  return same_letters(a, b);
}

}  // namespace

void Resolver::fail(long number, std::string_view text, std::size_t position) const {
  throw SqlError(number, std::string(text), position);
}

void Resolver::missing_value(std::string_view name, std::size_t position) const {
  fail(kNoValueGiven,
       "No value given for one or more required parameters: '" + std::string(name) + "'.",
       position);
}

Scope* Resolver::make_scope(const Scope* outer) {
  Scope& scope = scopes_.emplace_back();
  scope.outer = outer;
  return &scope;
}

const Table& Resolver::table(std::string_view name, std::size_t position) const {
  const Table* found = schema_.table(name);
  if (found == nullptr) {
    fail(kNoSuchTable,
         "Cannot find the input table or query '" + std::string(name) +
             "'. Make sure it exists and that its name is spelled correctly.",
         position);
  }
  return *found;
}

void Resolver::resolve_query(Select& select, const Scope* outer) {
  resolve_select(select, outer);
  for (const Select::Joined& joined : select.unions) {
    resolve_select(*joined.select, outer);
    if (joined.select->scope->outputs.size() != select.scope->outputs.size()) {
      fail(kSyntaxError,
           "The number of columns in the two selected tables or queries of a union query do not "
           "match.",
           joined.select->begin);
    }
    for (std::size_t i = 0; i < select.scope->outputs.size(); ++i) {
      ResolvedOutput& output = select.scope->outputs[i];
      output.type = common_type(output.type, joined.select->scope->outputs[i].type);
    }
  }
  if (!select.unions.empty()) resolve_union_order(select);
}

void Resolver::resolve_select(Select& select, const Scope* outer) {
  Scope& scope = *make_scope(outer);
  scope.select = &select;
  select.scope = &scope;
  resolve_sources(select.from, scope);
  if (select.where != nullptr) resolve(*select.where, scope);
  for (Expression* group : select.group) resolve(*group, scope);
  scope.aggregates = true;
  scope.sees_outputs = true;
  resolve_outputs(select, scope);
  if (select.having != nullptr) resolve(*select.having, scope);
  if (select.unions.empty()) resolve_order(select, scope);
  scope.grouped = !select.group.empty() || select.having != nullptr;
  for (const Output& output : select.outputs) {
    scope.grouped = scope.grouped || output.value->aggregated;
  }
  if (scope.grouped) check_grouping(select, scope);
  if (select.distinct && select.unions.empty()) check_distinct_order(select, scope);
}

void Resolver::resolve_sources(std::vector<Source*>& sources, Scope& scope) {
  for (Source* source : sources) bind(*source, scope);
  for (Source* source : sources) resolve_joins(*source, scope);
}

void Resolver::bind(Source& source, Scope& scope) {
  switch (source.kind) {
    case Source::Kind::Table:
      bind_table(source, scope);
      break;
    case Source::Kind::Derived:
      bind_derived(source, scope);
      break;
    default:
      bind(*source.left, scope);
      bind(*source.right, scope);
      return;
  }
  Binding& made = scope.bindings.back();
  source.binding = &made;
  if (made.name.empty()) return;
  for (const Binding& other : scope.bindings) {
    if (&other != &made && same_name(other.name, made.name)) {
      fail(kSyntaxError, "Syntax error in FROM clause: '" + made.name + "' stands there twice.",
           source.begin);
    }
  }
}

void Resolver::bind_table(Source& source, Scope& scope) {
  const Table& found = table(source.name, source.begin);
  Binding& made = scope.bindings.emplace_back();
  made.table = &found;
  made.name = source.alias.empty() ? found.name : source.alias;
  made.row_id = row_id_name(found);
}

void Resolver::bind_derived(Source& source, Scope& scope) {
  resolve_query(*source.select, nullptr);
  Table& made_up = derived_.emplace_back();
  made_up.row_ids = false;
  for (const ResolvedOutput& output : source.select->scope->outputs) {
    Column column;
    column.name = output.name;
    column.type = output.type;
    made_up.columns.push_back(std::move(column));
  }
  Binding& made = scope.bindings.emplace_back();
  made.table = &made_up;
  made.derived = true;
  made.name = source.alias;
}

void Resolver::resolve_joins(Source& source, Scope& scope) {
  if (source.left == nullptr) return;
  resolve_joins(*source.left, scope);
  resolve_joins(*source.right, scope);
  resolve(*source.on, scope);
}

void Resolver::resolve_outputs(Select& select, Scope& scope) {
  for (const Output& output : select.outputs) {
    Expression& value = *output.value;
    if (value.kind == Expression::Kind::Star) {
      open_star(value, scope);
      continue;
    }
    ResolvedOutput resolved;
    resolved.type = resolve(value, scope);
    resolved.value = &value;
    resolved.name = output.alias;
    if (value.kind == Expression::Kind::Column && value.column != nullptr) {
      resolved.binding = value.binding;
      resolved.column = value.column;
    }
    scope.outputs.push_back(std::move(resolved));
  }
  name_outputs(scope);
}

void Resolver::open_star(const Expression& star, Scope& scope) {
  bool found = false;
  for (const Binding& binding : scope.bindings) {
    if (!star.qualifier.empty() && !same_name(binding.name, star.qualifier)) continue;
    found = true;
    for (const Column& column : binding.table->columns) {
      scope.outputs.push_back({nullptr, &binding, &column, "", column.type});
    }
  }
  if (found) return;
  if (star.qualifier.empty()) {
    fail(kSyntaxError, "Query input must contain at least one table or query.", star.begin);
  }
  missing_value(star.qualifier + ".*", star.begin);
}

// A column that two tables have is named with its table; what has no name is Expr1000 and on.
void Resolver::name_outputs(Scope& scope) {
  int unnamed = 1000;
  for (ResolvedOutput& output : scope.outputs) {
    if (!output.name.empty()) continue;
    if (output.column == nullptr) {
      output.name.assign("Expr").append(std::to_string(unnamed++));
      continue;
    }
    output.name = output.column->name;
    if (scope.bindings.size() < 2) continue;
    for (const ResolvedOutput& other : scope.outputs) {
      if (other.column == nullptr || other.binding == output.binding) continue;
      if (!same_name(other.column->name, output.column->name)) continue;
      output.name = output.binding->name + "." + output.column->name;
      break;
    }
  }
}

void Resolver::resolve_order(Select& select, Scope& scope) {
  for (const Ordering& ordering : select.order) {
    Expression& value = *ordering.value;
    if (value.kind == Expression::Kind::Literal) {
      const Literal& literal = value.literal;
      const bool place = literal.kind == Literal::Kind::Integer && literal.integer >= 1 &&
                         literal.integer <= static_cast<std::int64_t>(scope.outputs.size());
      if (!place) {
        fail(kSyntaxError, "Syntax error in ORDER BY clause: a constant is no column.",
             value.begin);
      }
      continue;
    }
    if (value.kind == Expression::Kind::Question) missing_value("?", value.begin);
    resolve(value, scope);
  }
}

// A union is ordered by the names or places of its first Select's columns.
void Resolver::resolve_union_order(Select& select) {
  for (const Ordering& ordering : select.order) {
    Expression& value = *ordering.value;
    const std::vector<ResolvedOutput>& outputs = select.scope->outputs;
    if (value.kind == Expression::Kind::Column) {
      for (std::size_t i = 0; i < outputs.size(); ++i) {
        const bool named = same_name(outputs[i].name, value.name);
        const bool column =
            outputs[i].column != nullptr && same_name(outputs[i].column->name, value.name);
        if (!named && !column) continue;
        value.kind = Expression::Kind::Literal;
        value.literal.kind = Literal::Kind::Integer;
        value.literal.integer = static_cast<std::int64_t>(i) + 1;
        break;
      }
      if (value.kind == Expression::Kind::Column) missing_value(value.name, value.begin);
    }
    const bool place = value.kind == Expression::Kind::Literal &&
                       value.literal.kind == Literal::Kind::Integer && value.literal.integer >= 1 &&
                       value.literal.integer <= static_cast<std::int64_t>(outputs.size());
    if (!place) {
      fail(kSyntaxError, "The ORDER BY expression of a union must be one of its columns.",
           value.begin);
    }
  }
}

bool Resolver::is_grouped(const Expression& e, const Select& select, const Scope& scope) const {
  for (const Expression* group : select.group) {
    if (same_expression(e, *group)) return true;
  }
  if (e.kind == Expression::Kind::Call && e.built_in != nullptr && e.built_in->aggregate())
    return true;
  if (e.stands_for != nullptr) return is_grouped(*e.stands_for, select, scope);
  if (e.kind == Expression::Kind::Column) {
    for (const Binding& binding : scope.bindings) {
      if (e.binding == &binding) return false;
    }
    return true;
  }
  for (const Expression* operand : e.operands) {
    if (!is_grouped(*operand, select, scope)) return false;
  }
  return true;
}

void Resolver::check_grouping(const Select& select, const Scope& scope) const {
  const auto check = [&](const Expression& value) {
    if (value.kind == Expression::Kind::Star) {
      fail(kNotGrouped, "Cannot group on fields selected with '*'.", value.begin);
    }
    if (is_grouped(value, select, scope)) return;
    const std::string text(sql_.substr(value.begin, value.end - value.begin));
    fail(kNotGrouped,
         "You tried to execute a query that does not include the specified expression '" + text +
             "' as part of an aggregate function.",
         value.begin);
  };
  for (const Output& output : select.outputs) check(*output.value);
  if (select.having != nullptr) check(*select.having);
  if (!select.unions.empty()) return;
  for (const Ordering& ordering : select.order) check(*ordering.value);
}

void Resolver::check_distinct_order(const Select& select, const Scope& scope) const {
  for (const Ordering& ordering : select.order) {
    const Expression& value = *ordering.value;
    bool selected = value.kind == Expression::Kind::Literal;
    for (const ResolvedOutput& output : scope.outputs) {
      const bool column = value.column != nullptr && output.column == value.column &&
                          output.binding == value.binding;
      selected =
          selected || column ||
          (output.value != nullptr &&
           same_expression(value.stands_for != nullptr ? *value.stands_for : value, *output.value));
    }
    if (!selected) {
      const std::string text(sql_.substr(value.begin, value.end - value.begin));
      fail(kSyntaxError, "ORDER BY clause (" + text + ") conflicts with DISTINCT.", value.begin);
    }
  }
}

Type Resolver::resolve(Expression& e, Scope& scope) {
  if (e.resolved) return e.type;
  if (e.resolving) {
    fail(kSyntaxError, "Circular reference caused by alias '" + e.name + "'.", e.begin);
  }
  e.resolving = true;
  switch (e.kind) {
    case Expression::Kind::Literal:
      switch (e.literal.kind) {
        case Literal::Kind::Text:
          e.type = Type::Text;
          break;
        case Literal::Kind::Integer:
          e.type = Type::Integer;
          break;
        case Literal::Kind::Double:
          e.type = Type::Double;
          break;
        case Literal::Kind::Date:
          e.type = Type::Date;
          break;
        default:
          break;
      }
      break;
    case Expression::Kind::Constant:
      if (e.name != "null") e.type = Type::Boolean;
      break;
    case Expression::Kind::Column:
      e.type = resolve_column(e, scope);
      break;
    case Expression::Kind::Identity:
      e.type = Type::Integer;
      break;
    case Expression::Kind::Unary: {
      const Type operand = resolve(*e.operands[0], scope);
      if (e.op == Operator::Not) {
        e.type = Type::Boolean;
      } else {
        e.type = operand == Type::Boolean ? Type::Integer
                 : is_number(operand)     ? operand
                                          : Type::Double;
      }
      break;
    }
    case Expression::Kind::Binary:
      e.type = resolve_binary(e, scope);
      break;
    case Expression::Kind::IsNull:
    case Expression::Kind::Between:
    case Expression::Kind::In:
    case Expression::Kind::Exists:
    case Expression::Kind::Subselect:
      e.type = resolve_subselect(e, scope);
      break;
    case Expression::Kind::Call:
      e.type = resolve_call(e, scope);
      break;
    case Expression::Kind::Question:
      break;
    case Expression::Kind::Star:
      fail(kSyntaxError, "Syntax error: '*' is no value.", e.begin);
  }
  weigh(e);
  e.resolving = false;
  e.resolved = true;
  return e.type;
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
    if (!e.qualifier.empty() && !same_name(binding.name, e.qualifier)) continue;
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
    if (output.alias.empty() || !same_name(output.alias, e.name)) continue;
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

Type Resolver::call_type(const Expression& e) const {
  const BuiltIn& called = *e.built_in;
  if (called.type != Type::Unknown || e.operands.empty()) return called.type;
  const Type first = e.operands[0]->type;
  switch (called.form) {
    case BuiltIn::Form::IIf:
      return common_type(e.operands[1]->type, e.operands[2]->type);
    case BuiltIn::Form::Nz:
      return e.operands.size() > 1 ? common_type(first, e.operands[1]->type) : first;
    case BuiltIn::Form::Switch:
    case BuiltIn::Form::Choose: {
      const std::size_t step = called.form == BuiltIn::Form::Switch ? 2 : 1;
      Type common = e.operands[1]->type;
      for (std::size_t i = 1; i < e.operands.size(); i += step) {
        common = common_type(common, e.operands[i]->type);
      }
      return common;
    }
    default:
      break;
  }
  // Abs, Int, Fix, Round, Sum, Min, Max, First, Last: the type of what they are given, but that a
  // True that is counted with is a number.
  const bool number = called.form == BuiltIn::Form::Plain || called.target == "sum";
  if (first == Type::Boolean) return Type::Integer;
  if (number && !is_number(first)) return first == Type::Unknown ? Type::Unknown : Type::Double;
  return first;
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
