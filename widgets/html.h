// What the strips and the slideshow build their texts with.
//
// Literals and values one behind another; a value is joined as "&" joins it, a Null as nothing. Of
// the thread that made it.
#ifndef RK_WIDGETS_HTML_H_
#define RK_WIDGETS_HTML_H_

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "platform/database.h"
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
  // A field of the current row, as its value would be joined.
  Html& add(platform::Recordset& rows, std::size_t column) {
    rows.append_field_text(column, text_);
    return *this;
  }
  std::string text() && { return std::move(text_); }

 private:
  std::string text_;
};

}  // namespace rk::widgets

#endif  // RK_WIDGETS_HTML_H_
