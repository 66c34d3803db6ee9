// Create, Alter and Drop of tables and indexes.
#include "jetsql/grammar.h"
#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

constexpr std::string_view kTableComplaint = "Syntax error in CREATE TABLE statement";
constexpr std::string_view kIndexComplaint = "Syntax error in CREATE INDEX statement";
constexpr std::string_view kFieldComplaint = "Syntax error in field definition";
constexpr std::string_view kConstraintComplaint = "Syntax error in CONSTRAINT clause";
constexpr std::string_view kDropComplaint = "Syntax error in DROP TABLE or DROP INDEX";
constexpr std::string_view kAlterComplaint = "Syntax error in ALTER TABLE statement";

}  // namespace

void Grammar::create() {
  if (tokens_.take_word("table")) return create_table();
  const bool unique = tokens_.take_word("unique");
  tokens_.expect_word("index", kTableComplaint);
  create_index(unique);
}

void Grammar::create_table() {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::CreateTable;
  statement.target_begin = tokens_.peek().begin;
  statement.target = tokens_.expect_name(kTableComplaint);
  tokens_.expect_symbol('(', kTableComplaint);
  do {
    if (at_key_definition()) {
      statement.keys.push_back(key_definition());
    } else {
      statement.definitions.push_back(column_definition());
    }
  } while (tokens_.take_symbol(','));
  tokens_.expect_symbol(')', kTableComplaint);
}

void Grammar::create_index(bool unique) {
  Statement& statement = tree_.statement;
  statement.kind = Statement::Kind::CreateIndex;
  statement.unique = unique;
  statement.index = tokens_.expect_name(kIndexComplaint);
  tokens_.expect_word("on", kIndexComplaint);
  statement.target_begin = tokens_.peek().begin;
  statement.target = tokens_.expect_name(kIndexComplaint);
  tokens_.expect_symbol('(', kIndexComplaint);
  KeyDefinition key;
  do {
    key.columns.push_back(tokens_.expect_name(kIndexComplaint));
    key.descending.push_back(tokens_.take_word("desc"));
    if (!key.descending.back()) tokens_.take_word("asc");
  } while (tokens_.take_symbol(','));
  tokens_.expect_symbol(')', kIndexComplaint);
  if (tokens_.take_word("with")) {
    key.primary = tokens_.take_word("primary");
    if (!key.primary) {
      statement.ignore_null = tokens_.take_word("ignore");
      if (!statement.ignore_null) tokens_.expect_word("disallow", kIndexComplaint);
      tokens_.expect_word("null", kIndexComplaint);
    }
  }
  statement.keys.push_back(key);
}

void Grammar::drop() {
  Statement& statement = tree_.statement;
  if (tokens_.take_word("table")) {
    statement.kind = Statement::Kind::DropTable;
  } else {
    tokens_.expect_word("index", kDropComplaint);
    statement.kind = Statement::Kind::DropIndex;
    statement.index = tokens_.expect_name(kDropComplaint);
    tokens_.expect_word("on", kDropComplaint);
  }
  statement.target_begin = tokens_.peek().begin;
  statement.target = tokens_.expect_name(kDropComplaint);
}

void Grammar::alter() {
  Statement& statement = tree_.statement;
  tokens_.expect_word("table", kAlterComplaint);
  statement.target_begin = tokens_.peek().begin;
  statement.target = tokens_.expect_name(kAlterComplaint);
  if (tokens_.take_word("add")) return alter_add();
  if (tokens_.take_word("drop")) return alter_drop();
  tokens_.expect_word("alter", kAlterComplaint);
  tokens_.take_word("column");
  statement.kind = Statement::Kind::AlterColumn;
  statement.definitions.push_back(column_definition());
}

void Grammar::alter_add() {
  Statement& statement = tree_.statement;
  if (at_key_definition()) {
    statement.kind = Statement::Kind::AddKey;
    statement.keys.push_back(key_definition());
    return;
  }
  statement.kind = Statement::Kind::AddColumn;
  tokens_.take_word("column");
  const bool brackets = tokens_.take_symbol('(');
  do {
    statement.definitions.push_back(column_definition());
  } while (tokens_.take_symbol(','));
  if (brackets) tokens_.expect_symbol(')', kAlterComplaint);
}

