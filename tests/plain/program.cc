#include "tests/plain/program.h"

#include <array>
#include <compare>
#include <span>

#include "value/comparison.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::vbscript::plain {

namespace {

using Kind = Step::Kind;
using Choices = std::span<const std::uint8_t>;

constexpr std::size_t kKinds = 15;
constexpr int kDeepestBlock = 3;
constexpr int kDeepestTerm = 2;
constexpr std::size_t kLongestBlock = 5;
// One row and one column lie outside of the bounds.
constexpr std::size_t kRows = 2;
constexpr std::size_t kChosenRows = 3;
constexpr int kForTurns = 3;
constexpr int kLoopTurns = 2;

// --- out of choices ---------------------------------------------------------------------------

class Growth {
 public:
  explicit Growth(Choices choices) : left_(choices) {}

  Program program() {
    Program program;
    program.traps = next(4) != 0;
    program.procedure = block(kDeepestBlock - 1, {.in_procedure = true});
    program.script = block(kDeepestBlock, {});
    while (!left_.empty()) {
      for (Step& step : block(kDeepestBlock, {})) program.script.push_back(std::move(step));
    }
    return program;
  }

 private:
  struct Around {
    bool in_procedure = false;
    bool in_loop = false;
    bool in_for = false;
  };

  std::size_t next(std::size_t among) {
    if (left_.empty()) return 0;
    const std::size_t choice = left_.front() % among;
    left_ = left_.subspan(1);
    return choice;
  }

  std::vector<Step> block(int depth, Around around) {
    std::vector<Step> steps;
    const std::size_t count = 1 + next(kLongestBlock);
    for (std::size_t i = 0; i < count && !left_.empty(); ++i) steps.push_back(step(depth, around));
    return steps;
  }

  Step step(int depth, Around around) {
    Step step;
    step.kind = static_cast<Kind>(next(kKinds));
    step.variable = next(variables().size());
    step.other = next(variables().size());
    step.row = next(kChosenRows);
    step.column = next(kChosenRows);
    step.counter = counters_++;
    const bool blocks = step.kind == Kind::If || step.kind == Kind::For ||
                        step.kind == Kind::Loop || step.kind == Kind::Select;
    if (blocks && depth == 0) step.kind = Kind::Print;
    if (step.kind == Kind::Exit && !around.in_loop) step.kind = Kind::PrintError;
    if (step.kind == Kind::Call && around.in_procedure) step.kind = Kind::Assign;
    step.in_for = around.in_for;
    step.term = term_from(left_, kDeepestTerm);
    if (!blocks || depth == 0) return step;
    if (step.kind == Kind::For || step.kind == Kind::Loop) {
      around.in_loop = true;
      around.in_for = step.kind == Kind::For;
    }
    step.body = block(depth - 1, around);
    if (step.kind == Kind::If || step.kind == Kind::Select) {
      step.otherwise = block(depth - 1, around);
    }
    return step;
  }

  Choices left_;
  std::size_t counters_ = 0;
};

// What every program ends with: the text and kind of each variable.
const std::vector<Step>& last_prints() {
  static const std::vector<Step> kAll = [] {
    std::vector<Step> steps(variables().size());
    for (std::size_t i = 0; i < steps.size(); ++i) steps[i].variable = i;
    return steps;
  }();
  return kAll;
}

// --- as source --------------------------------------------------------------------------------

std::string name(std::size_t variable) {
  return "v" + std::to_string(variable);
}

std::string place(const char* array, const Step& step) {
  return std::string(array) + "(" + std::to_string(step.row) + ")(" + std::to_string(step.column) +
         ")";
}

std::string source_of(const std::vector<Step>& steps);

std::string source_of(const Step& step) {
  const std::string v = name(step.variable);
  const std::string term = plain::source_of(step.term);
  const std::string counter = "c" + std::to_string(step.counter);
  switch (step.kind) {
    case Kind::Assign:
      return v + " = " + term;
    case Kind::Store:
      return place("rows", step) + " = " + term;
    case Kind::Read:
      return v + " = " + place("rows", step);
    case Kind::Keep:
      return "kept = rows";
    case Kind::ReadKept:
      return v + " = " + place("kept", step);
    case Kind::Print:
      return "Print TypeName(" + v + "), " + v;
    case Kind::PrintError:
      return "Print Err.Number";
    case Kind::If:
      return "If " + term + " Then\n" + source_of(step.body) + "Else\n" +
             source_of(step.otherwise) + "End If";
    case Kind::For:
      return "For " + counter + " = 1 To 3\n" + source_of(step.body) + "Next\nPrint " + counter;
    case Kind::Loop:
      return counter + " = 0\nDo\n" + counter + " = " + counter + " + 1\n" + source_of(step.body) +
             "Loop Until " + counter + " >= 2";
    case Kind::Select:
      return "Select Case " + v + "\nCase " + name(step.other) + "\n" + source_of(step.body) +
             "Case Else\n" + source_of(step.otherwise) + "End Select";
    case Kind::Exit:
      return step.in_for ? "Exit For" : "Exit Do";
    case Kind::Call:
      return "Change " + v + ", " + term;
    case Kind::Trap:
      return "On Error Resume Next";
    case Kind::Untrap:
      return "On Error GoTo 0";
  }
  return "";
}

std::string source_of(const std::vector<Step>& steps) {
  std::string text;
  for (const Step& step : steps) text += source_of(step) + "\n";
  return text;
}

// --- walked -----------------------------------------------------------------------------------

using RowOfRows = std::array<std::array<Value, kRows>, kRows>;

class Walk {
 public:
  explicit Walk(const Program& program) : program_(program) {
    for (const Variable& variable : variables()) values_.push_back(variable.value);
    for (Value& value : values_) script_.names.push_back(&value);
    for (auto& row : rows_) row.fill(Value::integer(0));
    kept_ = rows_;
  }

