// Base64 and hexadecimal texts of bytes, as the typed values of XML nodes have them. Pure.
#ifndef RK_PAGEHOST_COMPONENTS_BASE64_H_
#define RK_PAGEHOST_COMPONENTS_BASE64_H_

#include <optional>
#include <string>
#include <string_view>

namespace rk::pagehost {

// In lines of 72 characters with LF between them.
std::string base64_text(std::string_view bytes);
// White space does not count. Nothing where the text is not of the kind.
std::optional<std::string> base64_bytes(std::string_view text);

std::string hex_text(std::string_view bytes);  // in small letters
std::optional<std::string> hex_bytes(std::string_view text);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_BASE64_H_
