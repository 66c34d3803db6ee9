// A resolved syntax tree -> SQLite's text and the parameters in the order of their numbers.
// Thread rule: one writer on one thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "jetsql/resolver.h"
#include "jetsql/statement.h"
#include "jetsql/translate.h"

namespace rk::jetsql {

// A text grown past this is refused: names that stand for expressions that stand for expressions
// can double it at each step.
inline constexpr std::size_t kMaxWrittenBytes = 4 << 20;

// The pieces of a select: head, then the row's number where it is asked for, tail, limit.
struct SelectPieces {
  std::string head;
  std::string source;     // From and Where alone
  std::size_t where = 0;  // of source: where its Where begins, or its end
  std::string grouping;   // Group By and Having
  std::string order, limit;
  std::string reversed_order;  // where the rows can be asked for from the last one on
};

class Writer {
 public:
  Writer(std::string_view sql, Resolver& resolver, const Schema& schema, Translation& translation)
      : sql_(sql), resolver_(resolver), schema_(schema), translation_(translation) {}

  void statement(Statement& statement);

 private:
  using Conversion = Parameter::Conversion;

  // writer_expressions.cc: each form appends to `out`.
  void natural(const Expression& e, std::string& out);   // as it is stored: Booleans 0 or 1
  void bare(const Expression& e, std::string& out);      // the same without brackets around it
  void value(const Expression& e, std::string& out);     // as a page sees it: comparisons -1 or 0
  void argument(const Expression& e, std::string& out);  // for a function: every Boolean -1 or 0
  void number(const Expression& e, std::string& out);    // for arithmetic
  void truth(const Expression& e, std::string& out);     // 0 or 1 whatever its type
  void stored(const Expression& e, const Column& column, std::string& out);
  void of_type(const Expression& e, Type type, std::string& out);
  void column(const Expression& e, std::string& out);
  void bound(Parameter parameter, std::string& out);
  void literal(const Expression& e, Conversion conversion, bool negate, std::string& out);
  void inlined(const Literal& given, std::string& out);
  void unary(const Expression& e, std::string& out);
  void subselect(const Select& select, std::string& out);
  void binary(const Expression& e, std::string& out);
  void sum(const Expression& e, std::string& out);
  void join(const Expression& e, std::string& out);
  void logic(const Expression& e, std::string_view word, std::string& out);
  static bool joins_chain(const Expression& e, const Expression& left);
  void infix(const Expression& e, std::string_view symbol, std::string& out);
  void two_numbers(std::string_view function, const Expression& e, std::string& out);

  // writer_comparisons.cc
  void compare(const Expression& e, std::string_view symbol, std::string& out);
  void like(const Expression& e, std::string& out);
  void between(const Expression& e, std::string& out);
  void in(const Expression& e, std::string& out);
  // One side of a comparison, suited to the other.
  void side(const Expression& e, const Expression& other, std::string& out);
  void literal_side(const Expression& e, bool negate, const Expression& other, std::string& out);
  Conversion literal_conversion(const Expression& e, const Expression& other) const;
  static bool needs_no_case(const Expression& a, const Expression& b);
  static bool needs_no_case(const Expression& tested);

  // writer_calls.cc
  void call(const Expression& e, std::string& out);
  void plain_call(const Expression& e, std::string& out);
  void aggregate(const Expression& e, std::string& out);
  void first_or_last(const Expression& e, std::string& out);
  void iif(const Expression& e, std::string& out);
  void switch_case(const Expression& e, std::string& out);
  void choose(const Expression& e, std::string& out);
  void nz(const Expression& e, std::string& out);
  void rnd(const Expression& e, std::string& out);

  // writer_selects.cc
  SelectPieces pieces(const Select& select, bool ordered);
  SelectPieces single(const Select& select, bool ordered);
  SelectPieces compound(const Select& select, bool ordered);
  std::string member(const Select& select, bool in_order);
  std::string whole(const Select& select, bool ordered);
  void outputs(const Select& select, std::string& out);
  void output(const ResolvedOutput& output, bool fold_case, std::string& out);
  std::string grouping(const Select& select);
  std::string order(const Select& select, bool reversed);
  void ordering(const Ordering& ordering, const Scope& scope, bool reversed, std::string& out);
  std::string union_order(const Select& select);
  void stored_order(const Select& select, bool reversed, std::string& out);
  std::string limit(const Select& select, const std::string& counted) const;
  void select_statement(Select& select);
  const Binding* describe_table(const Select& select);
  void describe(const Select& select);
  void row(const Select& select, const SelectPieces& made);
  void count(const Select& select, const SelectPieces& made);
  void window();
  void select_into(Select& select);

  // writer_sources.cc
  void from(const std::vector<Source*>& sources, std::string& out);
  void source(const Source& source, std::string& out);
  void operand(const Source& source, std::string& out);
  void where(const Expression* e, std::string& out);
  void condition(const Expression& e, std::string& out);
  // The tables of a From whose rows have numbers that a text can ask for, in the order in which
  // rows come.
  static std::vector<const Binding*> numbered(const std::vector<Source*>& sources);

  // writer_writes.cc
  void insert(Statement& statement);
  static std::vector<const Column*> unnamed_columns(const Statement& statement, const Table& table);
  void insert_values(Statement& statement, const std::vector<const Column*>& columns,
                     std::string& out);
  void insert_select(Statement& statement, const std::vector<const Column*>& columns,
                     std::string& out);
  void check_count(std::size_t values, std::size_t columns, std::size_t position) const;
  void update(Statement& statement);
  void update_one(Statement& statement, Scope& scope);
  void update_joined(Statement& statement);
  void delete_rows(Statement& statement);
  void delete_joined(Statement& statement, Scope& scope);

  // writer_definitions.cc
  void define(Statement& statement);
  void create_table(Statement& statement);
  void create_index(const Statement& statement);
  void add_columns(Statement& statement);
  void drop_columns(const Statement& statement, const Table& table);
  void alter_column(Statement& statement, const Table& table);
  void add_key(const Statement& statement, const Table& table);
  void definition(ColumnDefinition& column, bool own_key, std::string& out);
  void default_value(Expression& value, Type type, std::string& out);
  static bool is_counter_named(const Statement& statement, const std::string& column);
  void key_columns(const KeyDefinition& key, std::string& out) const;
  void table_key(const KeyDefinition& key, bool counted, std::string& out);

  static void name(std::string_view name, std::string& out);

  std::string_view sql_;
  Resolver& resolver_;
  const Schema& schema_;
  Translation& translation_;
  const Scope* scope_ = nullptr;  // of the Select that is being written
};

// Text between quotes of the engine's own. Raises kSyntaxError where it holds a NUL.
std::string quoted(std::string_view text);

// How a column of this type is declared, with a blank before it: " TEXT COLLATE NOCASE", "" for
// Unknown.
std::string declaration_of(Type type);

}  // namespace rk::jetsql
