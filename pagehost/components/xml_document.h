// XmlDocumentObject (MSXML2.DOMDocument, Microsoft.XMLDOM): an XML document as scripts load,
// search, change and save it. Loading is done when it returns, whatever `async` says. Of the page's
// thread.
#ifndef RK_PAGEHOST_COMPONENTS_XML_DOCUMENT_H_
#define RK_PAGEHOST_COMPONENTS_XML_DOCUMENT_H_

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/components/xml_node.h"

namespace rk::pagehost {

class XmlDocumentObject final : public TabledObject<XmlDocumentObject, XmlNodeBase>,
                                public KeepableObject {
 public:
  explicit XmlDocumentObject(const XmlServices& services);
  // Of a document that is there already.
  explicit XmlDocumentObject(const XmlTreeRef& tree);
  std::string_view type_name() const override { return "DOMDocument"; }
  static std::span<const Member<XmlDocumentObject>> members();
  // In the application: each page that reads it has a copy of the document as it was stored.
  Ref<KeptObject> kept() const override;

  // As load() of bytes.
  void load_bytes(std::string_view bytes);
  void load_text(std::string_view utf8);
  // As load(): false, with the tree's problem, where the source holds no document.
  bool load_from(const Value& source);
  // Into a file, a Response, a stream or another document.
  void save_into(const Value& target) const;

 private:
  Value document_element(const Call& call);
  Value create_element(const Call& call);
  Value create_text_node(const Call& call);
  Value create_comment(const Call& call);
  Value create_cdata(const Call& call);
  Value create_instruction(const Call& call);
  Value create_attribute(const Call& call);
  Value create_fragment(const Call& call);
  Value create_entity_reference(const Call& call);
  Value create_node(const Call& call);
  Value import_node(const Call& call);
  Value load(const Call& call);
  Value load_xml(const Call& call);
  Value save(const Call& call);
  Value parse_error(const Call& call);
  Value ready_state(const Call& call);
  Value doctype(const Call& call);
  Value url(const Call& call);
  Value preserve_white_space(const Call& call);
  Value async(const Call& call);
  Value validate_on_parse(const Call& call);
  Value resolve_externals(const Call& call);
  Value set_property(const Call& call);
  Value set_language(std::string_view language);
  Value property(const Call& call);
  Value ignored(const Call& call);

  Value created(Kind kind, std::string_view name, std::string_view value,
                std::string_view namespace_name = {});
  void begin();  // a document of its own for what comes next
  bool loaded_from(const Value& source);
  bool loaded_file(const std::string& path);
  bool loaded_address(const std::string& address);
  std::string physical(std::string_view path) const;

  bool async_ = true;
  bool validate_ = true;
  bool resolve_ = true;
  std::string address_;
  std::map<std::string, Value> properties_;  // by lower-case name
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_XML_DOCUMENT_H_
