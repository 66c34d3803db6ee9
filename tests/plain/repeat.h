// Repeat expansion step by step: one accumulated text in which every fill replaces everywhere.
// What site::Repeat must equal.
#ifndef RK_TESTS_PLAIN_REPEAT_H_
#define RK_TESTS_PLAIN_REPEAT_H_

#include <string>
#include <string_view>

#include "value/value.h"

namespace rk::plain {

// `text` with every `from` replaced by `to`; an empty `from` replaces nothing.
std::string replaced(std::string_view text, std::string_view from, std::string_view to);
// The text between two markers, piece by piece of a split.
std::string cut(std::string_view html, std::string_view start, std::string_view last);

// A value's text, Null as nothing.
std::string plain_text(const Value& value);
// One tag of a text that is no list; a Null empties the text.
void fill_tag(std::string& text, std::string_view tag, const Value& content);

class Repeat {
 public:
  explicit Repeat(std::string item) : item_(std::move(item)), accumulated_(item_) {}

  void append(const Value& text);
  void fill(std::string_view tag, const Value& content) { fill_tag(accumulated_, tag, content); }
  void next() { accumulated_ += item_; }
  std::string into(const std::string& block) const {
    return replaced(block, item_, replaced(accumulated_, item_, ""));
  }

 private:
  std::string item_;
  std::string accumulated_;
};

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_REPEAT_H_
