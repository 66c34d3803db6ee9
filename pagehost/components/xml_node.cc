#include "pagehost/components/xml_node.h"

#include <cstdint>
#include <optional>

#include "pagehost/components/base64.h"
#include "pagehost/components/xml_document.h"
#include "pagehost/components/xml_lists.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using platform::XmlKind;

constexpr KnownError kNoChild{errors::kInvalidCall.number,
                              "The parameter node is not a child of this node."};

std::string_view type_words(XmlKind kind) {
  switch (kind) {
    case XmlKind::Element:
      return "element";
    case XmlKind::Attribute:
      return "attribute";
    case XmlKind::Text:
      return "text";
    case XmlKind::CData:
      return "cdatasection";
    case XmlKind::EntityReference:
      return "entityreference";
    case XmlKind::Instruction:
      return "processinginstruction";
    case XmlKind::Comment:
      return "comment";
    case XmlKind::Document:
      return "document";
    case XmlKind::DocumentType:
      return "documenttype";
    case XmlKind::Fragment:
      return "documentfragment";
  }
  return "";
}

Value of_type(std::string_view text, std::string_view type) {
  if (type == "bin.base64") {
    auto bytes = base64_bytes(text);
    if (!bytes) raise(errors::kTypeMismatch);
    return Value::array(Array::of_bytes(std::move(*bytes)));
  }
  if (type == "bin.hex") {
    auto bytes = hex_bytes(text);
    if (!bytes) raise(errors::kTypeMismatch);
    return Value::array(Array::of_bytes(std::move(*bytes)));
  }
  const Value plain = Value::text(text);
  if (type == "int" || type == "i4") return Value::long_integer(to_long(plain));
  if (type == "number" || type == "r8" || type == "float") return Value::real(to_double(plain));
  if (type == "boolean") return Value::boolean(text == "1" || text == "true");
  return plain;
}

std::string typed_text(const Value& value, std::string_view type) {
  const bool bytes = value.is_array() && value.as_array().holds_bytes();
  if (type == "bin.base64" || type == "bin.hex") {
    const std::string given = bytes ? value.as_array().bytes() : to_text(value).bytes();
    return type == "bin.hex" ? hex_text(given) : base64_text(given);
  }
  if (type == "boolean") return to_boolean(value) ? "1" : "0";
  return joined_text(value).string();
}

// Every element beneath, in document order.
void add_elements(const platform::XmlDocument& document, const platform::XmlNode* from,
                  std::string_view name, XmlNodes& out) {
  for (platform::XmlNode* each : document.children(from)) {
    if (document.kind(each) != XmlKind::Element) continue;
    if (name == "*" || document.name(each) == name) out.push_back(each);
    add_elements(document, each, name, out);
  }
}

}  // namespace

Value node_object(const XmlTreeRef& tree, platform::XmlNode* node) {
  if (node == nullptr) return Value::nothing();
  if (tree->document->kind(node) == XmlKind::Document) {
    return Value::object(make_ref<XmlDocumentObject>(tree));
  }
  const auto known = tree->objects.find(node);
  if (known != tree->objects.end()) return Value::object(Ref<Object>(known->second));
  return Value::object(make_ref<XmlNodeObject>(tree, node));
}

XmlNodeBase::Node* XmlNodeBase::node_for(const XmlTreeRef& tree, const Value& value) {
  auto* given = value.is_object() ? dynamic_cast<XmlNodeObject*>(value.as_object()) : nullptr;
  if (given == nullptr) raise(errors::kTypeMismatch);
  if (given->tree() == tree) return given->node();
  Node* copy = tree->document->copy(*given->tree()->document, given->node(), true);
  given->tree()->document->remove(given->node());
  given->tree()->changed();
  given->move_to(tree, copy);
  return copy;
}

void XmlNodeBase::must_be(Kind wanted) const {
  if (kind() != wanted) raise(errors::kNoSuchMember);
}

void XmlNodeBase::must_hold_text() const {
  const Kind mine = kind();
  if (mine != Kind::Text && mine != Kind::CData && mine != Kind::Comment) {
    raise(errors::kNoSuchMember);
  }
}

Value XmlNodeBase::value_of(Node* node) const {
  return node_object(tree_, node);
}

Value XmlNodeBase::node_name(const Call&) {
  return Value::text(document().name(node_));
}

