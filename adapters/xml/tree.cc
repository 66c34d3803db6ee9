#include "adapters/xml/tree.h"

#include <libxml/tree.h>
#include <libxml/valid.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <new>

#include "adapters/xml/documents.h"
#include "adapters/xml/white_space.h"
#include "platform/page.h"
#include "value/script_error.h"

namespace rk::xml {
namespace {

using platform::XmlKind;

constexpr std::size_t kNodeBytes = sizeof(xmlNode) + 32;  // with what the allocator adds
constexpr KnownError kBadName{-1072896760, "A name contained an invalid character."};

xmlNode* of(platform::XmlNode* node) {
  return reinterpret_cast<xmlNode*>(node);
}
// libxml2 has no const; nothing is changed through it.
xmlNode* of(const platform::XmlNode* node) {
  return of(const_cast<platform::XmlNode*>(node));
}
platform::XmlNode* as_node(void* node) {
  return static_cast<platform::XmlNode*>(node);
}
const xmlChar* chars(const std::string& text) {
  return reinterpret_cast<const xmlChar*>(text.c_str());
}
std::string text_from(const xmlChar* text) {
  return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

[[noreturn]] void refuse(std::string words) {
  throw ScriptError(errors::kSqlFailure, std::move(words));
}

// Texts of C end at a zero, which XML has not anyway.
std::string without_zeros(std::string_view text) {
  std::string out(text);
  std::erase(out, '\0');
  return out;
}

template <class T>
T* made_or_throw(T* made) {
  if (made == nullptr) throw std::bad_alloc();
  return made;
}

bool is_element(const xmlNode* node) {
  return node->type == XML_ELEMENT_NODE;
}

bool holds_children(const xmlNode* node) {
  return is_element(node) || node->type == XML_DOCUMENT_NODE ||
         node->type == XML_DOCUMENT_FRAG_NODE;
}

// "p:name", where the element's or attribute's namespace has a prefix.
std::string qualified(const xmlNs* space, const xmlChar* name) {
  if (space == nullptr || space->prefix == nullptr) return text_from(name);
  return text_from(space->prefix) + ":" + text_from(name);
}

std::string attribute_text(const xmlAttr* attribute) {
  xmlChar* text =
      xmlNodeGetContent(const_cast<xmlNode*>(reinterpret_cast<const xmlNode*>(attribute)));
  std::string out = text_from(text);
  xmlFree(text);
  return out;
}

int depth_of(const xmlNode* node) {
  int depth = 0;
  for (; node != nullptr; node = node->parent) ++depth;
  return depth;
}

int height_of(const xmlNode* top) {
  int height = 1;
  int most = 1;
  for (const xmlNode* node = top;;) {
    if (holds_children(node) && node->children != nullptr) {
      node = node->children;
      most = std::max(most, ++height);
      continue;
    }
    while (node != top && node->next == nullptr) {
      node = node->parent;
      --height;
    }
    if (node == top) return most;
    node = node->next;
  }
}

// Hangs a node in; libxml2's own way would merge texts that stand side by side and free one.
void hang_in(xmlNode* parent, xmlNode* node, xmlNode* before) {
  node->parent = parent;
  node->next = before;
  node->prev = before == nullptr ? parent->last : before->prev;
  (node->prev == nullptr ? parent->children : node->prev->next) = node;
  (before == nullptr ? parent->last : before->prev) = node;
}

std::pair<std::string, std::string> prefix_and_name(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) return {"", std::string(name)};
  return {std::string(name.substr(0, colon)), std::string(name.substr(colon + 1))};
}

void must_be_name(const std::string& name) {
  if (name.empty() || xmlValidateQName(chars(name), 0) != 0) raise(kBadName);
}

}  // namespace

Tree::Tree(_xmlDoc* document, std::size_t bytes) : document_(document), bytes_(bytes) {}

Tree::~Tree() {
  for (xmlNode* node : loose_) {
    if (node->type == XML_ATTRIBUTE_NODE) {
      xmlFreeProp(reinterpret_cast<xmlAttr*>(node));
    } else {
      xmlFreeNode(node);
    }
  }
  xmlFreeDoc(document_);
  for (xmlNs* space : namespaces_) xmlFreeNs(space);
}

Tree::Node* Tree::root() {
  return as_node(document_);
}

Tree::Kind Tree::kind(const Node* node) const {
  switch (of(node)->type) {
    case XML_ATTRIBUTE_NODE:
      return Kind::Attribute;
    case XML_TEXT_NODE:
      return Kind::Text;
    case XML_CDATA_SECTION_NODE:
      return Kind::CData;
    case XML_ENTITY_REF_NODE:
      return Kind::EntityReference;
    case XML_PI_NODE:
      return Kind::Instruction;
    case XML_COMMENT_NODE:
      return Kind::Comment;
    case XML_DOCUMENT_NODE:
      return Kind::Document;
    case XML_DTD_NODE:
    case XML_DOCUMENT_TYPE_NODE:
      return Kind::DocumentType;
    case XML_DOCUMENT_FRAG_NODE:
      return Kind::Fragment;
    default:
      return Kind::Element;
  }
}

std::string Tree::name(const Node* node) const {
  const xmlNode* given = of(node);
  switch (kind(node)) {
    case Kind::Element:
      return qualified(given->ns, given->name);
    case Kind::Attribute:
      return qualified(reinterpret_cast<const xmlAttr*>(given)->ns, given->name);
    case Kind::Text:
      return "#text";
    case Kind::CData:
      return "#cdata-section";
    case Kind::Comment:
      return "#comment";
    case Kind::Document:
      return "#document";
    case Kind::Fragment:
      return "#document-fragment";
    default:
      return text_from(given->name);
  }
}

std::string Tree::namespace_name(const Node* node) const {
  const xmlNode* given = of(node);
  const xmlNs* space = nullptr;
  if (is_element(given)) space = given->ns;
  if (given->type == XML_ATTRIBUTE_NODE) space = reinterpret_cast<const xmlAttr*>(given)->ns;
  return space == nullptr ? std::string() : text_from(space->href);
}

std::optional<std::string> Tree::value(const Node* node) const {
  const xmlNode* given = of(node);
  switch (kind(node)) {
    case Kind::Attribute:
      return attribute_text(reinterpret_cast<const xmlAttr*>(given));
    case Kind::Text:
    case Kind::CData:
    case Kind::Comment:
    case Kind::Instruction:
      return text_from(given->content);
    default:
      return std::nullopt;
  }
}

Tree::Node* Tree::parent(const Node* node) const {
  const xmlNode* given = of(node);
  return given->type == XML_ATTRIBUTE_NODE ? nullptr : as_node(given->parent);
}

Tree::Node* Tree::next(const Node* node) const {
  const xmlNode* given = of(node);
  return given->type == XML_ATTRIBUTE_NODE ? nullptr : as_node(given->next);
}

Tree::Node* Tree::previous(const Node* node) const {
  const xmlNode* given = of(node);
  return given->type == XML_ATTRIBUTE_NODE ? nullptr : as_node(given->prev);
}

std::vector<Tree::Node*> Tree::children(const Node* node) const {
  std::vector<Node*> out;
  if (!holds_children(of(node))) return out;
  for (xmlNode* each = of(node)->children; each != nullptr; each = each->next) {
    out.push_back(as_node(each));
  }
  return out;
}

std::vector<Tree::Node*> Tree::attributes(const Node* element) const {
  std::vector<Node*> out;
  if (!is_element(of(element))) return out;
  for (xmlAttr* each = of(element)->properties; each != nullptr; each = each->next) {
    out.push_back(as_node(each));
  }
  return out;
}

Tree::Node* Tree::attribute(const Node* element, std::string_view name) const {
  for (Node* each : attributes(element)) {
    if (this->name(each) == name) return each;
  }
  return nullptr;
}

std::optional<std::string> Tree::declared_namespace(const Node* element,
                                                    std::string_view name) const {
  if (!is_element(of(element)) || !name.starts_with("xmlns")) return std::nullopt;
  const auto [lead, prefix] = prefix_and_name(name);
  if (name != "xmlns" && lead != "xmlns") return std::nullopt;
  for (const xmlNs* each = of(element)->nsDef; each != nullptr; each = each->next) {
    if (text_from(each->prefix) == (lead.empty() ? "" : prefix)) return text_from(each->href);
  }
  return std::nullopt;
}

_xmlNode* Tree::loose(_xmlNode* made, std::size_t text_bytes) {
  made_or_throw(made);
  loose_.insert(made);
  bytes_ += kNodeBytes + text_bytes;
  return made;
}

_xmlNode* Tree::made(Kind kind, const std::string& name, const std::string& value) {
  switch (kind) {
    case Kind::Element:
      return xmlNewDocNode(document_, nullptr, chars(name), nullptr);
    case Kind::Attribute:
      return reinterpret_cast<xmlNode*>(xmlNewDocProp(document_, chars(name), nullptr));
    case Kind::Text:
      return xmlNewDocText(document_, chars(value));
    case Kind::CData:
      return xmlNewCDataBlock(document_, chars(value), static_cast<int>(value.size()));
    case Kind::Comment:
      return xmlNewDocComment(document_, chars(value));
    case Kind::Instruction:
      return xmlNewDocPI(document_, chars(name), chars(value));
    case Kind::EntityReference:
      return xmlNewReference(document_, chars(name));
    case Kind::Fragment:
      return xmlNewDocFragment(document_);
    default:
      raise(errors::kInvalidCall);
  }
}

Tree::Node* Tree::create(Kind kind, std::string_view name, std::string_view namespace_name,
                         std::string_view value) {
  const std::string given_name = without_zeros(name);
  const std::string given_value = without_zeros(value);
  const bool named = kind == Kind::Element || kind == Kind::Attribute ||
                     kind == Kind::Instruction || kind == Kind::EntityReference;
  if (named) must_be_name(given_name);
  if (bytes_ + given_value.size() > kMaxDocumentBytes) raise(errors::kOutOfMemory);
  xmlNode* node = loose(made(kind, given_name, given_value), given_value.size());
  if (!namespace_name.empty()) name_by(node, given_name, namespace_name);
  if (kind == Kind::Attribute) {
    set_attribute_text(reinterpret_cast<xmlAttr*>(node), given_value);
  }
  return as_node(node);
}

// Gives a new element or attribute its namespace.
void Tree::name_by(_xmlNode* node, std::string_view name, std::string_view namespace_name) {
  const auto [prefix, local] = prefix_and_name(name);
  const std::string uri = without_zeros(namespace_name);
  const xmlChar* wanted = prefix.empty() ? nullptr : chars(prefix);
  xmlNodeSetName(node, chars(local));
  if (is_element(node)) {
    xmlSetNs(node, made_or_throw(xmlNewNs(node, chars(uri), wanted)));
    return;
  }
  namespaces_.push_back(made_or_throw(xmlNewNs(nullptr, chars(uri), wanted)));
  reinterpret_cast<xmlAttr*>(node)->ns = namespaces_.back();
}

Tree::Node* Tree::copy(const XmlDocument& from, const Node* node, bool deep) {
  const auto& other = static_cast<const Tree&>(from);
  if (bytes_ + other.bytes_ > kMaxDocumentBytes) raise(errors::kOutOfMemory);
  xmlNode* given = of(node);
  if (given->type == XML_ATTRIBUTE_NODE) {
    xmlNode* attribute = of(create(Kind::Attribute, other.name(node), other.namespace_name(node),
                                   attribute_text(reinterpret_cast<xmlAttr*>(given))));
    return as_node(attribute);
  }
  constexpr int kWithAttributes = 2;
  xmlNode* made = xmlDocCopyNode(given, document_, deep ? 1 : kWithAttributes);
  return as_node(loose(made, deep ? other.bytes_ : 0));
}

void Tree::set_attribute_text(_xmlAttr* attribute, std::string_view value) {
  if (attribute->atype == XML_ATTRIBUTE_ID) xmlRemoveID(document_, attribute);
  xmlNode* text = made_or_throw(xmlNewDocText(document_, chars(without_zeros(value))));
  xmlFreeNodeList(attribute->children);  // no handle names what is beneath an attribute
  attribute->children = text;
  attribute->last = text;
  text->parent = reinterpret_cast<xmlNode*>(attribute);
  bytes_ += kNodeBytes + value.size();
}

// A text, comment or instruction takes its content as it stands.
void Tree::set_content(_xmlNode* node, std::string_view value) {
  const std::string content = without_zeros(value);
  bytes_ -= std::min(bytes_, static_cast<std::size_t>(xmlStrlen(node->content)));
  xmlNodeSetContentLen(node, chars(content), static_cast<int>(content.size()));
  bytes_ += content.size();
}

void Tree::set_value(Node* node, std::string_view value) {
  xmlNode* given = of(node);
  if (bytes_ + value.size() > kMaxDocumentBytes) raise(errors::kOutOfMemory);
  switch (kind(node)) {
    case Kind::Attribute:
      return set_attribute_text(reinterpret_cast<xmlAttr*>(given), value);
    case Kind::Text:
    case Kind::CData:
    case Kind::Comment:
    case Kind::Instruction:
      return set_content(given, value);
    default:
      refuse("This kind of node has no value");
  }
}

void Tree::set_text(Node* node, std::string_view text) {
  xmlNode* given = of(node);
  if (!is_element(given) && given->type != XML_DOCUMENT_FRAG_NODE) return set_value(node, text);
  const bool only_text = given->children != nullptr && given->children == given->last &&
                         given->children->type == XML_TEXT_NODE;
  if (only_text && !text.empty()) return set_value(as_node(given->children), text);
  while (given->children != nullptr) take_out(given->children);
  set_space_at_end(given, Space::None);
  if (!text.empty()) insert(node, create(Kind::Text, "", "", text), nullptr);
}

// xmlns="..." among the attributes: a declaration. False where the name is no such one.
bool Tree::declares(_xmlNode* element, std::string_view name, std::string_view value) {
  const auto [lead, prefix] = prefix_and_name(name);
  if (name != "xmlns" && lead != "xmlns") return false;
  const std::string uri = without_zeros(value);
  const std::string wanted = lead.empty() ? "" : prefix;
  bytes_ += kNodeBytes + uri.size();
  xmlNewNs(element, chars(uri), wanted.empty() ? nullptr : chars(wanted));
  return true;
}

void Tree::set_attribute(Node* element, std::string_view name, std::string_view value) {
  if (bytes_ + value.size() > kMaxDocumentBytes) raise(errors::kOutOfMemory);
  if (Node* found = attribute(element, name)) return set_value(found, value);
  const std::string given = without_zeros(name);
  must_be_name(given);
  if (declares(of(element), given, value)) return;
  const auto [prefix, local] = prefix_and_name(given);
  const xmlNs* space =
      prefix.empty() ? nullptr : xmlSearchNs(document_, of(element), chars(prefix));
  attach_attribute(element, create(Kind::Attribute, given,
                                   space == nullptr ? "" : text_from(space->href), value));
}

void Tree::attach_attribute(Node* element, Node* attribute) {
  auto* given = reinterpret_cast<xmlAttr*>(of(attribute));
  xmlNode* owner = of(element);
  if (given->parent == owner) return;
  if (given->parent != nullptr) refuse("The attribute belongs to another element");
  if (Node* old = this->attribute(element, name(attribute))) take_out(of(old));
  if (given->ns != nullptr) {
    xmlNs* known = xmlSearchNs(document_, owner, given->ns->prefix);
    if (known == nullptr || xmlStrEqual(known->href, given->ns->href) != 1) {
      known = made_or_throw(xmlNewNs(owner, given->ns->href, given->ns->prefix));
    }
    given->ns = known;
  }
  loose_.erase(of(attribute));
  xmlAttr** last = &owner->properties;
  xmlAttr* before = nullptr;
  for (; *last != nullptr; last = &(*last)->next) before = *last;
  *last = given;
  given->prev = before;
  given->parent = owner;
}

void Tree::must_fit(const _xmlNode* parent, const _xmlNode* node) const {
  if (!holds_children(parent)) refuse("Nothing can stand beneath this kind of node");
  if (node->type == XML_DOCUMENT_NODE || node->type == XML_ATTRIBUTE_NODE ||
      node->type == XML_DTD_NODE) {
    refuse("This kind of node cannot be inserted here");
  }
  for (const xmlNode* above = parent; above != nullptr; above = above->parent) {
    if (above == node) refuse("A node cannot stand beneath itself");
  }
  if (parent->type == XML_DOCUMENT_NODE) {
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
      refuse("This kind of node cannot be inserted here");
    }
    const xmlNode* top = xmlDocGetRootElement(document_);
    if (is_element(node) && top != nullptr && top != node) {
      refuse("Only one top level element is allowed in an XML document");
    }
  }
  if (depth_of(parent) + height_of(node) > kMaxDepth + 1) refuse("The nodes lie too deep");
}

