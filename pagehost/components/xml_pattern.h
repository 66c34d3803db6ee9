// XSL patterns, the older language in which scripts select nodes (item[0], $and$, end()), as XPath.
// For the DOM objects. Without state: any thread.
#ifndef RK_PAGEHOST_COMPONENTS_XML_PATTERN_H_
#define RK_PAGEHOST_COMPONENTS_XML_PATTERN_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/xml.h"

namespace rk::pagehost {

// The bound that expressions have too.
inline constexpr std::size_t kMaxPatternBytes = 1024;
// Brackets inside one another: each is a recursion here and in what runs the expression.
inline constexpr int kMaxPatternDepth = 24;

// A prefix that is not among these stands for itself as the document writes it. Raises -2147467259
// with the reason for what is no pattern, or is one that is not known.
std::string xpath_of_pattern(std::string_view pattern, const platform::XmlPrefixes& prefixes);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_XML_PATTERN_H_
