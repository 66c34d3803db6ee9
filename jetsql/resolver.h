// Finds out what the names of a syntax tree mean in a schema, and the type of each expression.
// Thread rule: one resolver on one thread.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "jetsql/statement.h"

namespace rk::jetsql {

// What an expression may weigh: names that stand for expressions that hold such names can double
// it at each step.
inline constexpr std::uint32_t kMaxWeight = 200'000;

// One table or derived table of a From.
struct Binding {
  std::string name;              // by which the text speaks of it: its alias, else the table's name
  const Table* table = nullptr;  // of a derived table one that the resolver made up
  bool derived = false;
  std::string row_id;  // how the engine names its rows' number ("rowid"), or empty: none to be had
};

// An output after the stars were opened.
struct ResolvedOutput {
  const Expression* value = nullptr;  // null: a column out of a star
  const Binding* binding = nullptr;
  const Column* column = nullptr;
  std::string name;
  Type type = Type::Unknown;
};

// The names that one Select sees.
struct Scope {
  std::deque<Binding> bindings;
  const Scope* outer = nullptr;
  Select* select = nullptr;
  bool sees_outputs = false;  // while outputs and orderings are resolved
  bool aggregates = false;    // they may stand here
  bool grouped = false;       // Group By, or an aggregate among the outputs
  std::vector<ResolvedOutput> outputs;
};

class Resolver {
 public:
  Resolver(std::string_view sql, const Schema& schema) : sql_(sql), schema_(schema) {}

  // Of the whole query with its unions; `outer` for what it may refer to outside.
  void resolve_query(Select& select, const Scope* outer);
  void resolve_sources(std::vector<Source*>& sources, Scope& scope);
  Type resolve(Expression& e, Scope& scope);
  Scope* make_scope(const Scope* outer);
  // Raises kNoSuchTable.
  const Table& table(std::string_view name, std::size_t position) const;

  [[noreturn]] void fail(long number, std::string_view text, std::size_t position) const;
  [[noreturn]] void missing_value(std::string_view name, std::size_t position) const;

 private:
  void resolve_select(Select& select, const Scope* outer);
  void bind(Source& source, Scope& scope);
  void bind_table(Source& source, Scope& scope);
  void bind_derived(Source& source, Scope& scope);
  void resolve_joins(Source& source, Scope& scope);
  void resolve_outputs(Select& select, Scope& scope);
  void open_star(const Expression& star, Scope& scope);
  void name_outputs(Scope& scope);
  void resolve_order(Select& select, Scope& scope);
  void resolve_union_order(Select& select);
  void check_grouping(const Select& select, const Scope& scope) const;
  bool is_grouped(const Expression& e, const Select& select, const Scope& scope) const;
  void check_distinct_order(const Select& select, const Scope& scope) const;

  void weigh(Expression& e) const;
  Type resolve_column(Expression& e, Scope& scope);
  bool find_column(Expression& e, const Scope& scope) const;
  bool find_output(Expression& e, Scope& scope);
  Type resolve_binary(Expression& e, Scope& scope);
  Type resolve_call(Expression& e, Scope& scope);
  Type call_type(const Expression& e) const;
  Type resolve_subselect(Expression& e, Scope& scope);
  Type type_of(Expression& e, Scope& scope);

  std::string_view sql_;
  const Schema& schema_;
  std::deque<Scope> scopes_;
  std::deque<Table> derived_;
};

bool is_number(Type type);
// Whether it is the word Null, of no type of its own; `e` may be null.
bool is_null(const Expression* e);
// The type of a column that holds now the one, now the other.
Type common_type(Type a, Type b);
bool same_expression(const Expression& a, const Expression& b);

}  // namespace rk::jetsql
