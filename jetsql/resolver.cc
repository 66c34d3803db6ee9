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
      const ResolvedOutput& other = joined.select->scope->outputs[i];
      if (is_null(other.value)) continue;
      output.type = is_null(output.value) ? other.type : common_type(output.type, other.type);
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
    if (&other != &made && same_letters(other.name, made.name)) {
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
    if (!star.qualifier.empty() && !same_letters(binding.name, star.qualifier)) continue;
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

// A column that two tables have is named with its table; what has no name is
// Expr1000 in the first place, Expr1001 in the second.
void Resolver::name_outputs(Scope& scope) {
  constexpr std::size_t kFirstUnnamed = 1000;
  for (std::size_t place = 0; place < scope.outputs.size(); ++place) {
    ResolvedOutput& output = scope.outputs[place];
    if (!output.name.empty()) continue;
    if (output.column == nullptr) {
      output.name.assign("Expr").append(std::to_string(kFirstUnnamed + place));
      continue;
    }
    output.name = output.column->name;
    if (scope.bindings.size() < 2) continue;
    for (const ResolvedOutput& other : scope.outputs) {
      if (other.column == nullptr || other.binding == output.binding) continue;
      if (!same_letters(other.column->name, output.column->name)) continue;
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
        const bool named = same_letters(outputs[i].name, value.name);
        const bool column =
            outputs[i].column != nullptr && same_letters(outputs[i].column->name, value.name);
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

}  // namespace rk::jetsql
