// What a page's failure looks like: the HTML that a visitor gets, and the line of the log.
// Pure functions.
#ifndef RK_PAGEHOST_PAGES_PAGE_FAILURE_TEXT_H_
#define RK_PAGEHOST_PAGES_PAGE_FAILURE_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "pagehost/pages/page_host.h"
#include "pagehost/pages/page_reader.h"

namespace rk::pagehost {

// As hosts of this kind number failures: numbers of the language lie in a range of the longer ones.
std::int32_t host_number(std::int32_t number);
// As pages of this kind show numbers: "800a000d" for 13, "80040e14" for -2147217900.
std::string error_number_text(std::int32_t number);

// For one who may see it.
std::string failure_page(const PageFailure& failure, std::string_view source);
// For everyone else.
std::string plain_page(int status, std::string_view reason, std::string_view words);

// Whether a request's sender may see the inside of a failure. A request that came through a proxy
// is nobody's neighbour.
bool may_see_errors(const PageRequest& request, ShowErrors show);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_FAILURE_TEXT_H_
