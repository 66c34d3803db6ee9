// Insert, Update, Delete.
#include "jetsql/grammar.h"

namespace rk::jetsql {

namespace {

constexpr std::string_view kInsertComplaint = "Syntax error in INSERT INTO statement";
constexpr std::string_view kUpdateComplaint = "Syntax error in UPDATE statement";
constexpr std::string_view kDeleteComplaint = "Syntax error in DELETE statement";

}  // namespace

// The column behind an optional name of its table.
std::string Grammar::column_name(std::string_view complaint) {
  std::string name = tokens_.expect_name(complaint);
  while (tokens_.take_symbol('.')) name = tokens_.expect_name(complaint);
  return name;
}

void Grammar::insert() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Insert;
  tokens_.expect_word("into", kInsertComplaint);
  statement.target_begin = tokens_.peek().begin;
  statement.target = tokens_.expect_name(kInsertComplaint);
  if (tokens_.at_symbol('(') && !tokens_.at_word("select", 1)) {
    tokens_.take();
    do {
      statement.column_begins.push_back(tokens_.peek().begin);
      statement.columns.push_back(column_name(kInsertComplaint));
    } while (tokens_.take_symbol(','));
    tokens_.expect_symbol(')', kInsertComplaint);
  }
  if (tokens_.take_word("values")) {
    tokens_.expect_symbol('(', kInsertComplaint);
    statement.values = expressions();
    tokens_.expect_symbol(')', kInsertComplaint);
  } else if (tokens_.at_word("select") || tokens_.at_symbol('(')) {
    statement.select = query();
  } else {
    tokens_.fail(kInsertComplaint);
  }
}

void Grammar::update() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Update;
  statement.target_begin = tokens_.peek().begin;
  statement.from = sources();
  tokens_.expect_word("set", kUpdateComplaint);
  do {
    Assignment made;
    made.column = node(Expression::Kind::Column, tokens_.peek().begin);
    made.column->name = tokens_.expect_name(kUpdateComplaint);
    if (tokens_.take_symbol('.') || tokens_.take_symbol('!')) {
      made.column->qualifier = made.column->name;
      made.column->name = tokens_.expect_name(kUpdateComplaint);
    }
    finished(made.column);
    tokens_.expect_symbol('=', kUpdateComplaint);
    made.value = expression();
    statement.assignments.push_back(made);
  } while (tokens_.take_symbol(','));
  if (tokens_.take_word("where")) statement.where = expression();
}

// Delete From, Delete * From, Delete t.* From.
void Grammar::delete_rows() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::Delete;
  if (!tokens_.at_word("from")) {
    if (const Expression* rows = star(); rows != nullptr) {
      statement.target = rows->qualifier;
    } else {
      statement.target = tokens_.expect_name(kDeleteComplaint);
    }
  }
  tokens_.expect_word("from", kDeleteComplaint);
  statement.target_begin = tokens_.peek().begin;
  statement.from = sources();
  if (tokens_.take_word("where")) statement.where = expression();
}

}  // namespace rk::jetsql
