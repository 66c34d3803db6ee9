// White space that a document had where it keeps none: which nodes it stood before, and before the
// end of which elements. Kept in the nodes themselves, in the place that libxml2 leaves to its
// callers. For parsing.cc, tree.cc and writing.cc.
#ifndef RK_ADAPTERS_XML_WHITE_SPACE_H_
#define RK_ADAPTERS_XML_WHITE_SPACE_H_

#include <cstdint>

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is libxml2's
struct _xmlNode;

namespace rk::xml {

// What stood there: nothing, white space of one line, or line breaks.
enum class Space : std::uint8_t { None, Blank, Line };

Space space_before(const _xmlNode* node);
Space space_at_end(const _xmlNode* element);
void set_space_before(_xmlNode* node, Space space);
void set_space_at_end(_xmlNode* element, Space space);

}  // namespace rk::xml

#endif  // RK_ADAPTERS_XML_WHITE_SPACE_H_
