#include "jetsql/parser.h"

#include "jetsql/grammar.h"
#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

constexpr std::string_view kParameterComplaint = "Syntax error in PARAMETER clause";

}  // namespace

// Parameters name type, ...; the names stand for the values that a page binds, in their order.
void Grammar::parameters() {
  if (!tokens_.take_word("parameters")) return;
  do {
    ColumnDefinition declared;
    declared.begin = tokens_.peek().begin;
    declared.name = tokens_.expect_name(kParameterComplaint);
    column_type(declared);
    tree_.parameters.push_back(lower_letters(declared.name));
  } while (tokens_.take_symbol(','));
  tokens_.expect_symbol(';', kParameterComplaint);
  tree_.questions = tree_.parameters.size();
}

void Grammar::statement() {
  parameters();
  Statement& statement = tree_.statement;
  if (tokens_.at_word("select") || tokens_.at_symbol('(')) {
    statement.kind = Statement::Kind::Select;
    statement.select = query();
  } else if (tokens_.take_word("insert")) {
    insert();
  } else if (tokens_.take_word("update")) {
    update();
  } else if (tokens_.take_word("delete")) {
    delete_rows();
  } else if (tokens_.take_word("create")) {
    create();
  } else if (tokens_.take_word("drop")) {
    drop();
  } else if (tokens_.take_word("alter")) {
    alter();
  } else {
    tokens_.fail("Invalid SQL statement; expected 'DELETE', 'INSERT', 'SELECT' or 'UPDATE'");
  }
  if (tokens_.take_symbol(';') && !tokens_.at_end()) {
    tokens_.fail("Characters found after end of SQL statement");
  }
  if (!tokens_.at_end()) tokens_.fail(kMissingOperator);
}

std::unique_ptr<Tree> parse(std::string_view sql) {
  auto tree = std::make_unique<Tree>();
  Grammar(sql, *tree).statement();
  return tree;
}

}  // namespace rk::jetsql
