// Compiler: from a syntax tree to a unit. Throws SyntaxError for names that collide.
//
// One object compiles one unit. Names are settled here: what remains for run time are names that
// only the host or code made at run time can define.
#ifndef RK_VBSCRIPT_COMPILER_H_
#define RK_VBSCRIPT_COMPILER_H_

#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "value/script_error.h"
#include "vbscript/compiler_scope.h"
#include "vbscript/environment.h"
#include "vbscript/meaning.h"
#include "vbscript/name_usage.h"
#include "vbscript/source.h"
#include "vbscript/syntax_tree.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

class Compiler {
 public:
  // Without an environment: a whole page or script. The tree and the source must outlive this.
  Compiler(const Source& source, const SyntaxTree& tree, Environment* environment = nullptr);

  std::shared_ptr<Unit> unit();
  // A tree of one expression: the first code answers its value.
  std::shared_ptr<Unit> expression_unit();

 private:
  // A register taken for a statement's length.
  class Hidden;

  // --- the unit (compiler.cc)
  void declare_script();
  // Raises 1041 where the name is taken; `again`: it may be, and means this from now on.
  void declare(NameId name, Binding binding, Position where, bool again = false);
  void declare_variable(const Declarator& d);
  void declare_procedures();
  void declare_classes();
  void declare_class(const Class& c);
  void add_member(ClassCode& code, const Procedure& p, int code_index);
  void check_properties(const ClassCode& code, const Class& c) const;
  void note_procedures();
  void compile_script();
  void place_in_environment(const Declarator& d);
  void tell_environment(const Constant& c);
  void compile_procedure(const Procedure& p, int code_index, const ClassCode* owner);
  void begin_scope(Scope& scope, const Procedure* p);
  void begin_parameters(Scope& scope, const Procedure& p);
  void declare_locals(Scope& scope, const NameUsage& usage);
  void dimension(const Declarator& d, Operand place);
  void end_scope(Position end);
  void list_names(const Scope& scope);
  std::uint32_t add_global(NameId name);
  int add_code(const Procedure* p, int owner);
  Operand constant(Value value);
  Operand name_constant(NameId name);
  std::uint32_t name_index(NameId name) { return index_of(name_constant(name)); }

  // --- names (compile_names.cc)
  Meaning meaning(NameId name);
  Meaning find_meaning(NameId name);
  std::optional<Meaning> member_meaning(NameId name) const;
  std::optional<Meaning> script_meaning(NameId name);
  std::optional<Meaning> built_in_meaning(NameId name);
  Meaning undeclared_in_script(NameId name);
  Meaning undeclared_in_procedure(NameId name);
  Meaning outer_meaning(NameId name);
  std::optional<Meaning> environment_meaning(NameId name);
  Meaning outer_variable(Value* variable);
  Meaning shared_variable(NameId name, bool looked_up);
  void birth(NameId name);

  // --- statements (compile_statements.cc)
  void block(const Block& block);
  void statement(const Statement& s);
  void statement_of_kind(const Statement& s);
  void if_statement(const Statement& s);
  void select_statement(const Statement& s);
  void case_tests(const CaseBranch& branch, Operand selector, std::vector<std::size_t>& to_body);
  void for_statement(const Statement& s);
  void for_each(const Statement& s);
  void do_statement(const Statement& s);
  void with_statement(const Statement& s);
  void exit_statement(const Statement& s);
  void redim(const Statement& s);
  void erase(const Statement& s);
  void call_statement(const Statement& s);
  void call_name(const Expression* name, const std::vector<const Expression*>& all);
  void raise_at_run_time(const KnownError& error, NameId name);
  void end_loop();
  // A jump that is taken where the condition is not true (or is true), to be patched.
  std::size_t jump_unless(const Expression* condition);
  std::size_t jump_if(const Expression* condition);

