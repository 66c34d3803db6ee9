// Parser: from a source to its syntax tree. Throws SyntaxError.
//
// Statements read by recursive descent, expressions by binding power. Both recurse over nesting
// only, bounded by kMaxNesting.
#ifndef RK_VBSCRIPT_PARSER_H_
#define RK_VBSCRIPT_PARSER_H_

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <vector>

#include "vbscript/source.h"
#include "vbscript/syntax_error.h"
#include "vbscript/syntax_tree.h"
#include "vbscript/token.h"

namespace rk::vbscript {

class Parser {
 public:
  explicit Parser(const Source& source);

  std::unique_ptr<SyntaxTree> script();
  // One expression and nothing else; the tree's body is one WriteValue statement of it.
  std::unique_ptr<SyntaxTree> expression_alone();

 private:
  class Deeper;
  // What encloses the statement at hand, for Exit and for what may stand where.
  struct Enclosing {
    int loops_do = 0;
    std::vector<NameId> loops_for = {};  // their variables
    bool in_procedure = false;
    Procedure::Kind procedure = Procedure::Kind::Sub;
  };

  // --- statements (parser_statements.cc)
  void script_item();
  Block block(std::initializer_list<Keyword> ends);
  bool at_block_end(std::initializer_list<Keyword> ends) const;
  void statement(Block& out);
  void keyword_statement(Block& out);
  void if_statement(Block& out);
  void inline_if(Statement& s);
  Block inline_block();
  void block_if(Statement& s);
  void select_statement(Block& out);
  bool at_blank_text() const;
  void skip_blank_text();
  void case_branch(Statement& s);
  void for_statement(Block& out);
  void for_each(Statement& s);
  void for_counted(Statement& s);
  const Expression* loop_variable();
  void do_statement(Block& out);
  bool loop_test(Statement& s);
  void while_statement(Block& out);
  void with_statement(Block& out);
  void exit_statement(Block& out);
  void on_error(Block& out);
  void option_explicit(Block& out);
  void set_statement(Block& out);
  void call_statement(Block& out);
  void erase_statement(Block& out);
  void redim_statement(Block& out);
  void assignment_or_call(Block& out);
  void call_without_brackets(Statement& s);
  void write_value(Block& out);

  // --- declarations (parser_declarations.cc)
  void dim_statement(Block& out);
  std::vector<Declarator> declarators();
  std::vector<std::int32_t> bounds();
  void const_statement(Block& out);
  Value constant_value();
  void visible_declaration(Block& out);
  const Procedure* procedure(Procedure::Kind kind, bool is_public, bool is_default);
  Procedure::Kind property_kind();
  std::vector<Parameter> parameters();
  Parameter parameter();
  void procedure_end(Procedure& p);
  void class_declaration();
  void class_member(Class& c);
  void class_procedure(Class& c, bool is_public, bool is_default);
  void check_default(const Class& c, const Procedure& p, Position where) const;
  void check_arguments(const Procedure& p) const;

  // --- expressions (parser_expressions.cc)
  const Expression* expression(int power = 0);
  const Expression* operand();
  const Expression* unary(Operator operation, int power);
  const Expression* primary();
  const Expression* keyword_operand();
  const Expression* postfix(const Expression* base);
  const Expression* bracketed();
  const Expression* new_object();
  std::vector<const Expression*> arguments_in_brackets();
  std::vector<const Expression*> argument_list();
  Expression& make(Expression::Kind kind, Position where);
  const Expression* name_expression(const Token& token);

  // --- tokens
  const Token& here() const { return tokens_[at_]; }
  const Token& ahead(std::size_t n = 1) const {
    return tokens_[std::min(at_ + n, tokens_.size() - 1)];
  }
  bool is(TokenKind kind) const { return here().kind == kind; }
  bool is(Keyword word) const { return here().kind == TokenKind::Name && here().keyword == word; }
  bool accept(TokenKind kind);
  bool accept(Keyword word);
  void expect(TokenKind kind, const KnownError& error);
  void expect(Keyword word, const KnownError& error);
  bool at_statement_end() const;
  void statement_end();
  void skip_separators();
  NameId identifier();
  Position position() const { return {here().piece, here().offset}; }
  [[noreturn]] void fail(const KnownError& error) const { fail(error, position()); }
  [[noreturn]] void fail(const KnownError& error, Position where) const;
  Statement& add(Block& out, Statement::Kind kind);

  const Source& source_;
  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  int depth_ = 0;
  Enclosing enclosing_;
  bool in_class_ = false;
  std::unique_ptr<SyntaxTree> tree_;
};

// Counts nesting while it lives; raises past kMaxNesting.
class Parser::Deeper {
 public:
  explicit Deeper(Parser& parser);
  ~Deeper() { --parser_.depth_; }
  Deeper(const Deeper&) = delete;
  Deeper& operator=(const Deeper&) = delete;

 private:
  Parser& parser_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_PARSER_H_
