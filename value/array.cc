#include "value/array.h"

#include <algorithm>
#include <iterator>

#include "value/script_error.h"

namespace rk {

namespace {

std::size_t element_count(std::span<const std::int32_t> upper_bounds) {
  if (upper_bounds.empty()) return 0;
  if (upper_bounds.size() > kMaxArrayDimensions) raise(errors::kSubscriptOutOfRange);
  std::size_t count = 1;
  for (const std::int32_t bound : upper_bounds) {
    if (bound < -1) raise(errors::kSubscriptOutOfRange);
    const auto extent = static_cast<std::size_t>(std::int64_t{bound} + 1);
    if (extent != 0 && count > kMaxArrayElements / extent) raise(errors::kOutOfMemory);
    count *= extent;
  }
  return count;
}

}  // namespace

Ref<Array> Array::make(std::span<const std::int32_t> upper_bounds, bool fixed) {
  auto array = make_ref<Array>();
  array->elements_.resize(element_count(upper_bounds));
  array->upper_bounds_.assign(upper_bounds.begin(), upper_bounds.end());
  array->fixed_ = fixed;
  return array;
}

Ref<Array> Array::of(std::vector<Value> elements) {
  auto array = make_ref<Array>();
  array->upper_bounds_ = {static_cast<std::int32_t>(elements.size()) - 1};
  array->elements_ = std::move(elements);
  return array;
}

Ref<Array> Array::of_bytes(std::string bytes) {
  auto array = make_ref<Array>();
  array->upper_bounds_ = {static_cast<std::int32_t>(bytes.size()) - 1};
  array->bytes_ = std::move(bytes);
  array->holds_bytes_ = true;
  return array;
}

Array::~Array() {
  std::vector<Value> waiting;
  const auto take_arrays = [&](Array& from) {
    for (Value& element : from.elements_) {
      if (element.is_array()) waiting.push_back(std::move(element));
    }
  };
  take_arrays(*this);
  while (!waiting.empty()) {
    const Value last = std::move(waiting.back());
    waiting.pop_back();
    if (last.as_array().unique()) take_arrays(const_cast<Array&>(last.as_array()));
  }
}

Ref<Array> Array::copy() const {
  auto array = make_ref<Array>();
  array->upper_bounds_ = upper_bounds_;
  array->elements_ = elements_;
  array->bytes_ = bytes_;
  array->fixed_ = fixed_;
  array->holds_bytes_ = holds_bytes_;
  return array;
}

std::size_t Array::index_of(std::span<const std::int32_t> indexes) const {
  if (indexes.size() != upper_bounds_.size() || indexes.empty()) {
    raise(errors::kSubscriptOutOfRange);
  }
  std::size_t index = 0;
  std::size_t stride = 1;
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    if (indexes[i] < 0 || indexes[i] > upper_bounds_[i]) raise(errors::kSubscriptOutOfRange);
    index += static_cast<std::size_t>(indexes[i]) * stride;
    stride *= static_cast<std::size_t>(upper_bounds_[i]) + 1;
  }
  return index;
}

void Array::resize_last(std::int32_t upper_bound) {
  if (fixed_) raise(errors::kArrayFixed);
  if (upper_bounds_.empty()) raise(errors::kSubscriptOutOfRange);
  std::vector<std::int32_t> bounds = upper_bounds_;
  bounds.back() = upper_bound;
  const std::size_t count = element_count(bounds);
  // What goes is destroyed last: its end may run script (Class_Terminate) that looks at this array.
  std::vector<Value> gone;
  // The last dimension runs slowest, so what stays is a prefix.
  if (holds_bytes_) {
    bytes_.resize(count);
  } else {
    if (count < elements_.size()) {
      const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(count);
      gone.assign(std::make_move_iterator(first), std::make_move_iterator(elements_.end()));
    }
    elements_.resize(count);
  }
  upper_bounds_ = std::move(bounds);
}

}  // namespace rk
