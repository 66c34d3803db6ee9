// The text of an INI file by the rules of profile strings: read one value, change one, keep every
// other line as it stands. Pure; bytes in, bytes out.
#ifndef RK_ADAPTERS_POSIX_INI_TEXT_H_
#define RK_ADAPTERS_POSIX_INI_TEXT_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace rk::posix {

// Which bytes begin a character of two bytes in the file's code page: its second byte may look
// like a letter or a bracket and is neither.
using LeadBytes = std::array<bool, 256>;

// The value of the first such key in the first such section, names in any letter case (ASCII), the
// blanks around it and one pair of quotes taken off; nothing where there is none. Lines that
// begin with ";" are comments.
std::optional<std::string> ini_value(std::string_view text, std::string_view section,
                                     std::string_view key, const LeadBytes& lead_bytes);

// The text with the key set, made where it or its section is missing (a new key behind the last
// line of its section that is not blank). Without a value the key is deleted, without a key the
// section is. Line ends are those of the file, CR LF in a new one.
std::string ini_text_with(std::string_view text, std::string_view section,
                          std::optional<std::string_view> key,
                          std::optional<std::string_view> value, const LeadBytes& lead_bytes);

}  // namespace rk::posix

#endif  // RK_ADAPTERS_POSIX_INI_TEXT_H_