  std::vector<std::string> run() {
    try {
      script_.trap = program_.traps;
      block(program_.script, script_);
      block(last_prints(), script_);
    } catch (const ScriptError& error) {
      lines_.push_back("error " + std::to_string(error.number()));
    }
    return std::move(lines_);
  }

 private:
  struct Scope {
    std::vector<Value*> names;
    bool trap = false;
  };
  enum class Flow : std::uint8_t { Next, Leave };

  // An untrapped error leaves the scope; a trapped one only its own statement.
  Flow block(const std::vector<Step>& steps, Scope& scope) {
    for (const Step& step : steps) {
      Flow flow = Flow::Next;
      try {
        flow = one(step, scope);
      } catch (const ScriptError& error) {
        trap(error, scope);
      }
      if (flow == Flow::Leave) return flow;
    }
    return Flow::Next;
  }

  void trap(const ScriptError& error, const Scope& scope) {
    if (!scope.trap) throw ScriptError(error);
    error_ = error.number();
  }

  Flow one(const Step& step, Scope& scope) {
    Value& v = *scope.names[step.variable];
    switch (step.kind) {
      case Kind::Assign:
        v = value_of(step.term, scope.names);
        break;
      case Kind::Store: {
        const Value value = value_of(step.term, scope.names);
        element(rows_, step) = value;
        break;
      }
      case Kind::Read:
        v = element(rows_, step);
        break;
      case Kind::Keep:
        kept_ = rows_;
        break;
      case Kind::ReadKept:
        v = element(kept_, step);
        break;
      case Kind::Print:
        lines_.push_back(shown(v));
        break;
      case Kind::PrintError:
        lines_.push_back(std::to_string(error_));
        break;
      case Kind::If:
        return block(chosen(step, scope) ? step.body : step.otherwise, scope);
      case Kind::For:
        return for_loop(step, scope);
      case Kind::Loop:
        return do_loop(step, scope);
      case Kind::Select:
        return block(equal(v, *scope.names[step.other]) ? step.body : step.otherwise, scope);
      case Kind::Exit:
        return Flow::Leave;
      case Kind::Call:
        call(step, scope);
        break;
      case Kind::Trap:
      case Kind::Untrap:
        scope.trap = step.kind == Kind::Trap;
        error_ = 0;
        break;
    }
    return Flow::Next;
  }

  static Value& element(RowOfRows& rows, const Step& step) {
    if (step.row >= kRows || step.column >= kRows) raise(errors::kSubscriptOutOfRange);
    return rows[step.row][step.column];
  }

  // Behind a condition that fails goes on what follows in the text: the Then block.
  bool chosen(const Step& step, const Scope& scope) {
    try {
      const Value truth = value_of(step.term, scope.names);
      return !truth.is_null() && to_boolean(truth);
    } catch (const ScriptError& error) {
      trap(error, scope);
      return true;
    }
  }

  static bool equal(const Value& a, const Value& b) {
    const auto order = compare_loosely(a, b);
    return order && std::is_eq(*order);
  }

  Flow for_loop(const Step& step, Scope& scope) {
    int counter = 1;
    while (counter <= kForTurns && block(step.body, scope) == Flow::Next) ++counter;
    lines_.push_back(std::to_string(counter));
    return Flow::Next;
  }

  Flow do_loop(const Step& step, Scope& scope) {
    for (int counter = 1; counter <= kLoopTurns; ++counter) {
      if (block(step.body, scope) == Flow::Leave) break;
    }
    return Flow::Next;
  }

  void call(const Step& step, Scope& scope) {
    Value by_value = value_of(step.term, scope.names);
    Scope inner;
    for (Value& value : values_) inner.names.push_back(&value);
    inner.names[0] = scope.names[step.variable];
    inner.names[1] = &by_value;
    block(program_.procedure, inner);
  }

  const Program& program_;
  std::vector<Value> values_;
  RowOfRows rows_;
  RowOfRows kept_;
  Scope script_;
  std::int32_t error_ = 0;
  std::vector<std::string> lines_;
};

}  // namespace

Program program_of(const std::vector<std::uint8_t>& choices) {
  return Growth(choices).program();
}

std::string source_of(const Program& program) {
  std::string text = "rows = Array(Array(0, 0), Array(0, 0))\nkept = rows\n";
  if (program.traps) text += "On Error Resume Next\n";
  for (std::size_t i = 0; i < variables().size(); ++i) {
    text += name(i) + " = " + variables()[i].literal + "\n";
  }
  return text + "Sub Change(v0, ByVal v1)\n" + source_of(program.procedure) + "End Sub\n" +
         source_of(program.script) + source_of(last_prints());
}

std::vector<std::string> lines_of(const Program& program) {
  return Walk(program).run();
}

}  // namespace rk::vbscript::plain