Value XmlNodeBase::base_name(const Call&) {
  if (kind() != Kind::Element && kind() != Kind::Attribute) {
    return Value::text(kind() == Kind::Instruction ? document().name(node_) : "");
  }
  const std::string name = document().name(node_);
  return Value::text(name.substr(name.find(':') + 1));
}

Value XmlNodeBase::prefix(const Call&) {
  const std::string name = document().name(node_);
  const std::size_t colon = name.find(':');
  return Value::text(colon == std::string::npos ? "" : name.substr(0, colon));
}

Value XmlNodeBase::namespace_uri(const Call&) {
  return Value::text(document().namespace_name(node_));
}

Value XmlNodeBase::node_type(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(kind()));
}

Value XmlNodeBase::node_type_string(const Call&) {
  return Value::text(type_words(kind()));
}

Value XmlNodeBase::node_value(const Call& call) {
  if (call.assigns()) {
    document().set_value(node_, joined_text(call.assigned()).view());
    tree_->changed();
    return {};
  }
  const std::optional<std::string> value = document().value(node_);
  return value ? Value::text(*value) : Value::null();
}

Value XmlNodeBase::typed_value(const Call& call) {
  const auto found = tree_->data_types.find(node_);
  const std::string type = found == tree_->data_types.end() ? "" : found->second;
  if (!call.assigns()) {
    const bool holds = kind() == Kind::Element || document().value(node_).has_value();
    return holds ? of_type(document().text(node_), type) : Value::null();
  }
  document().set_text(node_, typed_text(plain_value(call.assigned()), type));
  tree_->changed();
  return {};
}

// Kept beside the node; "" and Null name no type.
Value XmlNodeBase::data_type(const Call& call) {
  if (call.assigns()) {
    tree_->data_types[node_] = lowered_ascii(joined_text(call.assigned()).view());
    return {};
  }
  const auto found = tree_->data_types.find(node_);
  const bool known = found != tree_->data_types.end() && !found->second.empty();
  return known ? Value::text(found->second) : Value::null();
}

Value XmlNodeBase::text(const Call& call) {
  if (call.assigns()) {
    document().set_text(node_, joined_text(call.assigned()).view());
    tree_->changed();
    return {};
  }
  const std::string text = document().text(node_);
  return Value::text(tree_->keep_white_space ? std::string_view(text) : without_outer_space(text));
}

Value XmlNodeBase::xml(const Call&) {
  if (kind() == Kind::Document) return Value::text(tree_->text());
  return Value::text(without_outer_space(document().xml(node_)));
}

Value XmlNodeBase::parent_node(const Call&) {
  return value_of(document().parent(node_));
}

Value XmlNodeBase::first_child(const Call&) {
  const XmlNodes all = document().children(node_);
  return all.empty() ? Value::nothing() : value_of(all.front());
}

Value XmlNodeBase::last_child(const Call&) {
  const XmlNodes all = document().children(node_);
  return all.empty() ? Value::nothing() : value_of(all.back());
}

Value XmlNodeBase::next_sibling(const Call&) {
  return value_of(document().next(node_));
}

Value XmlNodeBase::previous_sibling(const Call&) {
  return value_of(document().previous(node_));
}

Value XmlNodeBase::child_nodes(const Call& call) {
  const Value list = live_node_list(
      tree_, [tree = tree_.get(), node = node_] { return tree->document->children(node); });
  return call.has(0) ? list.as_object()->invoke(kDefaultMember, CallKind::Get, call.arguments())
                     : list;
}

Value XmlNodeBase::attributes(const Call& call) {
  if (kind() != Kind::Element) return Value::nothing();
  const Value map = attribute_map(tree_, node_);
  return call.has(0) ? map.as_object()->invoke(kDefaultMember, CallKind::Get, call.arguments())
                     : map;
}

Value XmlNodeBase::owner_document(const Call&) {
  return kind() == Kind::Document ? Value::nothing() : value_of(document().root());
}

Value XmlNodeBase::has_child_nodes(const Call&) {
  return Value::boolean(!document().children(node_).empty());
}

Value XmlNodeBase::append_child(const Call& call) {
  Node* given = node_for(tree_, call.at(0));
  document().insert(node_, given, nullptr);
  tree_->changed();
  return value_of(given);
}

XmlNodeBase::Node* XmlNodeBase::child_given(const Value& value) const {
  auto* given = value.is_object() ? dynamic_cast<XmlNodeObject*>(value.as_object()) : nullptr;
  if (given == nullptr) raise(errors::kTypeMismatch);
  if (given->tree() != tree_ || document().parent(given->node()) != node_) raise(kNoChild);
  return given->node();
}

