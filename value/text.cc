#include "value/text.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <utility>

#include "value/script_error.h"
#include "value/text_buffer.h"

namespace rk {

namespace {

bool continues(char c) noexcept {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Bytes of the character that begins with this one; a stray byte stands for itself.
std::size_t sequence_length(unsigned char first) noexcept {
  if (first < 0xC0) return 1;
  if (first < 0xE0) return 2;
  return first < 0xF0 ? 3 : 4;
}

// Bytes that are no UTF-8 count other units than they decode to, so a place may lie at the end:
// there is nothing there to step over.
std::size_t step(std::string_view utf8, std::size_t offset) noexcept {
  if (offset >= utf8.size()) return 0;
  return std::min(sequence_length(static_cast<unsigned char>(utf8[offset])), utf8.size() - offset);
}

std::size_t units_of(std::string_view utf8, std::size_t offset) noexcept {
  if (offset >= utf8.size()) return 1;
  return static_cast<unsigned char>(utf8[offset]) >= 0xF0 ? 2 : 1;
}

char32_t decode(std::string_view sequence) noexcept {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(sequence[i]); };
  switch (sequence.size()) {
    case 2:
      return static_cast<char32_t>((byte(0) & 0x1F) << 6 | (byte(1) & 0x3F));
    case 3:
      return static_cast<char32_t>((byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 |
                                   (byte(2) & 0x3F));
    case 4:
      return static_cast<char32_t>((byte(0) & 0x07) << 18 | (byte(1) & 0x3F) << 12 |
                                   (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F));
    default:
      return byte(0);
  }
}

bool is_high_half(char32_t unit) noexcept {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool is_low_half(char32_t unit) noexcept {
  return unit >= 0xDC00 && unit < 0xE000;
}

constexpr std::size_t kHalfBytes = 3;  // a lone half in UTF-8 form

// The lone half at the end or start of a text, or 0.
char32_t last_half(std::string_view utf8) noexcept {
  if (utf8.size() < kHalfBytes) return 0;
  const std::string_view end = utf8.substr(utf8.size() - kHalfBytes);
  return static_cast<unsigned char>(end[0]) == 0xED ? decode(end) : 0;
}
char32_t first_half(std::string_view utf8) noexcept {
  if (utf8.size() < kHalfBytes || static_cast<unsigned char>(utf8[0]) != 0xED) return 0;
  return decode(utf8.substr(0, kHalfBytes));
}

char16_t unit_at(std::string_view utf8, std::size_t offset, bool second) noexcept {
  if (offset >= utf8.size()) return 0xFFFD;
  const char32_t point = decode(utf8.substr(offset, step(utf8, offset)));
  if (point < 0x10000) return static_cast<char16_t>(point);
  const char32_t rest = point - 0x10000;
  return static_cast<char16_t>(second ? 0xDC00 + (rest & 0x3FF) : 0xD800 + (rest >> 10));
}

}  // namespace

bool is_ascii(std::string_view bytes) noexcept {
  const char* at = bytes.data();
  std::size_t left = bytes.size();
  for (; left >= 8; at += 8, left -= 8) {
    std::uint64_t word;
    std::memcpy(&word, at, 8);
    if ((word & 0x8080808080808080u) != 0) return false;
  }
  return std::all_of(at, at + left, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::size_t unit_length(std::string_view utf8) noexcept {
  // Every byte that does not continue a character is a unit, and a four-byte character has two.
  // OPTIMIZATION: eight bytes at a time, each with a counter of its own in the lanes of `counts`.
  constexpr std::uint64_t kHigh = 0x8080808080808080u;
  constexpr std::size_t kWordsUntilFull = 127;  // a byte counts two at most
  constexpr unsigned kBitOfLane = 7;
  std::size_t units = 0;
  const char* at = utf8.data();
  std::size_t left = utf8.size();
  while (left >= 8) {
    std::uint64_t counts = 0;
    for (std::size_t words = std::min(left / 8, kWordsUntilFull); words > 0; --words) {
      std::uint64_t word;
      std::memcpy(&word, at, 8);
      const std::uint64_t starting = (~word | word << 1) & kHigh;
      const std::uint64_t four = word & word << 1 & word << 2 & word << 3 & kHigh;
      counts += (starting >> kBitOfLane) + (four >> kBitOfLane);
      at += 8;
      left -= 8;
    }
    constexpr std::uint64_t kEverySecond = 0x00FF00FF00FF00FFu;
    constexpr std::uint64_t kAddAll = 0x0001000100010001u;
    units += ((counts & kEverySecond) + (counts >> 8 & kEverySecond)) * kAddAll >> 48;
  }
  for (; left > 0; ++at, --left) {
    if (continues(*at)) continue;
    units += static_cast<unsigned char>(*at) >= 0xF0 ? 2 : 1;
  }
  return units;
}

void append_code_point(std::string& utf8, char32_t point) {
  const auto put = [&](char32_t bits) { utf8.push_back(static_cast<char>(bits)); };
  if (point < 0x80) {
    put(point);
  } else if (point < 0x800) {
    put(0xC0 | point >> 6);
    put(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    put(0xE0 | point >> 12);
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  }
}

void append_unit(std::string& utf8, char16_t unit) {
  const char32_t before = is_low_half(unit) ? last_half(utf8) : 0;
  if (!is_high_half(before)) {
    append_code_point(utf8, unit);
    return;
  }
  utf8.resize(utf8.size() - kHalfBytes);
  append_code_point(utf8, 0x10000 + ((before - 0xD800) << 10) + (unit - 0xDC00u));
}

bool is_valid_utf8(std::string_view bytes) noexcept {
  for (std::size_t at = 0; at < bytes.size();) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    if (first < 0x80) {
      ++at;
      continue;
    }
    const std::size_t size = sequence_length(first);
    if (size == 1 || first > 0xF4 || at + size > bytes.size()) return false;
    const std::string_view sequence = bytes.substr(at, size);
    if (!std::all_of(sequence.begin() + 1, sequence.end(), continues)) return false;
    const char32_t point = decode(sequence);
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if (point < kLeast[size] || point > 0x10FFFF || (point >= 0xD800 && point < 0xE000)) {
      return false;
    }
    at += size;
  }
  return true;
}

char ascii_lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return ascii_lower(x) == ascii_lower(y); });
}

std::string lowered_ascii(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(), ascii_lower);
  return lowered;
}

// --- the buffer -------------------------------------------------------------------------------

TextBuffer* TextBuffer::make(std::size_t capacity) {
  if (capacity > kMaxTextBytes) raise(errors::kOutOfStringSpace);
  void* memory = ::operator new(sizeof(TextBuffer) + capacity);
  auto* buffer = new (memory) TextBuffer;
  buffer->capacity_ = static_cast<std::uint32_t>(capacity);
  return buffer;
}

std::size_t TextBuffer::length() const noexcept {
  std::int64_t units = units_.load(std::memory_order_relaxed);
  if (units < 0) {
    units = static_cast<std::int64_t>(unit_length(view()));
    units_.store(units, std::memory_order_relaxed);
  }
  return static_cast<std::size_t>(units);
}

TextBuffer::Place TextBuffer::place_of_unit(std::size_t unit) const noexcept {
  const std::size_t units = length();
  if (units == size_) return {unit, std::min<std::size_t>(unit, size_)};
  if (unit >= units) return {units, size_};
  Place at = start_near(cursor_.load(std::memory_order_relaxed), unit, units);
  const std::string_view utf8 = view();
  while (at.unit > unit && at.offset > 0) {
    do --at.offset;
    while (at.offset > 0 && continues(utf8[at.offset]));
    at.unit -= units_of(utf8, at.offset);
  }
  while (at.unit < unit && at.offset < size_) {
    const std::size_t width = units_of(utf8, at.offset);
    if (at.unit + width > unit) break;  // the second half of this character
    at.unit += width;
    at.offset += step(utf8, at.offset);
  }
  cursor_.store(std::uint64_t{at.unit} << 32 | at.offset, std::memory_order_relaxed);
  return at;
}

// The nearest of the start, the cursor and the end.
TextBuffer::Place TextBuffer::start_near(std::uint64_t cursor, std::size_t unit,
                                         std::size_t units) const noexcept {
  const Place kept{static_cast<std::size_t>(cursor >> 32),
                   static_cast<std::size_t>(cursor & 0xFFFFFFFFu)};
  const std::size_t from_kept = kept.unit > unit ? kept.unit - unit : unit - kept.unit;
  if (unit <= from_kept) return {0, 0};
  if (units - unit < from_kept) return {units, size_};
  return kept;
}

// --- Text -------------------------------------------------------------------------------------

Text::Text() noexcept = default;

Text::~Text() {
  if (buffer_ != nullptr) buffer_->release();
}

Text::Text(const Text& other) noexcept : buffer_(other.buffer_) {
  if (buffer_ != nullptr) buffer_->retain();
}

Text::Text(Text&& other) noexcept : buffer_(std::exchange(other.buffer_, nullptr)) {}

Text& Text::operator=(const Text& other) noexcept {
  Text copy(other);
  std::swap(buffer_, copy.buffer_);
  return *this;
}

Text& Text::operator=(Text&& other) noexcept {
  std::swap(buffer_, other.buffer_);
  return *this;
}

Text::Text(std::string_view utf8) {
  if (utf8.empty()) return;
  buffer_ = TextBuffer::make(utf8.size());
  buffer_->add(utf8);
}

Text Text::from_units(std::u16string_view units) {
  std::string utf8;
  utf8.reserve(units.size());
  for (const char16_t unit : units) append_unit(utf8, unit);
  return Text(utf8);
}

Text Text::from_bytes(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size());
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    append_unit(utf8, static_cast<char16_t>(low | high << 8));
  }
  Text text(utf8);
  if (bytes.size() % 2 != 0) {
    text.own(0)->set_trailing_byte(static_cast<std::uint8_t>(bytes.back()));
  }
  return text;
}

