// The charset names that pages write, as code pages, and text in them. Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_CHARSETS_H_
#define RK_PAGEHOST_COMPONENTS_CHARSETS_H_

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace rk::pagehost {

// 16-bit units, the low byte first.
inline constexpr int kUtf16 = 1200;
// Each byte one of the first 256 characters: how scripts carry bytes in texts.
inline constexpr int kLatin1 = 28591;

// Nothing for a name that is not known.
std::optional<int> code_page_of_charset(std::string_view name);

// By the code page of a charset, the two above included. The first gives UTF-8, the second takes
// it.
std::string charset_decoded(std::string_view bytes, int code_page,
                            const platform::CodePages& code_pages);
std::string charset_encoded(std::string_view utf8, int code_page,
                            const platform::CodePages& code_pages);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_CHARSETS_H_