// insertBefore(node, child): at the end where there is no child to stand before.
Value XmlNodeBase::insert_before(const Call& call) {
  const Value& place = call.at(1);
  const bool at_end =
      place.is_null() || place.is_empty() || (place.is_object() && place.as_object() == nullptr);
  Node* before = at_end ? nullptr : child_given(place);
  Node* given = node_for(tree_, call.at(0));
  document().insert(node_, given, before);
  tree_->changed();
  return value_of(given);
}

// replaceChild(new, old) answers the old one.
Value XmlNodeBase::replace_child(const Call& call) {
  Node* old = child_given(call.at(1));
  Node* given = node_for(tree_, call.at(0));
  Node* after = document().next(old);
  if (given == old) return value_of(old);
  if (given == after) after = document().next(given);
  document().remove(old);
  try {
    document().insert(node_, given, after);
  } catch (const ScriptError&) {  // passed on; nothing is replaced then
    document().insert(node_, old, after);
    throw;
  }
  tree_->changed();
  return value_of(old);
}

Value XmlNodeBase::remove_child(const Call& call) {
  Node* child = child_given(call.at(0));
  document().remove(child);
  tree_->changed();
  return value_of(child);
}

Value XmlNodeBase::clone_node(const Call& call) {
  const bool deep = to_boolean(call.at(0));
  if (kind() == Kind::Document) {
    auto tree = std::make_shared<XmlTree>(tree_->services);
    tree->be_set_as(*tree_);
    for (Node* each : document().children(node_)) {
      if (!deep || document().kind(each) == Kind::DocumentType) continue;
      tree->document->insert(tree->document->root(), tree->document->copy(document(), each, true),
                             nullptr);
    }
    tree->changed();
    return node_object(tree, tree->document->root());
  }
  Node* copy = document().copy(document(), node_, deep);
  tree_->changed();
  return value_of(copy);
}

std::vector<XmlNodeBase::Node*> XmlNodeBase::selected(const Call& call) {
  return tree_->selected(node_, call.text(0));
}

Value XmlNodeBase::select_nodes(const Call& call) {
  return fixed_node_list(tree_, selected(call));
}

Value XmlNodeBase::select_single_node(const Call& call) {
  const XmlNodes found = selected(call);
  return found.empty() ? Value::nothing() : value_of(found.front());
}

Value XmlNodeBase::elements_by_tag_name(const Call& call) {
  return live_node_list(tree_, [tree = tree_.get(), node = node_, name = call.text(0)] {
    XmlNodes out;
    add_elements(*tree->document, node, name, out);
    return out;
  });
}

// Texts side by side become one.
Value XmlNodeBase::normalize(const Call&) {
  XmlNodes waiting{node_};
  while (!waiting.empty()) {
    Node* parent = waiting.back();
    waiting.pop_back();
    Node* last = nullptr;
    for (Node* each : document().children(parent)) {
      const bool is_text = document().kind(each) == Kind::Text;
      if (is_text && last != nullptr) {
        document().set_value(last, *document().value(last) + *document().value(each));
        document().remove(each);
        continue;
      }
      last = is_text ? each : nullptr;
      if (document().kind(each) == Kind::Element) waiting.push_back(each);
    }
  }
  tree_->changed();
  return {};
}

Value XmlNodeBase::parsed(const Call&) {
  return Value::boolean(true);
}

XmlNodeObject::XmlNodeObject(XmlTreeRef tree, Node* node) : TabledObject(std::move(tree), node) {
  tree_->objects[node_] = this;
}

XmlNodeObject::~XmlNodeObject() {
  tree_->objects.erase(node_);
}

void XmlNodeObject::move_to(const XmlTreeRef& tree, Node* node) {
  const auto type = tree_->data_types.find(node_);
  if (type != tree_->data_types.end()) tree->data_types[node] = type->second;
  tree_->objects.erase(node_);
  tree_ = tree;
  node_ = node;
  tree_->objects[node_] = this;
}

std::string_view XmlNodeObject::type_name() const {
  switch (kind()) {
    case Kind::Element:
      return "IXMLDOMElement";
    case Kind::Attribute:
      return "IXMLDOMAttribute";
    case Kind::Text:
      return "IXMLDOMText";
    case Kind::CData:
      return "IXMLDOMCDATASection";
    case Kind::Instruction:
      return "IXMLDOMProcessingInstruction";
    case Kind::Comment:
      return "IXMLDOMComment";
    case Kind::Fragment:
      return "IXMLDOMDocumentFragment";
    case Kind::DocumentType:
      return "IXMLDOMDocumentType";
    case Kind::EntityReference:
      return "IXMLDOMEntityReference";
    case Kind::Document:
      break;
  }
  return "IXMLDOMNode";
}