std::string_view Text::view() const noexcept {
  return buffer_ == nullptr ? std::string_view() : buffer_->view();
}

bool Text::empty() const noexcept {
  return view().empty() && !trailing_byte();
}

std::size_t Text::length() const noexcept {
  return buffer_ == nullptr ? 0 : buffer_->length();
}

std::size_t Text::byte_length() const noexcept {
  return 2 * length() + (trailing_byte().has_value() ? 1 : 0);
}

std::optional<std::uint8_t> Text::trailing_byte() const noexcept {
  return buffer_ == nullptr ? std::nullopt : buffer_->trailing_byte();
}

std::size_t Text::offset_of_unit(std::size_t index) const noexcept {
  return buffer_ == nullptr ? 0 : buffer_->place_of_unit(index).offset;
}

std::size_t Text::unit_of_offset(std::size_t offset) const noexcept {
  const std::string_view utf8 = view();
  if (length() == utf8.size()) return std::min(offset, utf8.size());
  return unit_length(utf8.substr(0, offset));
}

Text Text::mid(std::size_t start, std::size_t count) const {
  const std::size_t units = length();
  if (start >= units || count == 0) return Text();
  count = std::min(count, units - start);
  if (start == 0 && count == units && !trailing_byte()) return *this;
  const std::string_view utf8 = view();
  const TextBuffer::Place first = buffer_->place_of_unit(start);
  std::string piece;
  std::size_t from = first.offset;
  if (first.unit < start) {  // begins with a second half
    append_code_point(piece, unit_at(utf8, first.offset, true));
    from += step(utf8, first.offset);
  }
  const TextBuffer::Place last = buffer_->place_of_unit(start + count);
  const bool cut = last.unit < start + count;  // ends with a first half
  if (piece.empty() && !cut) return Text(utf8.substr(from, last.offset - from));
  if (from < last.offset) piece.append(utf8.substr(from, last.offset - from));
  if (cut && last.unit >= start) append_code_point(piece, unit_at(utf8, last.offset, false));
  return Text(piece);
}

