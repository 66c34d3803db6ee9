// The digest behind generated mailbox passwords: MD5 with this system's own rule for turning
// characters into words. Pure; any thread.
#ifndef RK_SERVICES_DIGEST_H_
#define RK_SERVICES_DIGEST_H_

#include <cstdint>
#include <span>
#include <string>

#include "platform/code_page.h"
#include "value/value.h"

namespace rk::services {

// 32 upper-case hexadecimal digits. Each character is given by its code in the ANSI code page as a
// signed 16-bit number; characters of one byte give the digest of RFC 1321.
std::string md5(std::span<const std::int16_t> codes);

// The codes that md5 takes. A character that the code page does not have counts as "?".
std::string md5(std::string_view utf8, const platform::CodePages& code_pages, int ansi_code_page);

// Always the same ten lower-case hexadecimal digits, which are also written back into `input`.
// Raises nothing.
Value mailpass(Value& input);

}  // namespace rk::services

#endif  // RK_SERVICES_DIGEST_H_
