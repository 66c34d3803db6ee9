// Selects: their pieces, the order of their rows, how they are counted and shown in part.
#include <algorithm>

#include "jetsql/letters.h"
#include "jetsql/updatable.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

bool is_textual(Type type) {
  return type == Type::Text || type == Type::Unknown;
}

// Columns are written in the sight of the Select that they stand in.
class Within {
 public:
  Within(const Scope*& current, const Scope* scope) : current_(current), before_(current) {
    current_ = scope;
  }
  ~Within() { current_ = before_; }
  Within(const Within&) = delete;
  Within& operator=(const Within&) = delete;

 private:
  const Scope*& current_;
  const Scope* before_;
};

bool removes_doubles(const Select& select) {
  for (const Select::Joined& joined : select.unions) {
    if (!joined.all) return true;
  }
  return false;
}

// Rows of the Select are rows of its sources, one for one.
bool is_plain(const Select& select) {
  return select.unions.empty() && !select.distinct && !select.scope->grouped;
}

// Its rows can be asked for from the last one on: they are a table's own, told apart by their
// number, and nothing is evaluated to order them.
bool is_reversible(const Select& select) {
  const Scope& scope = *select.scope;
  if (!is_plain(select) || select.top >= 0 || scope.bindings.size() != 1) return false;
  if (scope.bindings.front().derived || scope.bindings.front().row_id.empty()) return false;
  return std::all_of(select.order.begin(), select.order.end(), [](const Ordering& term) {
    return term.value->kind == Expression::Kind::Column && term.value->column != nullptr;
  });
}

}  // namespace

SelectPieces Writer::pieces(const Select& select, bool ordered) {
  return select.unions.empty() ? single(select, ordered) : compound(select, ordered);
}

SelectPieces Writer::single(const Select& select, bool ordered) {
  const Within within(scope_, select.scope);
  SelectPieces made;
  made.head = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  outputs(select, made.head);
  from(select.from, made.source);
  made.where = made.source.size();
  where(select.where, made.source);
  made.grouping = grouping(select);
  if (ordered) made.order = order(select, false);
  if (ordered && is_reversible(select)) made.reversed_order = order(select, true);
  made.limit = limit(select, made.head + made.source + made.grouping);
  return made;
}

// A member of a union that is cut off, or whose rows are to come in their order, stands in
// brackets.
std::string Writer::member(const Select& select, bool in_order) {
  const bool inside = in_order || select.top >= 0;
  SelectPieces made = single(select, inside);
  if (!inside) return made.head + made.source + made.grouping;
  return "SELECT * FROM (" + made.head + made.source + made.grouping + made.order + made.limit +
         ")";
}

SelectPieces Writer::compound(const Select& select, bool ordered) {
  const bool in_order = ordered && select.order.empty() && !removes_doubles(select);
  SelectPieces made;
  made.head = member(select, in_order);
  for (const Select::Joined& joined : select.unions) {
    made.head += joined.all ? " UNION ALL " : " UNION ";
    made.head += member(*joined.select, in_order);
  }
  if (ordered) made.order = union_order(select);
  return made;
}

std::string Writer::whole(const Select& select, bool ordered) {
  const SelectPieces made = pieces(select, ordered);
  return made.head + made.source + made.grouping + made.order + made.limit;
}

void Writer::outputs(const Select& select, std::string& out) {
  const bool fold_case = select.distinct || removes_doubles(select);
  bool first = true;
  for (const ResolvedOutput& made : select.scope->outputs) {
    if (!first) out += ',';
    first = false;
    output(made, fold_case, out);
  }
}

void Writer::output(const ResolvedOutput& output, bool fold_case, std::string& out) {
  const bool column = output.column != nullptr;
  if (column) {
    Expression named;
    named.kind = Expression::Kind::Column;
    named.binding = output.binding;
    named.column = output.column;
    this->column(named, out);
  } else {
    value(*output.value, out);
  }
  const bool folds = fold_case && is_textual(output.type) && !(column && output.column->no_case);
  if (folds) out += " COLLATE NOCASE";
  if (column && output.column->name == output.name && !output.binding->derived && !folds) return;
  out += " AS ";
  name(output.name, out);
}

