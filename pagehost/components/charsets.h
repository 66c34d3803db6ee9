// The charset names that pages write, as code pages. Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_CHARSETS_H_
#define RK_PAGEHOST_COMPONENTS_CHARSETS_H_

#include <optional>
#include <string_view>

namespace rk::pagehost {

// 16-bit units, the low byte first.
inline constexpr int kUtf16 = 1200;
// Each byte one of the first 256 characters: how scripts carry bytes in texts.
inline constexpr int kLatin1 = 28591;

// Nothing for a name that is not known.
std::optional<int> code_page_of_charset(std::string_view name);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_CHARSETS_H_