char16_t Text::unit(std::size_t index) const {
  const TextBuffer::Place at = buffer_->place_of_unit(index);
  return unit_at(view(), at.offset, at.unit < index);
}

std::u16string Text::units() const {
  std::u16string units;
  const std::string_view utf8 = view();
  units.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size(); at += step(utf8, at)) {
    units.push_back(unit_at(utf8, at, false));
    if (units_of(utf8, at) == 2) units.push_back(unit_at(utf8, at, true));
  }
  return units;
}

std::uint8_t Text::byte(std::size_t index) const {
  if (index / 2 >= length()) return trailing_byte().value_or(0);
  const char16_t whole = unit(index / 2);
  return static_cast<std::uint8_t>(index % 2 == 0 ? whole & 0xFF : whole >> 8);
}

Text Text::byte_mid(std::size_t start, std::size_t count) const {
  const std::size_t size = byte_length();
  if (start >= size || count == 0) return Text();
  count = std::min(count, size - start);
  std::string piece;
  piece.reserve(count);
  for (std::size_t i = start; i < start + count; ++i) piece.push_back(static_cast<char>(byte(i)));
  return from_bytes(piece);
}

std::string Text::bytes() const {
  std::string bytes;
  bytes.reserve(byte_length());
  for (const char16_t unit : units()) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  if (const auto last = trailing_byte()) bytes.push_back(static_cast<char>(*last));
  return bytes;
}

