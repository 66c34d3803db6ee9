// The syntax tree of a whole statement: a select, a write or a definition, and the Tree that owns
// all nodes of one text. Thread rule: one tree on one thread.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "jetsql/syntax.h"

namespace rk::jetsql {

struct Assignment {
  Expression* column = nullptr;
  Expression* value = nullptr;
};

struct ColumnDefinition {
  std::uint32_t begin = 0;
  std::string name;
  std::string type;  // the word of the text, in small letters
  std::vector<std::int64_t> sizes;
  bool not_null = false;
  bool primary_key = false;
  bool unique = false;
  Expression* default_value = nullptr;
  std::string references_table, references_column;
};

struct KeyDefinition {
  bool primary = false;
  std::string name;
  std::vector<std::string> columns;
  std::vector<bool> descending;
  std::string references_table;
  std::vector<std::string> references_columns;
};

struct Statement {
  enum class Kind : std::uint8_t {
    Select,
    Insert,
    Update,
    Delete,
    CreateTable,
    DropTable,
    CreateIndex,
    DropIndex,
    AddColumn,
    DropColumn,
    AlterColumn,
    AddKey,
    DropKey
  };
  Kind kind = Kind::Select;
  Select* select = nullptr;                  // Select, and Insert's
  std::uint32_t target_begin = 0;            // where the table's name stands
  std::string target;                        // table of Insert, Delete and definitions
  std::string index;                         // of CreateIndex, DropIndex, DropKey
  bool unique = false, ignore_null = false;  // CreateIndex
  std::vector<std::string> columns;          // Insert
  std::vector<std::uint32_t> column_begins;
  std::vector<Expression*> values;            // Insert
  std::vector<Source*> from;                  // Update, Delete
  std::vector<Assignment> assignments;        // Update
  Expression* where = nullptr;                // Update, Delete
  std::vector<ColumnDefinition> definitions;  // CreateTable, AddColumn, DropColumn, AlterColumn
  std::vector<KeyDefinition> keys;            // CreateTable, CreateIndex, AddKey
};

class Tree {
 public:
  Expression* expression() { return &expressions_.emplace_back(); }
  Source* source() { return &sources_.emplace_back(); }
  Select* select() { return &selects_.emplace_back(); }

  Statement statement;
  std::vector<std::string> parameters;  // names of a Parameters clause, lower case
  std::size_t questions = 0;            // values that the page binds, those first

 private:
  std::deque<Expression> expressions_;
  std::deque<Source> sources_;
  std::deque<Select> selects_;
};

}  // namespace rk::jetsql