void Grammar::alter_drop() {
  Statement& statement = tree_.statement;
  if (tokens_.take_word("constraint")) {
    statement.kind = Statement::Kind::DropKey;
    statement.index = tokens_.expect_name(kAlterComplaint);
    return;
  }
  statement.kind = Statement::Kind::DropColumn;
  tokens_.take_word("column");
  do {
    ColumnDefinition column;
    column.begin = tokens_.peek().begin;
    column.name = tokens_.expect_name(kAlterComplaint);
    statement.definitions.push_back(column);
  } while (tokens_.take_symbol(','));
}

ColumnDefinition Grammar::column_definition() {
  ColumnDefinition column;
  column.begin = tokens_.peek().begin;
  column.name = tokens_.expect_name(kFieldComplaint);
  column_type(column);
  while (column_rule(column)) {
  }
  return column;
}

void Grammar::column_type(ColumnDefinition& column) {
  if (tokens_.peek().kind != TokenKind::Word) tokens_.fail(kFieldComplaint);
  column.type = lower_letters(tokens_.expect_name(kFieldComplaint));
  // "Double Precision", "Character Varying", "Long Binary" and the like.
  for (const std::string_view second : {"precision", "varying", "binary", "text"}) {
    if (tokens_.take_word(second)) column.type += second == "binary" ? "binary" : "";
  }
  sizes(column);
}

void Grammar::sizes(ColumnDefinition& column) {
  if (!tokens_.take_symbol('(')) return;
  do {
    column.sizes.push_back(tokens_.expect_whole_number(kFieldComplaint));
  } while (tokens_.take_symbol(','));
  tokens_.expect_symbol(')', kFieldComplaint);
}

bool Grammar::column_rule(ColumnDefinition& column) {
  if (tokens_.take_word("not")) {
    tokens_.expect_word("null", kFieldComplaint);
    column.not_null = true;
  } else if (tokens_.take_word("null")) {
    column.not_null = false;
  } else if (tokens_.take_word("default")) {
    tokens_.take_symbol('=');
    column.default_value = prefix();
  } else if (tokens_.take_word("primary")) {
    tokens_.expect_word("key", kFieldComplaint);
    column.primary_key = true;
  } else if (tokens_.take_word("unique")) {
    column.unique = true;
  } else if (tokens_.take_word("constraint")) {
    tokens_.expect_name(kConstraintComplaint);
  } else if (tokens_.at_word("with") &&
             (tokens_.at_word("compression", 1) || tokens_.at_word("comp", 1))) {
    tokens_.take();
    tokens_.take();
  } else if (tokens_.take_word("identity")) {
    column.type = "counter";
    sizes(column);
  } else if (tokens_.take_word("references")) {
    column.references_table = tokens_.expect_name(kConstraintComplaint);
    if (tokens_.at_symbol('(')) {
      const auto names = names_in_brackets(kConstraintComplaint);
      column.references_column = names.front();
    }
  } else {
    return false;
  }
  return true;
}

bool Grammar::at_key_definition() const {
  if (tokens_.at_word("constraint")) return true;
  const bool key = tokens_.at_word("primary") || tokens_.at_word("foreign");
  if (key) return tokens_.at_word("key", 1);
  return tokens_.at_word("unique") && tokens_.at_symbol('(', 1);
}

KeyDefinition Grammar::key_definition() {
  KeyDefinition key;
  if (tokens_.take_word("constraint")) key.name = tokens_.expect_name(kConstraintComplaint);
  if (tokens_.take_word("primary")) {
    key.primary = true;
    tokens_.expect_word("key", kConstraintComplaint);
    key.columns = names_in_brackets(kConstraintComplaint);
  } else if (tokens_.take_word("foreign")) {
    tokens_.expect_word("key", kConstraintComplaint);
    key.columns = names_in_brackets(kConstraintComplaint);
    tokens_.expect_word("references", kConstraintComplaint);
    key.references_table = tokens_.expect_name(kConstraintComplaint);
    if (tokens_.at_symbol('(')) key.references_columns = names_in_brackets(kConstraintComplaint);
  } else {
    tokens_.expect_word("unique", kConstraintComplaint);
    key.columns = names_in_brackets(kConstraintComplaint);
  }
  key.descending.assign(key.columns.size(), false);
  return key;
}

std::vector<std::string> Grammar::names_in_brackets(std::string_view complaint) {
  std::vector<std::string> names;
  tokens_.expect_symbol('(', complaint);
  do {
    names.push_back(tokens_.expect_name(complaint));
  } while (tokens_.take_symbol(','));
  tokens_.expect_symbol(')', complaint);
  return names;
}

}  // namespace rk::jetsql