TextBuffer* Text::own(std::size_t more) {
  const std::size_t size = buffer_ == nullptr ? 0 : buffer_->view().size();
  if (more > kMaxTextBytes - size) raise(errors::kOutOfStringSpace);
  if (buffer_ != nullptr && buffer_->unique() && buffer_->room() >= more) return buffer_;
  const bool grows = buffer_ != nullptr && buffer_->unique();
  const std::size_t wanted = grows ? std::max(size + more, 2 * size) : size + more;
  TextBuffer* fresh = TextBuffer::make(std::min(std::max<std::size_t>(wanted, 16), kMaxTextBytes));
  if (buffer_ != nullptr) {
    fresh->copy_of(*buffer_);
    buffer_->release();
  }
  buffer_ = fresh;
  return buffer_;
}

void Text::append(std::string_view utf8) {
  if (utf8.empty()) return;
  // OPTIMIZATION: what loops append has room mostly, and begins with no half (which begin so).
  constexpr char kHalfBegins = '\xED';
  if (buffer_ != nullptr && utf8.front() != kHalfBegins && utf8.size() <= buffer_->room() &&
      buffer_->unique() && !buffer_->trailing_byte()) {
    buffer_->add(utf8);
    return;
  }
  if (trailing_byte()) {
    append(Text(utf8));
    return;
  }
  const char32_t low = first_half(utf8);
  const char32_t high = is_low_half(low) ? last_half(view()) : 0;
  if (!is_high_half(high)) {
    own(utf8.size())->add(utf8);
    return;
  }
  std::string joined;
  append_code_point(joined, 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00));
  joined.append(utf8.substr(kHalfBytes));
  TextBuffer* buffer = own(joined.size());
  buffer->drop(kHalfBytes);
  buffer->add(joined);
}

void Text::append(const Text& other) {
  if (!trailing_byte() && !other.trailing_byte()) {
    if (buffer_ != other.buffer_) return append(other.view());
    // A text may be appended to itself, and its bytes move when it grows.
    const Text kept(other);  // NOLINT(performance-unnecessary-copy-initialization)
    append(kept.view());
    return;
  }
  if (!trailing_byte()) {
    const std::uint8_t last = *other.trailing_byte();
    const Text kept(other);  // NOLINT(performance-unnecessary-copy-initialization)
    append(kept.view());
    own(0)->set_trailing_byte(last);
    return;
  }
  // The half unit at the end moves every later byte by one; only what is appended is re-made.
  std::string tail(1, static_cast<char>(*trailing_byte()));
  tail += other.bytes();
  own(0)->set_trailing_byte(std::nullopt);
  append(from_bytes(tail));
}

void Text::share() const noexcept {
  if (buffer_ != nullptr) buffer_->share();
}

TextBuffer* Text::detach() noexcept {
  return std::exchange(buffer_, nullptr);
}

bool operator==(const Text& a, const Text& b) noexcept {
  return a.buffer_ == b.buffer_ || (a.view() == b.view() && a.trailing_byte() == b.trailing_byte());
}

}  // namespace rk
