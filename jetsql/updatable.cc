#include "jetsql/updatable.h"

#include <algorithm>
#include <vector>

namespace rk::jetsql {

namespace {

using Kind = Expression::Kind;

// A row of `by` leaves at most one row of `binding`; null: one value of the text does.
struct Step {
  const Binding* by;
  const Binding* binding;
  // Only a row that is there does: an outer join may leave none of `by` and many of `binding`.
  bool where_present = false;
};
using Steps = std::vector<Step>;

bool is_value(const Expression& e) {
  return e.kind == Kind::Literal || e.kind == Kind::Question;
}

void add_step(const Expression& key, const Expression& value, Steps& steps) {
  if (key.column == nullptr || key.binding == nullptr || !key.column->unique) return;
  if (is_value(value)) steps.push_back({nullptr, key.binding});
  if (value.binding != nullptr && value.binding != key.binding) {
    steps.push_back({value.binding, key.binding});
  }
}

// The equalities that hold for every row, for they are joined by And.
void add_steps(const Expression& condition, Steps& steps) {
  if (condition.kind != Kind::Binary) return;
  const Expression& left = *condition.operands[0];
  const Expression& right = *condition.operands[1];
  if (condition.op == Operator::And) {
    add_steps(left, steps);
    add_steps(right, steps);
  } else if (condition.op == Operator::Equal) {
    add_step(left, right, steps);
    add_step(right, left, steps);
  }
}

bool holds(const Source& source, const Binding* binding) {
  if (source.left == nullptr) return source.binding == binding;
  return holds(*source.left, binding) || holds(*source.right, binding);
}

void add_steps(const Source& source, Steps& steps) {
  if (source.left == nullptr) return;
  add_steps(*source.left, steps);
  add_steps(*source.right, steps);
  if (source.kind == Source::Kind::Inner) return add_steps(*source.on, steps);
  // Rows of the side that is kept whole stay though the condition does not hold.
  const Source& optional = source.kind == Source::Kind::Left ? *source.right : *source.left;
  Steps found;
  add_steps(*source.on, found);
  for (Step step : found) {
    const bool settles_optional = holds(optional, step.binding);
    step.where_present = !settles_optional;
    if (settles_optional || holds(optional, step.by)) steps.push_back(step);
  }
}

bool settles_all(const Binding& binding, const Scope& scope, const Steps& steps) {
  std::vector<const Binding*> settled{&binding};
  const auto is_settled = [&](const Binding* each) {
    return std::find(settled.begin(), settled.end(), each) != settled.end();
  };
  for (std::size_t before = 0; before != settled.size();) {
    before = settled.size();
    for (const Step& step : steps) {
      const bool follows =
          step.by == nullptr || step.by == &binding || (!step.where_present && is_settled(step.by));
      if (follows && !is_settled(step.binding)) settled.push_back(step.binding);
    }
  }
  return settled.size() == scope.bindings.size();
}

}  // namespace

const Binding* updatable_binding(const Select& select) {
  const Scope& scope = *select.scope;
  if (scope.bindings.size() == 1) {
    return scope.bindings.front().derived ? nullptr : &scope.bindings.front();
  }
  Steps steps;
  for (const Source* source : select.from) add_steps(*source, steps);
  if (select.where != nullptr) add_steps(*select.where, steps);
  for (const Binding& binding : scope.bindings) {
    if (binding.derived || binding.row_id.empty()) continue;
    if (settles_all(binding, scope, steps)) return &binding;
  }
  return nullptr;
}

}  // namespace rk::jetsql
