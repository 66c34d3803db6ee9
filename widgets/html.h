// What the strips and the slideshow build their texts with.
//
// Literals and values one behind another; a value is joined as "&" joins it, a Null as nothing. Of
// the thread that made it.
#ifndef RK_WIDGETS_HTML_H_
#define RK_WIDGETS_HTML_H_

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "value/conversions.h"
#include "value/value.h"

namespace rk::widgets {

class Html {
 public:
  Html& operator<<(std::string_view literal) {
    text_.append(literal);
    return *this;
  }
  Html& operator<<(const Value& value) {
    append_text(text_, value);
    return *this;
  }
  // Each line with its line end.
  Html& operator<<(std::span<const std::string_view> lines) {
    for (const std::string_view line : lines) text_.append(line).append("\r\n");
    return *this;
  }
  std::string text() && { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace rk::widgets

#endif  // RK_WIDGETS_HTML_H_
