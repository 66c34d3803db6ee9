// Select, Union, From and its joins.
#include <algorithm>

#include "jetsql/grammar.h"
#include "jetsql/letters.h"

namespace rk::jetsql {

namespace {

constexpr std::string_view kSelectComplaint =
    "The SELECT statement includes a reserved word or an argument name that is misspelled or "
    "missing, or the punctuation is incorrect";
constexpr std::string_view kFromComplaint = "Syntax error in FROM clause";
constexpr std::string_view kJoinComplaint = "Syntax error in JOIN operation";

// Numbers and what is reckoned of numbers alone, as 2024-01-01 is.
bool is_only_numbers(const Expression& e) {
  if (e.kind == Expression::Kind::Literal) {
    return e.literal.kind == Literal::Kind::Integer || e.literal.kind == Literal::Kind::Double;
  }
  const bool reckoned = e.kind == Expression::Kind::Unary || e.kind == Expression::Kind::Binary;
  return reckoned &&
         std::all_of(e.operands.begin(), e.operands.end(),
                     [](const Expression* operand) { return is_only_numbers(*operand); });
}

}  // namespace

Select* Grammar::query() {
  const Deeper deeper(depth_, tokens_);
  Select* first = member();
  while (tokens_.take_word("union")) {
    Select::Joined joined;
    joined.all = tokens_.take_word("all");
    joined.select = member();
    first->unions.push_back(joined);
  }
  const std::size_t order = tokens_.peek().begin;
  if (tokens_.take_word("order")) {
    if (first->unions.empty() && first->from.empty()) {
      tokens_.fail_at(order, "Query input must contain at least one table or query");
    }
    tokens_.expect_word("by", "Syntax error in ORDER BY clause");
    first->order = orderings();
  }
  return first;
}

// One Select of a Union, with or without brackets of its own.
Select* Grammar::member() {
  if (!tokens_.take_symbol('(')) return single_select();
  Select* inside = query();
  tokens_.expect_symbol(')', kSelectComplaint);
  return inside->unions.empty() && inside->order.empty() ? inside : all_of(inside);
}

// Select * From (query): keeps a union's or an order's own reach.
Select* Grammar::all_of(Select* query) {
  Select* outer = tree_.select();
  outer->begin = query->begin;
  outer->outputs.push_back({node(Expression::Kind::Star, query->begin), ""});
  Source* derived = tree_.source();
  derived->kind = Source::Kind::Derived;
  derived->begin = query->begin;
  derived->select = query;
  outer->from.push_back(derived);
  return outer;
}

Select* Grammar::single_select() {
  Select* select = tree_.select();
  select->begin = tokens_.peek().begin;
  tokens_.expect_word("select", kSelectComplaint);
  if (tokens_.take_word("distinct") || tokens_.take_word("distinctrow")) {
    select->distinct = true;
  } else {
    tokens_.take_word("all");
  }
  const bool comma = top(*select);
  outputs(*select);
  // "Top 1,000 id" is a number that was written with its thousands apart, not a column.
  const Expression& first = *select->outputs.front().value;
  if (comma && is_only_numbers(first)) tokens_.fail_at(first.begin, kSelectComplaint);
  if (tokens_.take_word("into")) select->into = tokens_.expect_name(kSelectComplaint);
  if (tokens_.take_word("from")) select->from = sources();
  if (tokens_.take_word("where")) select->where = expression();
  if (tokens_.take_word("group")) {
    tokens_.expect_word("by", "Syntax error in GROUP BY clause");
    select->group = expressions();
  }
  if (tokens_.take_word("having")) select->having = expression();
  return select;
}

// Answers whether a comma stands behind it, as in "Top 10, id".
bool Grammar::top(Select& select) {
  if (!tokens_.take_word("top")) return false;
  select.top = tokens_.expect_whole_number(kSelectComplaint);
  if (tokens_.at_word("percent") && !tokens_.at_symbol(',', 1)) {
    tokens_.take();
    select.top_percent = true;
    if (select.top > 100) tokens_.fail(kSelectComplaint);
  }
  return tokens_.take_symbol(',');
}

void Grammar::outputs(Select& select) {
  do {
    select.outputs.push_back(output());
  } while (tokens_.take_symbol(','));
}

Expression* Grammar::star() {
  Expression* made = node(Expression::Kind::Star, tokens_.peek().begin);
  if (tokens_.take_symbol('*')) return made;
  const bool qualified =
      tokens_.at_name() && tokens_.at_symbol('.', 1) && tokens_.at_symbol('*', 2);
  if (!qualified) return nullptr;
  made->qualifier = tokens_.expect_name(kSelectComplaint);
  tokens_.take();
  tokens_.take();
  return made;
}

Output Grammar::output() {
  Output made;
  made.value = star();
  if (made.value != nullptr) return made;
  if (tokens_.at_word("from") || tokens_.at_symbol(',') || tokens_.at_end()) {
    tokens_.fail(kSelectComplaint);
  }
  made.value = expression();
  // A name behind bare numbers is what is left of a value that broke the text, never an alias.
  if (tokens_.at_name() && is_only_numbers(*made.value)) tokens_.fail(kMissingOperator);
  made.alias = alias();
  return made;
}

std::string Grammar::alias() {
  if (tokens_.take_word("as")) return tokens_.expect_name(kSelectComplaint);
  return tokens_.at_name() ? tokens_.expect_name(kSelectComplaint) : std::string();
}

std::vector<Source*> Grammar::sources() {
  std::vector<Source*> list;
  do {
    list.push_back(source());
  } while (tokens_.take_symbol(','));
  return list;
}

Source* Grammar::source() {
  const Deeper deeper(depth_, tokens_);
  return joined(plain_source());
}

Source* Grammar::plain_source() {
  const std::uint32_t begin = tokens_.peek().begin;
  if (tokens_.at_symbol('(') && !tokens_.at_word("select", 1)) {
    tokens_.take();
    Source* inside = source();
    tokens_.expect_symbol(')', kFromComplaint);
    return inside;
  }
  Source* made = tree_.source();
  made->begin = begin;
  if (tokens_.take_symbol('(')) {
    made->kind = Source::Kind::Derived;
    made->select = query();
    tokens_.expect_symbol(')', kFromComplaint);
  } else {
    made->name = tokens_.expect_name(kFromComplaint);
  }
  if (tokens_.take_word("as")) {
    made->alias = tokens_.expect_name(kFromComplaint);
  } else if (tokens_.at_name()) {
    made->alias = tokens_.expect_name(kFromComplaint);
  }
  return made;
}

bool Grammar::join_word(Source::Kind& kind) {
  if (tokens_.take_word("inner")) {
    kind = Source::Kind::Inner;
  } else if (tokens_.take_word("left")) {
    kind = Source::Kind::Left;
    tokens_.take_word("outer");
  } else if (tokens_.take_word("right")) {
    kind = Source::Kind::Right;
    tokens_.take_word("outer");
  } else {
    return false;
  }
  tokens_.expect_word("join", kFromComplaint);
  return true;
}

// One join: a table that is joined to a join stands beside brackets.
Source* Grammar::joined(Source* left) {
  Source::Kind kind = Source::Kind::Inner;
  if (!join_word(kind)) return left;
  Source* made = tree_.source();
  made->kind = kind;
  made->begin = left->begin;
  made->left = left;
  made->right = plain_source();
  tokens_.expect_word("on", kJoinComplaint);
  made->on = expression();
  const bool another =
      (tokens_.at_word("inner") || tokens_.at_word("left") || tokens_.at_word("right")) &&
      (tokens_.at_word("join", 1) || tokens_.at_word("outer", 1));
  if (another) tokens_.fail(kMissingOperator);
  return made;
}

std::vector<Ordering> Grammar::orderings() {
  std::vector<Ordering> list;
  do {
    Ordering made;
    made.value = expression();
    made.descending = tokens_.take_word("desc");
    if (!made.descending) tokens_.take_word("asc");
    list.push_back(made);
  } while (tokens_.take_symbol(','));
  return list;
}

}  // namespace rk::jetsql
