// Any bytes as an XML document: parsing must end with a document or a reason, a document must come
// back from its own text, and what scripts do with its nodes must leave it whole. What stands
// behind a zero byte is selected from it.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "adapters/xml/documents.h"
#include "fuzz/checks.h"
#include "value/script_error.h"

namespace {

using rk::fuzz::must;
using rk::platform::XmlDocument;
using rk::platform::XmlFault;
using rk::platform::XmlKind;
using rk::platform::XmlNode;

std::unique_ptr<XmlDocument> parsed(std::string_view text, bool keep) {
  auto result = rk::xml::Documents().parse(text, keep);
  if (const auto* fault = std::get_if<XmlFault>(&result)) {
    must(!fault->reason.empty());
    return nullptr;
  }
  return std::move(std::get<std::unique_ptr<XmlDocument>>(result));
}

std::string text_of(XmlDocument& document) {
  std::string out;
  for (const XmlNode* each : document.children(document.root())) {
    if (document.kind(each) != XmlKind::DocumentType) out += document.xml(each);
  }
  return out;
}

// Every node once; texts, names and neighbours agree with the list of children.
void check_nodes(XmlDocument& document, XmlNode* parent) {
  const std::vector<XmlNode*> children = document.children(parent);
  for (std::size_t i = 0; i < children.size(); ++i) {
    must(document.parent(children[i]) == parent);
    must(document.next(children[i]) == (i + 1 < children.size() ? children[i + 1] : nullptr));
    must(!document.name(children[i]).empty());
    document.text(children[i]);
    check_nodes(document, children[i]);
  }
}

void change(XmlDocument& document) {
  try {
    for (XmlNode* each : document.select(document.root(), "//*", {})) {
      document.set_attribute(each, "k", "v");
      XmlNode* copy = document.copy(document, each, true);
      document.insert(each, copy, nullptr);
      document.set_text(copy, "t");
      if (document.parent(each) != document.root()) document.remove(each);
    }
  } catch (const rk::ScriptError&) {  // too deep or too much: refused, and still whole
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool started = [] {
    rk::xml::start_xml();
    return true;
  }();
  must(started);
  constexpr std::size_t kMostBytes = 16384;
  const std::string_view all(reinterpret_cast<const char*>(data),
                             size < kMostBytes ? size : kMostBytes);
  const std::size_t zero = all.find('\0');
  const auto document = parsed(all.substr(0, zero), true);
  parsed(all.substr(0, zero), false);
  if (!document) return 0;
  check_nodes(*document, document->root());
  if (zero != std::string_view::npos) {
    try {
      document->select(document->root(), all.substr(zero + 1), {{"p", "urn:p"}});
    } catch (const rk::ScriptError&) {  // no expression
    }
  }
  const bool has_entities = all.find("<!") != std::string_view::npos;
  if (!has_entities) must(parsed(text_of(*document), true) != nullptr);
  change(*document);
  check_nodes(*document, document->root());
  return 0;
}
