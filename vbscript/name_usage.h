// How the statements of one body use names: which they declare, and of the others which they read,
// assign, or pass to something that might assign them.
#ifndef RK_VBSCRIPT_NAME_USAGE_H_
#define RK_VBSCRIPT_NAME_USAGE_H_

#include <map>
#include <vector>

#include "vbscript/syntax_tree.h"

namespace rk::vbscript {

struct Usage {
  bool assigned = false;
  bool passed = false;
};

class NameUsage {
 public:
  NameUsage(const SyntaxTree& tree, const Block& body);

  // In the order of their numbers, so that compiling the same text gives the same unit.
  const std::map<NameId, Usage>& used() const { return used_; }
  const std::vector<Declarator>& variables() const { return variables_; }
  // Declared by ReDim alone.
  const std::vector<Declarator>& redimensioned() const { return redimensioned_; }
  const std::vector<Constant>& constants() const { return constants_; }
  const Usage* find(NameId name) const;

 private:
  void block(const Block& block);
  void statement(const Statement& s);
  void target(const Expression* e);
  void expression(const Expression* e);
  void arguments(const std::vector<const Expression*>& all, bool passes);
  bool is_built_in(const Expression* e) const;

  const SyntaxTree& tree_;
  std::map<NameId, Usage> used_;
  std::vector<Declarator> variables_;
  std::vector<Declarator> redimensioned_;
  std::vector<Constant> constants_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_NAME_USAGE_H_
