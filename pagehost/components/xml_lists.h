// Lists of nodes as scripts hold them: the children or the attributes of a node, which show every
// change, and what a selection found, which stays. Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_XML_LISTS_H_
#define RK_PAGEHOST_COMPONENTS_XML_LISTS_H_

#include <functional>
#include <vector>

#include "pagehost/components/xml_tree.h"
#include "value/value.h"

namespace rk::pagehost {

using XmlNodes = std::vector<platform::XmlNode*>;

// Looks again after each change of the document.
Value live_node_list(XmlTreeRef tree, std::function<XmlNodes()> look);
Value fixed_node_list(XmlTreeRef tree, XmlNodes nodes);
Value attribute_map(const XmlTreeRef& tree, platform::XmlNode* element);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_XML_LISTS_H_
