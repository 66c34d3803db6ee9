// The counted bytes behind a Text; used by Text and Value only.
//
// Layout: this header, then `capacity` bytes of UTF-8. Length and cursor are caches that any
// thread may fill in with the same truth, so relaxed atomics do.
#ifndef RK_VALUE_TEXT_BUFFER_H_
#define RK_VALUE_TEXT_BUFFER_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <optional>
#include <string_view>

namespace rk {

std::size_t unit_length(std::string_view utf8) noexcept;

class TextBuffer {
 public:
  // A unit and the byte offset of its character; offset and unit of a second half are those of
  // its character.
  struct Place {
    std::size_t unit;
    std::size_t offset;
  };

  // With no bytes and one reference. Raises 14 past the longest text.
  static TextBuffer* make(std::size_t capacity);

  void retain() const noexcept {
    // OPTIMIZATION: an unshared count is seen by one thread only.
    if (shared_) {
      refs_.fetch_add(1, std::memory_order_relaxed);
    } else {
      refs_.store(refs_.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    }
  }
  void release() noexcept {
    if (shared_) {
      if (refs_.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    } else {
      const std::uint32_t left = refs_.load(std::memory_order_relaxed) - 1;
      refs_.store(left, std::memory_order_relaxed);
      if (left != 0) return;
    }
    this->~TextBuffer();
    ::operator delete(this);
  }
  bool unique() const noexcept { return !shared_ && refs_.load(std::memory_order_relaxed) == 1; }
  void share() noexcept {
    if (!shared_) shared_ = true;
  }

  std::string_view view() const noexcept { return {data(), size_}; }
  std::size_t room() const noexcept { return capacity_ - size_; }
  std::size_t length() const noexcept;
  Place place_of_unit(std::size_t unit) const noexcept;
  std::optional<std::uint8_t> trailing_byte() const noexcept {
    return has_trailing_ ? std::optional(trailing_) : std::nullopt;
  }

  // The rest needs unique().
  void add(std::string_view utf8) noexcept {
    if (utf8.empty()) return;
    std::memcpy(data() + size_, utf8.data(), utf8.size());
    size_ += static_cast<std::uint32_t>(utf8.size());
    // A known length stays known, or a loop that appends and asks for Len would be quadratic.
    const std::int64_t units = units_.load(std::memory_order_relaxed);
    if (units >= 0) {
      units_.store(units + static_cast<std::int64_t>(unit_length(utf8)), std::memory_order_relaxed);
    }
  }
  void drop(std::size_t bytes) noexcept {
    size_ -= static_cast<std::uint32_t>(bytes);
    units_.store(-1, std::memory_order_relaxed);
    cursor_.store(0, std::memory_order_relaxed);
  }
  void copy_of(const TextBuffer& other) noexcept {
    add(other.view());
    set_trailing_byte(other.trailing_byte());
  }
  void set_trailing_byte(std::optional<std::uint8_t> byte) noexcept {
    has_trailing_ = byte.has_value();
    trailing_ = byte.value_or(0);
  }

 private:
  TextBuffer() = default;
  ~TextBuffer() = default;
  Place start_near(std::uint64_t cursor, std::size_t unit, std::size_t units) const noexcept;
  char* data() noexcept { return reinterpret_cast<char*>(this + 1); }
  const char* data() const noexcept { return reinterpret_cast<const char*>(this + 1); }

  mutable std::atomic<std::uint32_t> refs_{1};
  bool shared_ = false;
  bool has_trailing_ = false;
  std::uint8_t trailing_ = 0;
  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = 0;
  mutable std::atomic<std::int64_t> units_{-1};
  mutable std::atomic<std::uint64_t> cursor_{0};
};

}  // namespace rk

#endif  // RK_VALUE_TEXT_BUFFER_H_
