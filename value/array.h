// Array: the elements behind an array value. Arrays are values: a copied array value shares its
// elements until one of the two is written to (Value::writable_array).
//
// Either loosely typed elements, or bytes (what Request.BinaryRead and binary columns give).
#ifndef RK_VALUE_ARRAY_H_
#define RK_VALUE_ARRAY_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "value/ref.h"
#include "value/value.h"

namespace rk {

// As many as the language allows.
inline constexpr std::size_t kMaxArrayDimensions = 60;
// Elements of one array; 16 bytes each, so that one array stays below half a gigabyte.
inline constexpr std::size_t kMaxArrayElements = std::size_t{1} << 25;

class Array final : public RefCounted {
 public:
  Array() = default;
  // Arrays in arrays go one by one, however deep they lie in one another.
  ~Array() override;
  // Upper bounds by dimension, lower bounds are 0; a bound of -1 makes a dimension of no elements.
  // No bounds: an array not dimensioned yet. Raises 9 for a bound below -1, 7 past the limit.
  static Ref<Array> make(std::span<const std::int32_t> upper_bounds, bool fixed = false);
  static Ref<Array> of(std::vector<Value> elements);  // one dimension
  static Ref<Array> of_bytes(std::string bytes);
  Ref<Array> copy() const;

  std::size_t dimensions() const noexcept { return upper_bounds_.size(); }
  std::int32_t upper_bound(std::size_t dimension) const { return upper_bounds_.at(dimension); }
  bool fixed() const noexcept { return fixed_; }
  bool holds_bytes() const noexcept { return holds_bytes_; }

  // Elements in storage order: the first dimension runs fastest.
  std::span<Value> elements() noexcept { return elements_; }
  std::span<const Value> elements() const noexcept { return elements_; }
  const std::string& bytes() const noexcept { return bytes_; }
  std::string& bytes() noexcept { return bytes_; }

  // The place of an element; raises 9 for a wrong count of indexes or one out of bounds.
  std::size_t index_of(std::span<const std::int32_t> indexes) const;

  // ReDim Preserve: only the last dimension may change; raises 9 otherwise, 10 when fixed.
  void resize_last(std::int32_t upper_bound);

 private:
  std::vector<std::int32_t> upper_bounds_;
  std::vector<Value> elements_;
  std::string bytes_;
  bool fixed_ = false;
  bool holds_bytes_ = false;
};

}  // namespace rk

#endif  // RK_VALUE_ARRAY_H_
