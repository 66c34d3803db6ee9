#include "tests/plain/expression.h"

#include <array>
#include <compare>
#include <span>
#include <string_view>

#include "value/arithmetic.h"
#include "value/comparison.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::vbscript::plain {

namespace {

// Deeper trees find nothing that these do not.
constexpr int kDeepest = 6;

struct Sign {
  std::string_view text;
  int power;  // the higher, the tighter
  Value (*of)(const Value&, const Value&);
};

template <class Holds>
Value compared(const Value& a, const Value& b, Holds&& holds) {
  const auto order = compare_loosely(a, b);
  return order ? Value::boolean(holds(*order)) : Value::null();
}

// clang-format off
const std::array kSigns{
    Sign{"Imp", 1, logical_imp}, Sign{"Eqv", 2, logical_eqv}, Sign{"Xor", 3, logical_xor},
    Sign{"Or", 4, logical_or}, Sign{"And", 5, logical_and},
    Sign{"=", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_eq); }},
    Sign{"<>", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_neq); }},
    Sign{"<", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_lt); }},
    Sign{">", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_gt); }},
    Sign{"<=", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_lteq); }},
    Sign{">=", 7, [](const Value& a, const Value& b) { return compared(a, b, std::is_gteq); }},
    Sign{"&", 8, concatenate}, Sign{"+", 9, add}, Sign{"-", 9, subtract},
    Sign{"Mod", 10, modulo}, Sign{"\\", 11, integer_divide},
    Sign{"*", 12, multiply}, Sign{"/", 12, divide}, Sign{"^", 14, power},
};
// clang-format on
constexpr int kNotPower = 6;
constexpr int kMinusPower = 13;
constexpr int kTightest = 15;

const Sign& sign_of(std::string_view operation) {
  for (const Sign& sign : kSigns) {
    if (sign.text == operation) return sign;
  }
  return kSigns.front();
}

int power_of(const Term& term) {
  if (term.operands.empty()) return kTightest;
  if (term.operands.size() == 2) return sign_of(term.operation).power;
  return term.operation == "Not" ? kNotPower : kMinusPower;
}

std::string source_within(const Term& term, int least) {
  std::string text;
  if (term.operands.empty()) {
    text = "v" + std::to_string(term.variable);
  } else if (term.operands.size() == 1) {
    text = term.operation + " " + source_within(term.operands[0], power_of(term));
  } else {
    // Operators of one power group to the left.
    text = source_within(term.operands[0], power_of(term)) + " " + term.operation + " " +
           source_within(term.operands[1], power_of(term) + 1);
  }
  return power_of(term) < least ? "(" + text + ")" : text;
}

std::string_view kind_name(const Value& value) {
  constexpr std::array<std::string_view, 11> kNames{"Empty",    "Null", "Boolean", "Byte",
                                                    "Integer",  "Long", "Single",  "Double",
                                                    "Currency", "Date", "String"};
  return kNames.at(static_cast<std::size_t>(value.kind()));
}

std::string_view sign_text(Operator operation) {
  constexpr std::array<std::string_view, 23> kTexts{
      "^", "-", "+",  "*",  "/",  "\\",  "Mod", "+",  "-",   "&",   "=",  "<>",
      "<", ">", "<=", ">=", "Is", "Not", "And", "Or", "Xor", "Eqv", "Imp"};
  return kTexts.at(static_cast<std::size_t>(operation));
}

}  // namespace

const std::vector<Variable>& variables() {
  static const std::vector<Variable> kAll{
      {"5", Value::integer(5)},
      {"-3", Value::integer(-3)},
      {"32767", Value::integer(32767)},
      {"2147483647", Value::long_integer(2147483647)},
      {"0.5", Value::real(0.5)},
      {"1E300", Value::real(1e300)},
      {"\"7\"", Value::text("7")},
      {"\"abc\"", Value::text("abc")},
      {"True", Value::boolean(true)},
      {"Null", Value::null()},
      {"Empty", Value()},
      {"CByte(200)", Value::byte(200)},
      {"CCur(1.25)", Value::currency(12500)},
      {"CSng(1.5)", Value::single(1.5F)},
      {"#1900-01-05#", Value::date(6)},
      {"0", Value::integer(0)},
  };
  return kAll;
}

Term term_from(std::span<const std::uint8_t>& choices, int deepest) {
  const std::size_t choice = choices.empty() ? 0 : choices.front();
  if (!choices.empty()) choices = choices.subspan(1);
  Term term;
  const std::size_t kinds = kSigns.size() + 2;
  if (deepest == 0 || choices.empty() || choice % 4 == 0) {
    term.variable = choice % variables().size();
    return term;
  }
  const std::size_t kind = choice % kinds;
  term.operation = kind < kSigns.size() ? kSigns[kind].text : kind == kSigns.size() ? "Not" : "-";
  term.operands.push_back(term_from(choices, deepest - 1));
  if (kind < kSigns.size()) term.operands.push_back(term_from(choices, deepest - 1));
  return term;
}

Value value_of(const Term& term, const std::vector<Value*>& values) {
  if (term.operands.empty()) return *values.at(term.variable);
  const Value left = value_of(term.operands[0], values);
  if (term.operands.size() == 2) {
    return sign_of(term.operation).of(left, value_of(term.operands[1], values));
  }
  return term.operation == "Not" ? logical_not(left) : negate(left);
}

std::string shown(const Value& value) {
  std::string text(kind_name(value));
  text += ' ';
  if (value.is_null()) {
    text += "Null";
  } else {
    append_text(text, value);
  }
  while (text.ends_with(' ')) text.pop_back();
  return text;
}

Term term_of(const std::vector<std::uint8_t>& choices) {
  std::span<const std::uint8_t> left(choices);
  return term_from(left, kDeepest);
}

std::string source_of(const Term& term) {
  return source_within(term, 0);
}

std::string answer_of(const Term& term) {
  std::vector<Variable> all = variables();
  std::vector<Value*> values;
  for (Variable& variable : all) values.push_back(&variable.value);
  try {
    return shown(value_of(term, values));
  } catch (const ScriptError& error) {
    return "error " + std::to_string(error.number());
  }
}

std::string text_of(const SyntaxTree& tree, const Expression& e) {
  switch (e.kind) {
    case Expression::Kind::Name:
      return tree.names.text(e.name);
    case Expression::Kind::Constant:
      return joined_text(e.value).string();
    case Expression::Kind::Brackets:
      return text_of(tree, *e.left);
    case Expression::Kind::Unary: {
      const std::string blank = e.operation == Operator::Not ? " " : "";
      return "(" + std::string(sign_text(e.operation)) + blank + text_of(tree, *e.left) + ")";
    }
    case Expression::Kind::Binary:
      return "(" + text_of(tree, *e.left) + " " + std::string(sign_text(e.operation)) + " " +
             text_of(tree, *e.right) + ")";
    default:
      return "?";
  }
}

}  // namespace rk::vbscript::plain
