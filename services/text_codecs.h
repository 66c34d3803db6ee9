// The codecs of the web services: a double-byte decoder for fetched bodies and a percent-encoder.
// Neither raises anything. Pure; any thread.
#ifndef RK_SERVICES_TEXT_CODECS_H_
#define RK_SERVICES_TEXT_CODECS_H_

#include <string_view>

#include "platform/code_page.h"
#include "value/value.h"

namespace rk::services {

// Bytes as text of a double-byte ANSI code page: a byte from 0x80 up makes a character with the
// byte behind it, whatever that is. A last byte without one takes the trail byte of the pair
// before it, or 0.
Text decoded(std::string_view bytes, const platform::CodePages& code_pages, int ansi_code_page);

// The same for a value: a byte array, or a text's bytes as the byte functions see them; "" for
// what has no bytes.
Value bytes2bstr(const Value& vin, const platform::CodePages& code_pages, int ansi_code_page);

// Percent-encodes each 16-bit unit by itself. The empty text comes back unchanged.
Value URLEncodetoUTF8(const Value& url);

}  // namespace rk::services

#endif  // RK_SERVICES_TEXT_CODECS_H_
