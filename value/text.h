// Text: the characters of a String value.
//
// A text is held as UTF-8, so that templates, rows and literals reach the response without a
// detour. Its meaning is a row of 16-bit units, as pages count them: a character beyond the basic
// plane is two units, and a cut between them leaves a lone half, held in three bytes like any
// other unit (joined again when its other half is appended). A text made by the byte functions
// may end in half a unit; that byte is kept apart (trailing_byte).
//
// Counting: a text knows its length in units once asked, and keeps a cursor (a unit and its byte
// offset) near the last place looked at, so that a walk by mid(i, 1) in either direction is
// linear in all. ASCII needs neither.
//
// Threads: a text is copied by handle. One that is to be seen by other threads is share()d first
// and never changed in place from then on; append() copies what is shared or has other handles.
#ifndef RK_VALUE_TEXT_H_
#define RK_VALUE_TEXT_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "value/ref.h"

namespace rk {

class TextBuffer;

// The longest text, in bytes of UTF-8: far beyond any page, small enough that offsets fit the
// cursor's 32 bits and that a length in units fits the language's Long.
inline constexpr std::size_t kMaxTextBytes = std::size_t{1} << 30;

class Text {
 public:
  Text() noexcept;
  ~Text();
  Text(const Text& other) noexcept;
  Text(Text&& other) noexcept;
  Text& operator=(const Text& other) noexcept;
  Text& operator=(Text&& other) noexcept;

  // From UTF-8, which is taken as it is (lone halves in three bytes allowed).
  // Raises 14 "Out of string space" past kMaxTextBytes.
  explicit Text(std::string_view utf8);
  static Text from_units(std::u16string_view units);
  // From the bytes that LenB counts: little-endian units, perhaps half a unit at the end.
  static Text from_bytes(std::string_view bytes);

  // UTF-8, valid until the text is changed or its last handle goes. Without the trailing byte.
  std::string_view view() const noexcept;
  std::string string() const { return std::string(view()); }
  bool empty() const noexcept;  // no unit and no trailing byte

  // In 16-bit units; the trailing byte does not count.
  std::size_t length() const noexcept;
  // Twice the length, and one more for a trailing byte.
  std::size_t byte_length() const noexcept;
  std::optional<std::uint8_t> trailing_byte() const noexcept;

  // Positions from 0, in units; what lies past the end is left out.
  Text mid(std::size_t start, std::size_t count) const;
  // The unit at a place below length().
  char16_t unit(std::size_t index) const;
  std::u16string units() const;
  // Between units and byte offsets of view(). A unit that is a character's second half has its
  // character's offset.
  std::size_t offset_of_unit(std::size_t index) const noexcept;
  std::size_t unit_of_offset(std::size_t offset) const noexcept;

  // The byte forms, positions from 0 below byte_length().
  std::uint8_t byte(std::size_t index) const;
  Text byte_mid(std::size_t start, std::size_t count) const;
  std::string bytes() const;

  // Appends in place where no one else holds this text (amortised constant time a byte).
  // A lone first half at the end and a lone second half at the start join.
  void append(std::string_view utf8);
  void append(const Text& other);
  // Room for so many bytes more, so that appending them moves nothing.
  void reserve(std::size_t bytes) { own(bytes); }

  void share() const noexcept;
  // Where the bytes lie; equal for two handles of one text.
  const void* identity() const noexcept { return buffer_; }

  friend bool operator==(const Text& a, const Text& b) noexcept;

 private:
  friend class Value;
  explicit Text(TextBuffer* counted) noexcept : buffer_(counted) {}
  TextBuffer* detach() noexcept;
  TextBuffer* own(std::size_t more);

  TextBuffer* buffer_ = nullptr;  // null: the empty text
};

// Whether all bytes are ASCII.
bool is_ascii(std::string_view bytes) noexcept;
// 16-bit units of a UTF-8 text.
std::size_t unit_length(std::string_view utf8) noexcept;
void append_unit(std::string& utf8, char16_t unit);         // joins halves
void append_code_point(std::string& utf8, char32_t point);  // lone halves in three bytes
// Whether this is UTF-8 as its rules demand: no overlong form, no half, nothing past U+10FFFF.
bool is_valid_utf8(std::string_view bytes) noexcept;

// Letter case of ASCII letters only, as names and SQL compare.
char ascii_lower(char c) noexcept;
bool equal_ignoring_case(std::string_view a, std::string_view b) noexcept;
std::string lowered_ascii(std::string_view text);

}  // namespace rk

#endif  // RK_VALUE_TEXT_H_
