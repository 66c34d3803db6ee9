#include "vbscript/name_usage.h"

#include "vbscript/built_ins.h"

namespace rk::vbscript {

NameUsage::NameUsage(const SyntaxTree& tree, const Block& body) : tree_(tree) {
  block(body);
}

const Usage* NameUsage::find(NameId name) const {
  const auto at = used_.find(name);
  return at == used_.end() ? nullptr : &at->second;
}

void NameUsage::block(const Block& block) {
  for (const Statement* s : block) statement(*s);
}

void NameUsage::statement(const Statement& s) {
  variables_.insert(variables_.end(), s.declarators.begin(),
                    s.kind == Statement::Kind::Dim ? s.declarators.end() : s.declarators.begin());
  constants_.insert(constants_.end(), s.constants.begin(), s.constants.end());
  if (s.kind == Statement::Kind::ReDim) {
    for (const Declarator& d : s.declarators) {
      arguments(d.redim_bounds, false);
      if (d.target->kind != Expression::Kind::Name) {
        expression(d.target);
        continue;
      }
      redimensioned_.push_back(d);
      redimensioned_.back().name = d.target->name;
      used_[d.target->name].assigned = true;
    }
  }
  const bool assigns = s.kind == Statement::Kind::Assign || s.kind == Statement::Kind::SetAssign ||
                       s.kind == Statement::Kind::For || s.kind == Statement::Kind::ForEach;
  if (assigns) {
    target(s.target);
  } else {
    expression(s.target);
  }
  expression(s.value);
  expression(s.limit);
  expression(s.step);
  arguments(s.arguments, !is_built_in(s.target));
  for (const CaseBranch& branch : s.branches) {
    arguments(branch.tests, false);
    block(branch.body);
  }
  block(s.body);
}

void NameUsage::target(const Expression* e) {
  if (e->kind == Expression::Kind::Name) {
    used_[e->name].assigned = true;
  } else {
    expression(e);
  }
}

// Left-deep chains are walked in a loop.
void NameUsage::expression(const Expression* e) {
  while (e != nullptr) {
    if (e->kind == Expression::Kind::Name) used_.try_emplace(e->name);
    arguments(e->arguments, !is_built_in(e->left));
    expression(e->right);
    e = e->left;
  }
}

void NameUsage::arguments(const std::vector<const Expression*>& all, bool passes) {
  for (const Expression* e : all) {
    if (passes && e->kind == Expression::Kind::Name) {
      used_[e->name].passed = true;
    } else {
      expression(e);
    }
  }
}

bool NameUsage::is_built_in(const Expression* e) const {
  return e != nullptr && e->kind == Expression::Kind::Name &&
         find_built_in(tree_.names.folded(e->name)) != kNoBuiltIn;
}

}  // namespace rk::vbscript
