// Tree: one document of libxml2 with everything that was ever made for it. What leaves the tree is
// kept beside it until the document goes, because handles may still name it; nothing is freed
// earlier. For documents.cc and parsing.cc.
#ifndef RK_ADAPTERS_XML_TREE_H_
#define RK_ADAPTERS_XML_TREE_H_

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "platform/xml.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the names are libxml2's
struct _xmlDoc;
struct _xmlNode;
struct _xmlAttr;
struct _xmlNs;
// NOLINTEND(bugprone-reserved-identifier)

namespace rk::xml {

class Tree final : public platform::XmlDocument {
 public:
  using Node = platform::XmlNode;
  using Kind = platform::XmlKind;

  // Owns the document of libxml2. `bytes` is what it takes already.
  Tree(_xmlDoc* document, std::size_t bytes);
  ~Tree() override;
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;

  Node* root() override;
  std::size_t bytes() const override { return bytes_; }
  Kind kind(const Node* node) const override;
  std::string name(const Node* node) const override;
  std::string namespace_name(const Node* node) const override;
  std::optional<std::string> value(const Node* node) const override;
  std::string text(const Node* node) const override;
  std::string xml(const Node* node) const override;
  Node* parent(const Node* node) const override;
  Node* next(const Node* node) const override;
  Node* previous(const Node* node) const override;
  std::vector<Node*> children(const Node* node) const override;
  std::vector<Node*> attributes(const Node* element) const override;
  Node* attribute(const Node* element, std::string_view name) const override;
  std::optional<std::string> declared_namespace(const Node* element,
                                                std::string_view name) const override;
  Node* create(Kind kind, std::string_view name, std::string_view namespace_name,
               std::string_view value) override;
  Node* copy(const XmlDocument& from, const Node* node, bool deep) override;
  void set_value(Node* node, std::string_view value) override;
  void set_text(Node* node, std::string_view text) override;
  void set_attribute(Node* element, std::string_view name, std::string_view value) override;
  void attach_attribute(Node* element, Node* attribute) override;
  void insert(Node* parent, Node* node, Node* before) override;
  void remove(Node* node) override;
  std::vector<Node*> select(const Node* from, std::string_view xpath,
                            const platform::XmlPrefixes& prefixes) override;

 private:
  _xmlNode* loose(_xmlNode* made, std::size_t text_bytes);
  _xmlNode* made(Kind kind, const std::string& name, const std::string& value);
  void name_by(_xmlNode* node, std::string_view name, std::string_view namespace_name);
  void set_attribute_text(_xmlAttr* attribute, std::string_view value);
  void set_content(_xmlNode* node, std::string_view value);
  bool declares(_xmlNode* element, std::string_view name, std::string_view value);
  void take_out(_xmlNode* node);
  void must_fit(const _xmlNode* parent, const _xmlNode* node) const;
  void drop_repeated_namespaces(const _xmlNode* parent, _xmlNode* element);

  _xmlDoc* document_;
  std::size_t bytes_;
  std::unordered_set<_xmlNode*> loose_;  // roots of what is not in the tree
  std::vector<_xmlNs*> namespaces_;      // of no element
};

}  // namespace rk::xml

#endif  // RK_ADAPTERS_XML_TREE_H_
