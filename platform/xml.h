// XML documents as trees, for the DOM objects of scripts. Text is UTF-8 throughout.
//
// Nodes belong to their document and live exactly as long as it, whether they hang in its tree or
// were taken out of it, so that a handle never dangles while the document is held. One document
// belongs to one thread at a time; several threads may parse.
#ifndef RK_PLATFORM_XML_H_
#define RK_PLATFORM_XML_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace rk::platform {

struct XmlNode;  // the adapter's own

// With the numbers that scripts know.
enum class XmlKind : std::uint8_t {
  Element = 1,
  Attribute = 2,
  Text = 3,
  CData = 4,
  EntityReference = 5,
  Instruction = 7,
  Comment = 8,
  Document = 9,
  DocumentType = 10,
  Fragment = 11,
};

// Why a text is no document.
struct XmlFault {
  enum class Kind : std::uint8_t { Malformed, NoRoot, TagMismatch, BadCharacter, TooLarge };
  Kind kind = Kind::Malformed;
  std::string reason;
  int line = 0;    // from 1
  int column = 0;  // from 1
};

// Prefixes of an XPath expression and the names that they stand for.
using XmlPrefixes = std::vector<std::pair<std::string, std::string>>;

class XmlDocument {
 public:
  virtual ~XmlDocument() = default;

  // The document itself as a node. An XML declaration is its first child, an Instruction "xml".
  virtual XmlNode* root() = 0;
  // What the document takes, about; for the page's bound.
  virtual std::size_t bytes() const = 0;

  virtual XmlKind kind(const XmlNode* node) const = 0;
  // With its prefix; "#text" and its like where the kind has no names.
  virtual std::string name(const XmlNode* node) const = 0;
  virtual std::string namespace_name(const XmlNode* node) const = 0;
  // Nothing for an element, a document and their like.
  virtual std::optional<std::string> value(const XmlNode* node) const = 0;
  // The text of the node and all beneath it.
  virtual std::string text(const XmlNode* node) const = 0;
  virtual std::string xml(const XmlNode* node) const = 0;

  // Null at an end. Attributes have no parent and no neighbours, and nothing is beneath them.
  virtual XmlNode* parent(const XmlNode* node) const = 0;
  virtual XmlNode* next(const XmlNode* node) const = 0;
  virtual XmlNode* previous(const XmlNode* node) const = 0;
  virtual std::vector<XmlNode*> children(const XmlNode* node) const = 0;
  virtual std::vector<XmlNode*> attributes(const XmlNode* element) const = 0;
  virtual XmlNode* attribute(const XmlNode* element, std::string_view name) const = 0;  // or null
  // A declaration of a namespace, "xmlns" or "xmlns:p", among the element's attributes.
  virtual std::optional<std::string> declared_namespace(const XmlNode* element,
                                                        std::string_view name) const = 0;

  // A new node outside of the tree. Raises 5 for a kind that cannot be made, -1072896760 for what
  // is no name.
  virtual XmlNode* create(XmlKind kind, std::string_view name, std::string_view namespace_name,
                          std::string_view value) = 0;
  // A copy, outside of the tree, of a node of this or another document.
  virtual XmlNode* copy(const XmlDocument& from, const XmlNode* node, bool deep) = 0;
  virtual void set_value(XmlNode* node, std::string_view value) = 0;
  virtual void set_text(XmlNode* node, std::string_view text) = 0;
  virtual void set_attribute(XmlNode* element, std::string_view name, std::string_view value) = 0;
  // Puts an attribute that was created by itself in the place of the element's of that name.
  virtual void attach_attribute(XmlNode* element, XmlNode* attribute) = 0;
  // Before null: at the end. A fragment gives its children. Raises -2147467259 where the node
  // cannot stand there.
  virtual void insert(XmlNode* parent, XmlNode* node, XmlNode* before) = 0;
  virtual void remove(XmlNode* node) = 0;  // out of the tree

  // In document order. Raises -2147467259 with the reason where the expression cannot be used or
  // takes too long.
  virtual std::vector<XmlNode*> select(const XmlNode* from, std::string_view xpath,
                                       const XmlPrefixes& prefixes) = 0;
};

class Xml {
 public:
  virtual ~Xml() = default;
  virtual std::unique_ptr<XmlDocument> empty_document() const = 0;
  // Nothing outside of the text is read, whatever it names. The encoding that it declares is not
  // looked at: it is UTF-8.
  virtual std::variant<std::unique_ptr<XmlDocument>, XmlFault> parse(
      std::string_view utf8, bool keep_white_space) const = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_XML_H_
