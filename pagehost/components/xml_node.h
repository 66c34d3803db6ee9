// XmlNodeBase: what every node of a DOM document can do, the document included, and XmlNodeObject,
// a node as scripts hold it. Members that a node's kind does not have raise 438.
//
// One object a node, as long as a script holds it. Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_XML_NODE_H_
#define RK_PAGEHOST_COMPONENTS_XML_NODE_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "pagehost/components/xml_tree.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class XmlNodeBase : public Object {
 public:
  using Node = platform::XmlNode;
  using Kind = platform::XmlKind;

  XmlNodeBase(XmlTreeRef tree, Node* node) : tree_(std::move(tree)), node_(node) {}

  const XmlTreeRef& tree() const { return tree_; }
  Node* node() const { return node_; }
  // The node in this tree; one of another document is moved here first. Raises 13 for another
  // object.
  static Node* node_for(const XmlTreeRef& tree, const Value& value);

  // Members of scripts.
  Value node_name(const Call& call);
  Value base_name(const Call& call);
  Value prefix(const Call& call);
  Value namespace_uri(const Call& call);
  Value node_type(const Call& call);
  Value node_type_string(const Call& call);
  Value node_value(const Call& call);
  Value typed_value(const Call& call);
  Value data_type(const Call& call);
  Value text(const Call& call);
  Value xml(const Call& call);
  Value parent_node(const Call& call);
  Value first_child(const Call& call);
  Value last_child(const Call& call);
  Value next_sibling(const Call& call);
  Value previous_sibling(const Call& call);
  Value child_nodes(const Call& call);
  Value attributes(const Call& call);
  Value owner_document(const Call& call);
  Value has_child_nodes(const Call& call);
  Value append_child(const Call& call);
  Value insert_before(const Call& call);
  Value replace_child(const Call& call);
  Value remove_child(const Call& call);
  Value clone_node(const Call& call);
  Value select_nodes(const Call& call);
  Value select_single_node(const Call& call);
  Value elements_by_tag_name(const Call& call);
  Value normalize(const Call& call);
  Value parsed(const Call& call);

 protected:
  platform::XmlDocument& document() const { return *tree_->document; }
  Kind kind() const { return document().kind(node_); }
  void must_be(Kind wanted) const;  // else 438
  void must_hold_text() const;      // a text, CDATA or comment, else 438
  Value value_of(Node* node) const;

  XmlTreeRef tree_;
  Node* node_;

 private:
  Node* child_given(const Value& value) const;
  std::vector<Node*> selected(const Call& call);
};

class XmlNodeObject final : public TabledObject<XmlNodeObject, XmlNodeBase> {
 public:
  // Use node_object().
  XmlNodeObject(XmlTreeRef tree, Node* node);
  ~XmlNodeObject() override;
  std::string_view type_name() const override;
  static std::span<const Member<XmlNodeObject>> members();

  // After the node was copied into another document: the object goes along.
  void move_to(const XmlTreeRef& tree, Node* node);

 private:
  Value attribute(const Call& call);
  Value set_attribute(const Call& call);
  Value remove_attribute(const Call& call);
  Value attribute_node(const Call& call);
  Value set_attribute_node(const Call& call);
  Value remove_attribute_node(const Call& call);
  Value tag_name(const Call& call);
  Value attribute_name(const Call& call);
  Value attribute_value(const Call& call);
  Value specified(const Call& call);
  Value data(const Call& call);
  Value length(const Call& call);
  Value target(const Call& call);
  Value append_data(const Call& call);
  Value substring_data(const Call& call);
  Value insert_data(const Call& call);
  Value delete_data(const Call& call);
  Value replace_data(const Call& call);
  Value split_text(const Call& call);

  struct Cut;
  // Units are counted from 0 as everywhere in the document; raises 5 past the end.
  Cut cut(std::int32_t offset, std::int32_t count) const;
  void put(const std::string& value);
};

// Nothing for null; the document's object for the document itself.
Value node_object(const XmlTreeRef& tree, platform::XmlNode* node);

// The table of a class of nodes: no default member, what all nodes have, and its own.
template <class T, std::size_t N>
constexpr std::array<Member<T>, N + 31> with_node_members(const Member<T> (&own)[N]) {
  using B = XmlNodeBase;
  const Member<T> common[] = {
      {"", nullptr},
      {"nodeName", &B::node_name},
      {"baseName", &B::base_name},
      {"prefix", &B::prefix},
      {"namespaceURI", &B::namespace_uri},
      {"nodeType", &B::node_type},
      {"nodeTypeString", &B::node_type_string},
      {"nodeValue", &B::node_value, 0, 0, Access::Both},
      {"nodeTypedValue", &B::typed_value, 0, 0, Access::Both},
      {"dataType", &B::data_type, 0, 0, Access::Both},
      {"text", &B::text, 0, 0, Access::Both},
      {"xml", &B::xml},
      {"parentNode", &B::parent_node},
      {"firstChild", &B::first_child},
      {"lastChild", &B::last_child},
      {"nextSibling", &B::next_sibling},
      {"previousSibling", &B::previous_sibling},
      {"childNodes", &B::child_nodes, 0, 1},
      {"attributes", &B::attributes, 0, 1},
      {"ownerDocument", &B::owner_document},
      {"hasChildNodes", &B::has_child_nodes},
      {"appendChild", &B::append_child, 1, 1},
      {"insertBefore", &B::insert_before, 2, 2},
      {"replaceChild", &B::replace_child, 2, 2},
      {"removeChild", &B::remove_child, 1, 1},
      {"cloneNode", &B::clone_node, 1, 1},
      {"selectNodes", &B::select_nodes, 1, 1},
      {"selectSingleNode", &B::select_single_node, 1, 1},
      {"getElementsByTagName", &B::elements_by_tag_name, 1, 1},
      {"normalize", &B::normalize},
      {"parsed", &B::parsed},
  };
  std::array<Member<T>, N + 31> out{};
  std::copy(std::begin(common), std::end(common), out.begin());
  std::copy(std::begin(own), std::end(own), out.begin() + std::size(common));
  return out;
}

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_XML_NODE_H_