std::span<const Member<XmlNodeObject>> XmlNodeObject::members() {
  using N = XmlNodeObject;
  static constexpr auto kMembers = with_node_members<N>({
      {"getAttribute", &N::attribute, 1, 1},
      {"setAttribute", &N::set_attribute, 2, 2},
      {"removeAttribute", &N::remove_attribute, 1, 1},
      {"getAttributeNode", &N::attribute_node, 1, 1},
      {"setAttributeNode", &N::set_attribute_node, 1, 1},
      {"removeAttributeNode", &N::remove_attribute_node, 1, 1},
      {"tagName", &N::tag_name},
      {"name", &N::attribute_name},
      {"value", &N::attribute_value, 0, 0, Access::Both},
      {"specified", &N::specified},
      {"data", &N::data, 0, 0, Access::Both},
      {"length", &N::length},
      {"target", &N::target},
      {"appendData", &N::append_data, 1, 1},
      {"substringData", &N::substring_data, 2, 2},
      {"insertData", &N::insert_data, 2, 2},
      {"deleteData", &N::delete_data, 2, 2},
      {"replaceData", &N::replace_data, 3, 3},
      {"splitText", &N::split_text, 1, 1},
  });
  return kMembers;
}

// Null where the element has none of this name.
Value XmlNodeObject::attribute(const Call& call) {
  must_be(Kind::Element);
  const std::string name = call.text(0);
  if (const Node* found = document().attribute(node_, name)) {
    return Value::text(document().value(found).value_or(""));
  }
  const std::optional<std::string> declared = document().declared_namespace(node_, name);
  return declared ? Value::text(*declared) : Value::null();
}

Value XmlNodeObject::set_attribute(const Call& call) {
  must_be(Kind::Element);
  document().set_attribute(node_, call.text(0), joined_text(call.at(1)).view());
  tree_->changed();
  return {};
}

Value XmlNodeObject::remove_attribute(const Call& call) {
  must_be(Kind::Element);
  Node* found = document().attribute(node_, call.text(0));
  if (found != nullptr) document().remove(found);
  tree_->changed();
  return {};
}

Value XmlNodeObject::attribute_node(const Call& call) {
  must_be(Kind::Element);
  return value_of(document().attribute(node_, call.text(0)));
}

// Answers the attribute whose place it took, or Nothing.
Value XmlNodeObject::set_attribute_node(const Call& call) {
  must_be(Kind::Element);
  Node* given = node_for(tree_, call.at(0));
  if (document().kind(given) != Kind::Attribute) raise(errors::kTypeMismatch);
  Node* old = document().attribute(node_, document().name(given));
  document().attach_attribute(node_, given);
  tree_->changed();
  return old == given ? Value::nothing() : value_of(old);
}

Value XmlNodeObject::remove_attribute_node(const Call& call) {
  must_be(Kind::Element);
  Node* given = node_for(tree_, call.at(0));
  if (document().attribute(node_, document().name(given)) != given) raise(kNoChild);
  document().remove(given);
  tree_->changed();
  return value_of(given);
}

Value XmlNodeObject::tag_name(const Call& call) {
  must_be(Kind::Element);
  return node_name(call);
}

Value XmlNodeObject::attribute_name(const Call& call) {
  if (kind() != Kind::DocumentType) must_be(Kind::Attribute);
  return node_name(call);
}

Value XmlNodeObject::attribute_value(const Call& call) {
  must_be(Kind::Attribute);
  return node_value(call);
}

Value XmlNodeObject::specified(const Call&) {
  return Value::boolean(true);
}

Value XmlNodeObject::data(const Call& call) {
  if (kind() != Kind::Instruction) must_hold_text();
  return node_value(call);
}

Value XmlNodeObject::length(const Call&) {
  must_hold_text();
  const Text text(document().value(node_).value_or(""));
  return Value::long_integer(static_cast<std::int32_t>(text.length()));
}

Value XmlNodeObject::target(const Call& call) {
  must_be(Kind::Instruction);
  return node_name(call);
}

}  // namespace rk::pagehost
