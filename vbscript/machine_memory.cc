// What a page holds: counted from its variables whenever it has made much, so that a page that
// gathers without end ends itself before it ends the process.

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/page.h"
#include "value/array.h"
#include "vbscript/machine.h"

namespace rk::vbscript {

namespace {

// Shorter texts are counted at each of their places; whether two are the same costs more to know.
constexpr std::size_t kShortText = 64;

// Addresses met so far.
//
// OPTIMIZATION: an open table, at most half full; a page's array may hold a million texts, and the
// page waits while they are counted.
class Addresses {
 public:
  // Whether it was not there yet.
  bool insert(const void* address) {
    if (2 * (count_ + 1) > slots_.size()) grow();
    const void*& slot = slot_of(address);
    if (slot == address) return false;
    slot = address;
    ++count_;
    return true;
  }

 private:
  static constexpr std::size_t kFirstSlots = 1024;

  const void*& slot_of(const void* address) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
    constexpr unsigned kHighHalf = 32;
    const std::size_t mask = slots_.size() - 1;
    auto at =
        static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(address) * kSpread >> kHighHalf) &
        mask;
    while (slots_[at] != nullptr && slots_[at] != address) at = (at + 1) & mask;
    return slots_[at];
  }
  void grow() {
    const std::vector<const void*> before = std::move(slots_);
    slots_.assign(std::max(kFirstSlots, 4 * before.size()), nullptr);
    for (const void* const address : before) {
      if (address != nullptr) slot_of(address) = address;
    }
  }

  std::vector<const void*> slots_;
  std::size_t count_ = 0;
};

// Adds up values, each array and long text once however many variables share it.
class Count {
 public:
  void add(const Value& value) {
    wait(value);
    while (!waiting_.empty()) {
      const Value* const next = waiting_.back();
      waiting_.pop_back();
      one(*next);
    }
  }
  void add_bytes(std::size_t bytes) { bytes_ += bytes; }
  std::size_t bytes() const { return bytes_; }

 private:
  void one(const Value& value) {
    if (value.is_array() && seen_.insert(&value.as_array())) {
      const Array& array = value.as_array();
      bytes_ += array.elements().size_bytes() + array.bytes().size();
      for (const Value& element : array.elements()) wait(element);
    } else if (value.is_object() && value.as_object() != nullptr &&
               seen_.insert(value.as_object())) {
      HeldMemory held;
      value.as_object()->add_held(held);
      bytes_ += held.bytes;
      for (const Value* const inner : held.values) wait(*inner);
    }
  }

  void wait(const Value& value) {
    if (value.is_text()) {
      add_text(value.as_view());
    } else if (value.is_array() || value.is_object()) {
      waiting_.push_back(&value);
    }
  }
  void add_text(std::string_view text) {
    if (text.size() <= kShortText || seen_.insert(text.data())) bytes_ += text.size();
  }

  std::size_t bytes_ = 0;
  Addresses seen_;
  std::vector<const Value*> waiting_;
};

}  // namespace

std::size_t Machine::size_of(const Value& value) {
  if (value.is_text()) return value.as_view().size();
  return value.as_array().elements().size_bytes() + value.as_array().bytes().size();
}

void Machine::count_memory() {
  const std::size_t held = memory_held();
  made_bytes_ = 0;
  // The more there is to look at, the later the next look.
  bytes_before_count_ = std::max(kBytesBetweenCounts, held / 2);
  if (held > kMaxPageMemoryBytes) {
    throw platform::PageEnd{platform::PageEnd::Reason::OutOfMemory};
  }
  // A few turns that make so much may take as long as very many others.
  host_.check_time();
}

// Values in flight (arguments, results) are not seen.
std::size_t Machine::memory_held() const {
  Count count;
  for (const Value& global : globals_) count.add(global);
  for (const auto& [name, variable] : made_variables_) count.add(*variable);
  for (const Frame* frame = frame_; frame != nullptr; frame = frame->caller) {
    for (std::uint32_t i = 0; i < frame->code->registers; ++i) count.add(frame->bases[0][i]);
    if (!frame->made) continue;
    for (const auto& [name, variable] : *frame->made) count.add(*variable);
  }
  for (ScriptObject* object = objects; object != nullptr; object = object->older_) {
    count.add_bytes(sizeof(ScriptObject) + object->fields().size() * sizeof(Value));
    for (const Value& field : object->fields()) count.add(field);
  }
  return count.bytes();
}

}  // namespace rk::vbscript