std::string Writer::grouping(const Select& select) {
  std::string out;
  for (const Expression* group : select.group) {
    out += out.empty() ? " GROUP BY " : ",";
    natural(*group, out);
    const bool declared = group->column != nullptr && group->column->no_case;
    if (is_textual(group->type) && !declared) out += " COLLATE NOCASE";
  }
  if (select.having != nullptr) {
    out += " HAVING ";
    condition(*select.having, out);
  }
  return out;
}

void Writer::ordering(const Ordering& ordering, const Scope& scope, bool reversed,
                      std::string& out) {
  const Expression& value = *ordering.value;
  Type type = value.type;
  bool declared = value.column != nullptr && value.column->no_case;
  if (value.kind == Expression::Kind::Literal) {
    const ResolvedOutput& output =
        scope.outputs[static_cast<std::size_t>(value.literal.integer) - 1];
    type = output.type;
    declared = output.column != nullptr && output.column->no_case;
    out += std::to_string(value.literal.integer);
  } else {
    natural(value, out);
  }
  if (is_textual(type) && !declared) out += " COLLATE NOCASE";
  const bool descending = ordering.descending != reversed;
  if (type == Type::Boolean) {
    // A True is -1 in Jet and comes before a False; a Null still comes before both.
    out += descending ? " NULLS LAST" : " DESC NULLS FIRST";
  } else if (descending) {
    out += " DESC";
  }
}

std::string Writer::order(const Select& select, bool reversed) {
  std::string out;
  for (const Ordering& term : select.order) {
    out += out.empty() ? " ORDER BY " : ",";
    ordering(term, *select.scope, reversed, out);
  }
  stored_order(select, reversed, out);
  return out;
}

// Rows that nothing else orders come as they were stored, groups as their first rows were.
void Writer::stored_order(const Select& select, bool reversed, std::string& out) {
  const bool grouped = select.scope->grouped;
  if (grouped && select.group.empty()) return;
  for (const Binding* binding : numbered(select.from)) {
    bool ordered = false;
    for (const Ordering& term : select.order) {
      ordered = ordered || (term.value->column != nullptr && term.value->column->row_id &&
                            term.value->binding == binding);
    }
    if (ordered && !grouped) continue;
    out += out.empty() ? " ORDER BY " : ",";
    if (grouped) out += "min(";
    if (select.scope->bindings.size() > 1) {
      name(binding->name, out);
      out += '.';
    }
    out += binding->row_id;
    if (grouped) out += ')';
    if (reversed) out += " DESC";
  }
}

std::string Writer::union_order(const Select& select) {
  std::string out;
  for (const Ordering& term : select.order) {
    out += out.empty() ? " ORDER BY " : ",";
    ordering(term, *select.scope, false, out);
  }
  return out;
}

std::string Writer::limit(const Select& select, const std::string& counted) const {
  if (select.top < 0) return "";
  const std::string top = std::to_string(select.top);
  if (!select.top_percent) return " LIMIT " + top;
  return " LIMIT (SELECT (count(*)*" + top + "+99)/100 FROM (" + counted + "))";
}

void Writer::select_statement(Select& select) {
  resolver_.resolve_query(select, nullptr);
  if (!select.into.empty()) return select_into(select);
  translation_.kind = Translation::Kind::Select;
  const SelectPieces made = pieces(select, true);
  translation_.head = made.head;
  translation_.tail = made.source + made.grouping + made.order;
  if (!made.reversed_order.empty()) translation_.reversed_tail = made.source + made.reversed_order;
  translation_.limit = made.limit;
  describe(select);
  row(select, made);
  count(select, made);
  window();
  translation_.statements.push_back(translation_.select_text(false, false));
}

