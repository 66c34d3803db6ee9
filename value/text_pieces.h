// For functions that take long texts apart and put them together: the places of a text in another
// one, found one after another, and a text made of many short pieces.
#ifndef RK_VALUE_TEXT_PIECES_H_
#define RK_VALUE_TEXT_PIECES_H_

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "value/text.h"
#include "value/text_functions.h"

namespace rk {

// From the left, without overlap; `text` and `sought` outlive it. An empty text is found nowhere.
class TextSearch {
 public:
  TextSearch(std::string_view text, std::string_view sought, Letters letters);
  TextSearch(const TextSearch&) = delete;
  TextSearch& operator=(const TextSearch&) = delete;

  // The byte offset of the next place, or npos.
  std::size_t next() {
    if (sought_.empty()) return text_.npos;
    // A single letter is found by a function made for it.
    const std::size_t at =
        sought_.size() == 1 ? text_.find(sought_.front(), from_) : text_.find(sought_, from_);
    from_ = at == text_.npos ? text_.size() : at + sought_.size();
    return at;
  }

 private:
  std::string folded_text_;
  std::string folded_sought_;
  std::string_view text_;
  std::string_view sought_;
  std::size_t from_ = 0;
};

// Pieces of UTF-8, joined as Text::append joins them.
//
// OPTIMIZATION: short pieces are gathered and appended many at once.
class TextPieces {
 public:
  // Room is made for so many bytes where the text becomes a long one.
  explicit TextPieces(std::size_t expected) : expected_(expected) {}
  TextPieces(const TextPieces&) = delete;
  TextPieces& operator=(const TextPieces&) = delete;

  void add(std::string_view piece) {
    if (piece.size() > kShort || (!piece.empty() && piece.front() == kHalfBegins)) {
      add_alone(piece);
      return;
    }
    if (piece.size() > gathered_.size() - size_) flush();
    copy(gathered_.data() + size_, piece);
    size_ += piece.size();
  }

  Text text() && {
    flush();
    return std::move(text_);
  }

 private:
  static constexpr std::size_t kShort = 1024;     // longer ones cost little beside their bytes
  static constexpr std::size_t kGathered = 8192;  // stays in the nearest cache
  static constexpr char kHalfBegins = '\xED';     // which may join the half in front of it

  // Separators and tags are so short that calling for their copy costs more than the copy; two
  // blocks that overlap make any of their sizes.
  static void copy(char* to, std::string_view piece) {
    const std::size_t size = piece.size();
    if (size > 16) {
      std::memcpy(to, piece.data(), size);
    } else if (size >= 8) {
      copy_both_ends<8>(to, piece);
    } else if (size >= 4) {
      copy_both_ends<4>(to, piece);
    } else if (size >= 2) {
      copy_both_ends<2>(to, piece);
    } else if (size == 1) {
      *to = piece.front();
    }
  }
  template <std::size_t kBlock>
  static void copy_both_ends(char* to, std::string_view piece) {
    std::memcpy(to, piece.data(), kBlock);
    std::memcpy(to + piece.size() - kBlock, piece.data() + piece.size() - kBlock, kBlock);
  }

  void add_alone(std::string_view piece);
  void flush();

  Text text_;
  std::size_t expected_;
  std::size_t size_ = 0;
  std::array<char, kGathered> gathered_;
};

}  // namespace rk

#endif  // RK_VALUE_TEXT_PIECES_H_
