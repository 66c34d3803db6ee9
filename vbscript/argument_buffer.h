// The arguments of one call, as addresses. Constants are copied, so that what is called may assign.
#ifndef RK_VBSCRIPT_ARGUMENT_BUFFER_H_
#define RK_VBSCRIPT_ARGUMENT_BUFFER_H_

#include <array>
#include <memory>
#include <vector>

#include "value/object.h"
#include "value/value.h"

namespace rk::vbscript {

class ArgumentBuffer {
 public:
  void add(Value& variable) { push(&variable); }
  void add_copy(const Value& value) {
    if (copied_ < inline_copies_.size()) {
      inline_copies_[copied_] = value;
      push(&inline_copies_[copied_++]);
    } else {
      more_copies_.push_back(std::make_unique<Value>(value));
      push(more_copies_.back().get());
    }
  }
  Arguments arguments() const {
    return more_.empty() ? Arguments(inline_.data(), count_) : Arguments(more_);
  }

 private:
  static constexpr std::size_t kInline = 8;

  void push(Value* value) {
    if (count_ < kInline) {
      inline_[count_++] = value;
      return;
    }
    if (more_.empty()) more_.assign(inline_.begin(), inline_.end());
    more_.push_back(value);
    ++count_;
  }

  std::array<Value*, kInline> inline_;
  std::array<Value, 3> inline_copies_;
  std::size_t count_ = 0;
  std::size_t copied_ = 0;
  std::vector<Value*> more_;
  std::vector<std::unique_ptr<Value>> more_copies_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_ARGUMENT_BUFFER_H_