// The table that a record set over the Select writes to, and how it tells that table's rows apart.
const Binding* Writer::describe_table(const Select& select) {
  if (!is_plain(select)) return nullptr;
  const Binding* own = updatable_binding(select);
  if (own == nullptr) return nullptr;
  if (select.scope->bindings.size() > 1) {
    const auto reachable = numbered(select.from);
    if (std::find(reachable.begin(), reachable.end(), own) == reachable.end()) return nullptr;
    name(own->name, translation_.row_key);
    translation_.row_key += '.';
  }
  translation_.table = own->table->name;
  translation_.row_key += own->row_id;
  return own;
}

void Writer::describe(const Select& select) {
  const Binding* own = describe_table(select);
  for (const ResolvedOutput& output : select.scope->outputs) {
    OutputColumn column;
    column.name = output.name;
    column.type = output.type;
    // A comparison comes out as the number -1 or 0.
    if (output.type == Type::Boolean && output.column == nullptr) column.type = Type::Integer;
    const bool stored = is_plain(select) && output.column != nullptr && !output.binding->derived;
    if (stored) {
      column.origin_table = output.binding->table->name;
      column.origin_column = output.column->name;
      if (output.binding == own) column.base_column = output.column->name;
    }
    translation_.columns.push_back(std::move(column));
  }
}

// One row of a join, asked for by the number that its table knows it by.
void Writer::row(const Select& select, const SelectPieces& made) {
  if (translation_.row_key.empty() || select.scope->bindings.size() < 2) return;
  constexpr std::string_view kWhere = " WHERE ";
  std::string& out = translation_.row_tail;
  out.append(made.source, 0, made.where).append(kWhere);
  if (made.where < made.source.size()) {
    out.append("(").append(made.source, made.where + kWhere.size()).append(") AND ");
  }
  out.append(translation_.row_key).append("=?");
  out.append(std::to_string(translation_.window_count()));
}

void Writer::count(const Select& select, const SelectPieces& made) {
  std::string& out = translation_.count_text;
  const std::string top = std::to_string(select.top);
  if (!is_plain(select)) {
    out = "SELECT count(*) FROM (" + made.head + made.source + made.grouping + made.limit + ")";
  } else if (select.from.empty()) {
    out = select.top == 0 ? "SELECT 0" : "SELECT 1";
  } else if (select.top < 0) {
    out = "SELECT count(*)" + made.source;
  } else if (select.top_percent) {
    out = "SELECT (count(*)*" + top + "+99)/100" + made.source;
  } else {
    out = "SELECT count(*) FROM (SELECT 1" + made.source + " LIMIT " + top + ")";
  }
}

void Writer::window() {
  const std::string rows = std::string("?").append(std::to_string(translation_.window_count()));
  const std::string skipped = std::string("?").append(std::to_string(translation_.window_offset()));
  std::string& out = translation_.window_limit;
  if (translation_.limit.empty()) {
    out = " LIMIT " + rows;
  } else {
    // A negative limit would be none.
    const std::string top = translation_.limit.substr(std::string_view(" LIMIT ").size());
    out = " LIMIT max(0,min(" + rows + "," + top + "-" + skipped + "))";
  }
  out += " OFFSET " + skipped;
}

void Writer::select_into(Select& select) {
  translation_.kind = Translation::Kind::SelectInto;
  translation_.table = select.into;
  if (schema_.table(select.into) != nullptr) {
    throw SqlError(kTableExists, "Table '" + select.into + "' already exists.", select.begin);
  }
  std::string create = "CREATE TABLE ";
  name(select.into, create);
  bool first = true;
  for (const ResolvedOutput& output : select.scope->outputs) {
    create += first ? " (" : ", ";
    first = false;
    name(output.name, create);
    const bool comparison = output.type == Type::Boolean && output.column == nullptr;
    create += declaration_of(comparison ? Type::Integer : output.type);
  }
  translation_.statements.push_back(create + ")");
  std::string fill = "INSERT INTO ";
  name(select.into, fill);
  translation_.statements.push_back(fill + " " + whole(select, true));
}

}  // namespace rk::jetsql
