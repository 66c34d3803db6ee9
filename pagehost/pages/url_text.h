// The texts of addresses, forms and HTML: percent-encoding both ways and character references.
// Pure functions.
#ifndef RK_PAGEHOST_PAGES_URL_TEXT_H_
#define RK_PAGEHOST_PAGES_URL_TEXT_H_

#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace rk::pagehost {

// UTF-8 of bytes in a code page; valid UTF-8 is taken over as it is where that is the code page.
std::string decoded_text(std::string_view bytes, int code_page,
                         const platform::CodePages& code_pages);

// A name or value of a query string or form: "+" is a blank, %XX a byte of the code page, %uXXXX a
// 16-bit unit. A "%" that begins neither stays.
std::string url_decoded(std::string_view text, int code_page,
                        const platform::CodePages& code_pages);

// Server.URLEncode: a blank becomes "+"; letters and digits of ASCII stay; every other byte of the
// text in the code page becomes %XX.
std::string url_encoded(std::string_view utf8, int code_page,
                        const platform::CodePages& code_pages);

// Server.HTMLEncode: & < > and " become references.
std::string html_encoded(std::string_view utf8);

// Percent-encodes what may not stand in a header: controls, blanks and bytes above 126.
std::string header_safe_address(std::string_view bytes);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_URL_TEXT_H_
