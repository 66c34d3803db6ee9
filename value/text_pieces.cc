#include "value/text_pieces.h"

#include <algorithm>

namespace rk {

TextSearch::TextSearch(std::string_view text, std::string_view sought, Letters letters)
    : text_(text), sought_(sought) {
  if (letters == Letters::Exact) return;
  folded_text_ = lower_case(text);
  folded_sought_ = lower_case(sought);
  text_ = folded_text_;
  sought_ = folded_sought_;
}

void TextPieces::add_alone(std::string_view piece) {
  flush();
  if (text_.empty()) text_.reserve(std::max(expected_, piece.size()));
  text_.append(piece);
}

void TextPieces::flush() {
  if (size_ == 0) return;
  // A text that is gathered as a whole takes the room that it needs.
  const bool goes_on = gathered_.size() - size_ <= kShort;
  if (text_.empty() && goes_on) text_.reserve(std::max(expected_, size_));
  text_.append(std::string_view(gathered_.data(), size_));
  size_ = 0;
}

}  // namespace rk
