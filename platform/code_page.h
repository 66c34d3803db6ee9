// Code pages: between the bytes of a Windows code page and UTF-8. Several threads may call.
#ifndef RK_PLATFORM_CODE_PAGE_H_
#define RK_PLATFORM_CODE_PAGE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace rk::platform {

inline constexpr int kUtf8 = 65001;
inline constexpr int kGb2312 = 936;

class CodePages {
 public:
  virtual ~CodePages() = default;
  virtual bool supports(int code_page) const = 0;
  // Bytes that the code page does not have become U+FFFD; `first_bad`, where given, is set to the
  // offset of the first of them. The code page must be a supported one.
  virtual std::string to_utf8(std::string_view bytes, int code_page,
                              std::optional<std::size_t>* first_bad = nullptr) const = 0;
  // Characters that the code page does not have become "?".
  virtual std::string from_utf8(std::string_view utf8, int code_page) const = 0;
  // Whether a byte begins a character of two bytes; false in code pages of single bytes and in
  // UTF-8.
  virtual bool is_lead_byte(unsigned char, int) const { return false; }
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_CODE_PAGE_H_