// A declaration that already holds at the new place is not written twice.
void Tree::drop_repeated_namespaces(const _xmlNode* parent, _xmlNode* element) {
  if (!is_element(element) || !is_element(parent)) return;
  for (xmlNs** place = &element->nsDef; *place != nullptr;) {
    xmlNs* each = *place;
    const xmlNs* known = xmlSearchNs(document_, const_cast<xmlNode*>(parent), each->prefix);
    if (known != nullptr && xmlStrEqual(known->href, each->href) == 1) {
      *place = each->next;
      each->next = nullptr;
      namespaces_.push_back(each);
    } else {
      place = &each->next;
    }
  }
}

void Tree::insert(Node* parent, Node* node, Node* before) {
  xmlNode* goal = of(parent);
  xmlNode* given = of(node);
  if (before != nullptr && of(before)->parent != goal) {
    refuse("The node to insert before is no child of this node");
  }
  if (node == before) return;
  must_fit(goal, given);
  if (given->type == XML_DOCUMENT_FRAG_NODE) {
    for (Node* each : children(node)) insert(parent, each, before);
    return;
  }
  take_out(given);
  loose_.erase(given);
  hang_in(goal, given, of(before));
  drop_repeated_namespaces(goal, given);
}

void Tree::take_out(_xmlNode* node) {
  if (node->parent == nullptr) return;
  xmlUnlinkNode(node);
  set_space_before(node, Space::None);  // it stood at the place
  loose_.insert(node);
}

void Tree::remove(Node* node) {
  take_out(of(node));
}

}  // namespace rk::xml
