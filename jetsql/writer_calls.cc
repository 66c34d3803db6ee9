// Calls of functions and aggregates.
#include "jetsql/built_ins.h"
#include "jetsql/writer.h"

namespace rk::jetsql {

namespace {

using Form = BuiltIn::Form;

Parameter clock(Parameter::Source source) {
  Parameter parameter;
  parameter.source = source;
  return parameter;
}

}  // namespace

void Writer::call(const Expression& e, std::string& out) {
  switch (e.built_in->form) {
    case Form::Plain:
      return plain_call(e, out);
    case Form::Aggregate:
    case Form::Count:
      return aggregate(e, out);
    case Form::First:
    case Form::Last:
      return first_or_last(e, out);
    case Form::IIf:
      return iif(e, out);
    case Form::Switch:
      return switch_case(e, out);
    case Form::Choose:
      return choose(e, out);
    case Form::Nz:
      return nz(e, out);
    case Form::IsNull:
      out += '(';
      natural(*e.operands[0], out);
      out += " IS NULL)";
      return;
    case Form::Rnd:
      return rnd(e, out);
    case Form::Now:
      return bound(clock(Parameter::Source::Now), out);
    case Form::Today:
      return bound(clock(Parameter::Source::Today), out);
    case Form::Clock:
      return bound(clock(Parameter::Source::Clock), out);
  }
}

void Writer::plain_call(const Expression& e, std::string& out) {
  // Int and Fix of a date are the date without its time.
  const bool dated = e.built_in->type == Type::Unknown && e.type == Type::Date;
  if (dated) out += "jet_date(";
  out += e.built_in->target;
  out += '(';
  for (std::size_t i = 0; i < e.operands.size(); ++i) {
    if (i > 0) out += ',';
    argument(*e.operands[i], out);
  }
  out += ')';
  if (dated) out += ')';
}

void Writer::aggregate(const Expression& e, std::string& out) {
  out += e.built_in->target;
  out += '(';
  if (e.star) {
    out += '*';
  } else {
    const Expression& operand = *e.operands[0];
    const bool counts = e.built_in->form == Form::Count;
    const bool extreme = e.built_in->target == "min" || e.built_in->target == "max";
    if (counts || extreme) {
      argument(operand, out);
      const bool textual = operand.type == Type::Text || operand.type == Type::Unknown;
      if (extreme && textual) out += " COLLATE NOCASE";
    } else {
      number(operand, out);
    }
  }
  out += ')';
}

// The first or the last row is that of the order stored, of the first table in a join.
void Writer::first_or_last(const Expression& e, std::string& out) {
  out += e.built_in->target;
  out += '(';
  argument(*e.operands[0], out);
  out += ',';
  const Binding* first =
      scope_ != nullptr && !scope_->bindings.empty() ? &scope_->bindings.front() : nullptr;
  if (first == nullptr || first->row_id.empty()) {
    out += '0';
  } else {
    name(first->name, out);
    out += '.' + first->row_id;
  }
  out += ')';
}

void Writer::iif(const Expression& e, std::string& out) {
  out += "CASE WHEN ";
  truth(*e.operands[0], out);
  out += " THEN ";
  of_type(*e.operands[1], e.type, out);
  out += " ELSE ";
  of_type(*e.operands[2], e.type, out);
  out += " END";
}

void Writer::switch_case(const Expression& e, std::string& out) {
  out += "CASE";
  for (std::size_t i = 0; i + 1 < e.operands.size(); i += 2) {
    out += " WHEN ";
    truth(*e.operands[i], out);
    out += " THEN ";
    of_type(*e.operands[i + 1], e.type, out);
  }
  out += " END";
}

void Writer::choose(const Expression& e, std::string& out) {
  out += "CASE jet_fix(";
  number(*e.operands[0], out);
  out += ')';
  for (std::size_t i = 1; i < e.operands.size(); ++i) {
    out.append(" WHEN ").append(std::to_string(i)).append(" THEN ");
    of_type(*e.operands[i], e.type, out);
  }
  out += " END";
}

void Writer::nz(const Expression& e, std::string& out) {
  out += "ifnull(";
  of_type(*e.operands[0], e.type, out);
  out += ',';
  if (e.operands.size() > 1) {
    of_type(*e.operands[1], e.type, out);
  } else {
    out += e.type == Type::Text ? "''" : is_number(e.type) || e.type == Type::Boolean ? "0" : "''";
  }
  out += ')';
}

void Writer::rnd(const Expression& e, std::string& out) {
  out += "jet_rnd(";
  if (e.operands.empty()) {
    out += '1';
  } else {
    number(*e.operands[0], out);
  }
  out += ",random())";
}

}  // namespace rk::jetsql
