#include "pagehost/pages/page_request.h"

#include "value/text.h"

namespace rk::pagehost {

std::string_view PageRequest::header(std::string_view name) const {
  for (const auto& [key, value] : headers) {
    if (equal_ignoring_case(key, name)) return value;
  }
  return {};
}

}  // namespace rk::pagehost
