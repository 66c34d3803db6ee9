#include "pagehost/components/xml_lists.h"

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "pagehost/components/xml_node.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {
namespace {

// The nodes that a list shows at the moment.
class ShownNodes {
 public:
  ShownNodes(XmlTreeRef tree, std::function<XmlNodes()> look)
      : tree_(std::move(tree)), look_(std::move(look)), nodes_(look_()), seen_(tree_->changes()) {}
  ShownNodes(XmlTreeRef tree, XmlNodes nodes) : tree_(std::move(tree)), nodes_(std::move(nodes)) {}

  const XmlNodes& nodes() {
    if (look_ && seen_ != tree_->changes()) {
      nodes_ = look_();
      seen_ = tree_->changes();
    }
    return nodes_;
  }
  Value at(std::int64_t place) {
    const XmlNodes& all = nodes();
    if (place < 0 || static_cast<std::size_t>(place) >= all.size()) return Value::nothing();
    return node_object(tree_, all[static_cast<std::size_t>(place)]);
  }
  Value count() { return Value::long_integer(static_cast<std::int32_t>(nodes().size())); }
  Value next() { return at(at_ < static_cast<std::int64_t>(nodes().size()) ? at_++ : at_); }
  void reset() { at_ = 0; }
  const XmlTreeRef& tree() const { return tree_; }

 private:
  XmlTreeRef tree_;
  std::function<XmlNodes()> look_;
  XmlNodes nodes_;
  std::uint64_t seen_ = 0;
  std::int64_t at_ = 0;
};

// What was shown when the walk began.
class NodeWalk final : public Enumeration {
 public:
  NodeWalk(XmlTreeRef tree, XmlNodes nodes) : tree_(std::move(tree)), nodes_(std::move(nodes)) {}
  bool next(Value& item) override {
    if (at_ >= nodes_.size()) return false;
    item = node_object(tree_, nodes_[at_++]);
    return true;
  }

 private:
  XmlTreeRef tree_;
  XmlNodes nodes_;
  std::size_t at_ = 0;
};

class NodeList final : public TabledObject<NodeList> {
 public:
  explicit NodeList(ShownNodes shown) : shown_(std::move(shown)) {}
  std::string_view type_name() const override { return "IXMLDOMNodeList"; }
  static std::span<const Member<NodeList>> members() {
    static constexpr Member<NodeList> kMembers[] = {
        {"item", &NodeList::item, 1, 1},
        {"length", &NodeList::length},
        {"nextNode", &NodeList::next},
        {"reset", &NodeList::reset},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<NodeWalk>(shown_.tree(), shown_.nodes());
  }

 private:
  Value item(const Call& call) { return shown_.at(call.number(0)); }
  Value length(const Call&) { return shown_.count(); }
  Value next(const Call&) { return shown_.next(); }
  Value reset(const Call&) {
    shown_.reset();
    return {};
  }

  ShownNodes shown_;
};

class AttributeMap final : public TabledObject<AttributeMap> {
 public:
  AttributeMap(const XmlTreeRef& tree, platform::XmlNode* element)
      : shown_(tree, [tree, element] { return tree->document->attributes(element); }),
        element_(element) {}
  std::string_view type_name() const override { return "IXMLDOMNamedNodeMap"; }
  static std::span<const Member<AttributeMap>> members() {
    using A = AttributeMap;
    static constexpr Member<A> kMembers[] = {
        {"item", &A::item, 1, 1},
        {"length", &A::length},
        {"nextNode", &A::next},
        {"reset", &A::reset},
        {"getNamedItem", &A::named_item, 1, 1},
        {"setNamedItem", &A::set_named_item, 1, 1},
        {"removeNamedItem", &A::remove_named_item, 1, 1},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<NodeWalk>(shown_.tree(), shown_.nodes());
  }

 private:
  platform::XmlDocument& document() const { return *shown_.tree()->document; }
  Value item(const Call& call) { return shown_.at(call.number(0)); }
  Value length(const Call&) { return shown_.count(); }
  Value next(const Call&) { return shown_.next(); }
  Value reset(const Call&) {
    shown_.reset();
    return {};
  }
  Value named_item(const Call& call) {
    return node_object(shown_.tree(), document().attribute(element_, call.text(0)));
  }
  Value set_named_item(const Call& call) {
    platform::XmlNode* attribute = XmlNodeBase::node_for(shown_.tree(), call.at(0));
    if (document().kind(attribute) != platform::XmlKind::Attribute) raise(errors::kTypeMismatch);
    document().attach_attribute(element_, attribute);
    shown_.tree()->changed();
    return node_object(shown_.tree(), attribute);
  }
  Value remove_named_item(const Call& call) {
    platform::XmlNode* found = document().attribute(element_, call.text(0));
    if (found == nullptr) return Value::nothing();
    document().remove(found);
    shown_.tree()->changed();
    return node_object(shown_.tree(), found);
  }

  ShownNodes shown_;
  platform::XmlNode* element_;
};

}  // namespace

Value live_node_list(XmlTreeRef tree, std::function<XmlNodes()> look) {
  return Value::object(make_ref<NodeList>(ShownNodes(std::move(tree), std::move(look))));
}

Value fixed_node_list(XmlTreeRef tree, XmlNodes nodes) {
  return Value::object(make_ref<NodeList>(ShownNodes(std::move(tree), std::move(nodes))));
}

Value attribute_map(const XmlTreeRef& tree, platform::XmlNode* element) {
  return Value::object(make_ref<AttributeMap>(tree, element));
}

}  // namespace rk::pagehost
