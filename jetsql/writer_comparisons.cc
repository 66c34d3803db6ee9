// Comparisons, which suit each side to the type of the other.
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

bool is_plain_column(const Expression& e) {
  return e.kind == Expression::Kind::Column && e.stands_for == nullptr;
}

[[noreturn]] void mismatch(const Expression& e) {
  throw SqlError(kTypeMismatch, "Data type mismatch in criteria expression.", e.begin);
}

constexpr std::string_view kNoCase = " COLLATE NOCASE";

}  // namespace

// Text meets text, and the column whose rule the engine would take is not declared so already.
bool Writer::needs_no_case(const Expression& a, const Expression& b) {
  const auto textual = [](Type type) { return type == Type::Text || type == Type::Unknown; };
  if (!textual(a.type) || !textual(b.type)) return false;
  if (is_plain_column(a)) return !a.column->no_case;
  if (is_plain_column(b)) return !b.column->no_case;
  return true;
}

// In and Between go by the rule of what they test alone.
bool Writer::needs_no_case(const Expression& tested) {
  if (tested.type != Type::Text && tested.type != Type::Unknown) return false;
  return !is_plain_column(tested) || !tested.column->no_case;
}

Writer::Conversion Writer::literal_conversion(const Expression& e, const Expression& other) const {
  if (e.kind == Expression::Kind::Question) {
    if (other.type == Type::Boolean) return Conversion::Flag;
    return other.type == Type::Date ? Conversion::DateText : Conversion::None;
  }
  const bool column = is_plain_column(other);
  if (is_number(e.type)) {
    if (other.type == Type::Boolean && column) return Conversion::Flag;
    if (other.type == Type::Date) return Conversion::DateText;
    if (other.type == Type::Text) {
      if (column) mismatch(e);
      return Conversion::StoredText;
    }
  }
  if (e.type == Type::Text) {
    const bool number = is_number(other.type) || other.type == Type::Boolean;
    if (column && (number || other.type == Type::Date)) mismatch(e);
    if (number) return Conversion::StoredNumber;
    if (other.type == Type::Date) return Conversion::DateText;
  }
  if (e.type == Type::Date && other.type == Type::Text && column) mismatch(e);
  return Conversion::None;
}

void Writer::literal_side(const Expression& e, bool negate, const Expression& other,
                          std::string& out) {
  literal(e, literal_conversion(e, other), negate, out);
}

void Writer::side(const Expression& e, const Expression& other, std::string& out) {
  if (e.kind == Expression::Kind::Literal || e.kind == Expression::Kind::Question) {
    return literal_side(e, false, other, out);
  }
  const bool negated_number = e.kind == Expression::Kind::Unary && e.op == Operator::Negate &&
                              e.operands[0]->kind == Expression::Kind::Literal &&
                              is_number(e.operands[0]->type);
  if (negated_number) return literal_side(*e.operands[0], true, other, out);
  if (e.type == Type::Boolean) {
    // A column is compared as it is stored; beside anything but a Boolean a comparison is -1 or 0.
    if (other.type == Type::Boolean || is_plain_column(e)) return natural(e, out);
    return number(e, out);
  }
  if (other.type == Type::Date && e.type != Type::Date && e.kind != Expression::Kind::Constant) {
    out += "jet_date(";
    natural(e, out);
    out += ')';
    return;
  }
  // Amounts that were worked out have four decimals, as those that are stored.
  const bool worked_out = e.type == Type::Currency && !is_plain_column(e);
  if (worked_out) out += "round(";
  natural(e, out);
  if (worked_out) out += ",4)";
}

void Writer::compare(const Expression& e, std::string_view symbol, std::string& out) {
  const Expression& left = *e.operands[0];
  const Expression& right = *e.operands[1];
  side(left, right, out);
  out += symbol;
  side(right, left, out);
  if (needs_no_case(left, right)) out += kNoCase;
}

void Writer::like(const Expression& e, std::string& out) {
  if (e.negated) out += "NOT ";
  out += "jet_like(";
  argument(*e.operands[0], out);
  out += ',';
  argument(*e.operands[1], out);
  out += ')';
}

void Writer::between(const Expression& e, std::string& out) {
  const Expression& middle = *e.operands[0];
  side(middle, *e.operands[1], out);
  if (needs_no_case(middle)) out += kNoCase;
  // The two ends come in either order.
  std::string first;
  std::string second;
  side(*e.operands[1], middle, first);
  side(*e.operands[2], middle, second);
  const bool textual = middle.type == Type::Text || middle.type == Type::Unknown;
  if (textual) first += kNoCase;
  out += e.negated ? " NOT BETWEEN min(" : " BETWEEN min(";
  out.append(first).append(",").append(second).append(") AND max(");
  out.append(first).append(",").append(second).append(")");
}

void Writer::in(const Expression& e, std::string& out) {
  const Expression& left = *e.operands[0];
  if (e.select != nullptr) {
    natural(left, out);
    if (needs_no_case(left)) out += kNoCase;
    out += e.negated ? " NOT IN(" : " IN(";
    out += whole(*e.select, e.select->top >= 0) + ")";
    return;
  }
  side(left, *e.operands[1], out);
  if (needs_no_case(left)) out += kNoCase;
  out += e.negated ? " NOT IN(" : " IN(";
  for (std::size_t i = 1; i < e.operands.size(); ++i) {
    if (i > 1) out += ',';
    side(*e.operands[i], left, out);
  }
  out += ')';
}

}  // namespace rk::jetsql
