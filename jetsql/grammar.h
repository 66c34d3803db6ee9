// The parser's rules, spread over one source file a family: expressions, selects, writes,
// definitions. For parser.cc only. Thread rule: one grammar on one thread.
#pragma once

#include <string_view>
#include <vector>

#include "jetsql/parser.h"
#include "jetsql/statement.h"
#include "jetsql/token_stream.h"

namespace rk::jetsql {

inline constexpr std::string_view kMissingOperator =
    "Syntax error (missing operator) in query expression";

// Counts how deep the rules have called one another.
class Deeper {
 public:
  Deeper(int& depth, const TokenStream& tokens) : depth_(depth) {
    if (++depth_ > kMaxNesting) {
      --depth_;
      tokens.fail("Expression too complex in query expression");
    }
  }
  ~Deeper() { --depth_; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;

 private:
  int& depth_;
};

class Grammar {
 public:
  Grammar(std::string_view sql, Tree& tree) : tokens_(sql), tree_(tree) {}

  void statement();

 private:
  void parameters();

  // grammar_expressions.cc
  Expression* expression(int power = 0);
  Expression* prefix();
  Expression* primary();
  Expression* bracketed();
  Expression* exists();
  Expression* name_or_call();
  Expression* call(std::string name, std::uint32_t begin);
  Expression* literal();
  Expression* question(std::uint32_t begin, std::size_t number);
  Expression* comparison_word(Expression* left, bool negated);
  Expression* in_list(Expression* left, bool negated);
  Expression* between(Expression* left, bool negated);
  Expression* is_null(Expression* left);
  Expression* binary(Operator op, Expression* left, Expression* right);
  Expression* node(Expression::Kind kind, std::uint32_t begin);
  Expression* finished(Expression* made);
  bool at_select() const;

  // grammar_selects.cc
  Select* query();
  Select* member();
  Select* all_of(Select* query);
  Select* single_select();
  bool top(Select& select);
  void outputs(Select& select);
  Output output();
  Expression* star();
  std::vector<Source*> sources();
  Source* source();
  Source* plain_source();
  Source* joined(Source* left);
  bool join_word(Source::Kind& kind);
  std::string alias();
  std::vector<Ordering> orderings();
  std::vector<Expression*> expressions();

  // grammar_writes.cc
  void insert();
  void update();
  void delete_rows();
  std::string column_name(std::string_view complaint);

  // grammar_definitions.cc
  void create();
  void create_table();
  void create_index(bool unique);
  void drop();
  void alter();
  void alter_add();
  void alter_drop();
  ColumnDefinition column_definition();
  void column_type(ColumnDefinition& column);
  void sizes(ColumnDefinition& column);
  bool column_rule(ColumnDefinition& column);
  bool at_key_definition() const;
  KeyDefinition key_definition();
  std::vector<std::string> names_in_brackets(std::string_view complaint);

  TokenStream tokens_;
  Tree& tree_;
  int depth_ = 0;
};

}  // namespace rk::jetsql