  // --- assignments (compile_assignments.cc)
  void assign(const Statement& s);
  void assign_name(const Statement& s);
  bool append(const Statement& s, Operand target);
  bool touches_nothing(const Expression* e);
  void assign_variable(const Statement& s, Operand target);
  void assign_element(const Statement& s);
  void assign_member(const Statement& s, const Expression* member,
                     const std::vector<const Expression*>& all);
  void assign_own(const Statement& s, std::uint32_t index,
                  const std::vector<const Expression*>& all);
  Operand element_container(const Expression* e);
  Operand loop_variable(const Expression* name);

  // An element of a variable, or an element of an element: rows of indexes, the outermost first.
  struct ElementPath {
    Operand variable;
    std::vector<std::vector<Operand>> rows;
  };

  // --- expressions (compile_expressions.cc)
  // Where the value lies; what is computed goes to `wanted` where given.
  Operand value(const Expression* e, Operand wanted = kNoOperand);
  Operand name_value(const Expression* e, Operand wanted);
  Operand unary(const Expression* e, Operand wanted);
  Operand binary(const Expression* e, Operand wanted);
  Operand joined(const Expression* e, Operand wanted);
  Operand one_binary(const Expression* e, Operand left, Operand wanted);
  Operand call(const Expression* e, Operand wanted);
  Operand call_meaning(const Meaning& m, const Expression* name,
                       const std::vector<const Expression*>& all, Operand wanted, bool brackets);
  Operand index(Operand base, const std::vector<const Expression*>& all, Operand wanted);
  Operand member(const Expression* e, const std::vector<const Expression*>& all, Operand wanted,
                 Op op = Op::MemberGet);
  Operand member_object(const Expression* e);
  Operand variable_place(const Expression* e);
  std::vector<Operand> arguments(const std::vector<const Expression*>& all, bool by_reference);
  Operand argument(const Expression* e, bool by_reference);
  // Nothing where `e` is no element of a variable. `kept`: the indexes may not change meanwhile.
  std::optional<ElementPath> element_path(const Expression* e, bool kept);
  Operand path_value(const ElementPath& path, Operand wanted);
  std::uint32_t path_list(const ElementPath& path);
  void write_back(std::size_t first);
  Operand result_place(Operand wanted, bool number = false);

  // --- instructions
  std::size_t emit(Op op, std::uint32_t a = 0, std::uint32_t b = 0, std::uint32_t c = 0,
                   std::uint16_t n = 0);
  std::uint32_t list(const std::vector<Operand>& operands);
  std::uint32_t member_list(NameId name, const std::vector<Operand>& operands);
  void mark(Position where, bool resumable = true);
  std::uint32_t here() const { return static_cast<std::uint32_t>(code().instructions.size()); }
  void patch(std::size_t jump, std::uint32_t target) { code().instructions[jump].c = target; }
  Operand temporary();
  // For what needs no emptying: numbers, truth values, Null.
  Operand number_temporary();
  bool is_temporary(Operand o) const;
  void clear_temporaries();
  void clear_temporaries_but(Operand& kept);
  std::uint32_t take_register();
  Code& code() const { return *scope_->code; }
  [[noreturn]] void fail(const KnownError& error, Position where) const;
  SourcePlace place(Position where);

  struct PassedElement {
    ElementPath path;
    Operand before;
    Operand passed;
  };

  const Source& source_;
  const SyntaxTree& tree_;
  Environment* environment_;
  std::shared_ptr<Unit> unit_ = std::make_shared<Unit>();
  std::unique_ptr<NameUsage> script_usage_;
  std::unordered_map<NameId, Binding> bindings_;
  std::unordered_map<NameId, Position> declared_at_;  // what the script declares
  std::unordered_map<NameId, std::uint32_t> global_slots_;
  std::unordered_map<NameId, Operand> name_constants_;
  std::unordered_map<NameId, bool> used_in_procedures_;  // undeclared there, and perhaps assigned
  std::vector<PassedElement> passed_elements_;
  std::uint32_t next_temporary_ = 0;
  Scope* scope_ = nullptr;
  // The line of the place looked up last; statements come in order.
  Position last_position_;
  int last_line_ = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_COMPILER_H_
