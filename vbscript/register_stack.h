// RegisterStack: the registers of all frames. Places never move; free registers are Empty.
#ifndef RK_VBSCRIPT_REGISTER_STACK_H_
#define RK_VBSCRIPT_REGISTER_STACK_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include "value/value.h"

namespace rk::vbscript {

class RegisterStack {
 public:
  // All Empty; given back in the opposite order.
  Value* take(std::size_t count) {
    if (count > left_) more(count);
    Value* const first = next_;
    next_ += count;
    left_ -= count;
    return first;
  }
  void give_back(Value* first, std::size_t count) noexcept {
    if (count == 0) return;  // a frame without registers may have found no chunk at all
    // From the last to the first would hide the order in which a page declared its variables.
    for (std::size_t i = 0; i < count; ++i) first[i] = Value();
    next_ -= count;
    left_ += count;
    if (next_ == chunks_.back().values.get() && chunks_.size() > 1) fewer();
  }

 private:
  struct Chunk {
    std::unique_ptr<Value[]> values;
    std::size_t size;
    Value* next_before;
    std::size_t left_before;
  };
  // Small at first, because most pages need little and every page starts with it.
  static constexpr std::size_t kFirstChunk = 256;
  static constexpr std::size_t kChunk = 8192;

  void more(std::size_t count) {
    const std::size_t size = std::max(count, chunks_.empty() ? kFirstChunk : kChunk);
    chunks_.push_back({std::make_unique<Value[]>(size), size, next_, left_});
    next_ = chunks_.back().values.get();
    left_ = size;
  }
  void fewer() noexcept {
    next_ = chunks_.back().next_before;
    left_ = chunks_.back().left_before;
    chunks_.pop_back();
  }

  std::vector<Chunk> chunks_;
  Value* next_ = nullptr;
  std::size_t left_ = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_REGISTER_STACK_H_
