#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "adapters/xml/documents.h"
#include "adapters/xml/tree.h"
#include "adapters/xml/white_space.h"

namespace rk::xml {
namespace {

using platform::XmlFault;

constexpr std::size_t kNodeBytes = sizeof(xmlNode) + 32;  // with what the allocator adds

struct ParserDeleter {
  void operator()(xmlParserCtxt* parser) const { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, ParserDeleter>;

struct DocumentDeleter {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

xmlParserInput* read_nothing(const char*, const char*, xmlParserCtxt*) {
  return nullptr;
}

// What is made of a text while it is parsed; ends the parser past the bound.
struct Made {
  std::size_t bytes = 0;
  std::optional<XmlFault> first_fault;  // the ones behind it come of it

  static void add(void* context, std::size_t more) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Made& made = *static_cast<Made*>(parser->_private);
    made.bytes += more;
    if (made.bytes > kMaxDocumentBytes) xmlStopParser(parser);
  }
};

void start_element(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                   int namespaces, const xmlChar** namespace_list, int attributes, int defaulted,
                   const xmlChar** attribute_list) {
  Made::add(context, kNodeBytes * static_cast<std::size_t>(1 + namespaces + 2 * attributes));
  xmlSAX2StartElementNs(context, name, prefix, uri, namespaces, namespace_list, attributes,
                        defaulted, attribute_list);
}

void characters(void* context, const xmlChar* text, int bytes) {
  Made::add(context, kNodeBytes + static_cast<std::size_t>(bytes));
  xmlSAX2Characters(context, text, bytes);
}

void cdata(void* context, const xmlChar* text, int bytes) {
  Made::add(context, kNodeBytes + static_cast<std::size_t>(bytes));
  xmlSAX2CDataBlock(context, text, bytes);
}

XmlFault::Kind kind_of(int code) {
  switch (code) {
    case XML_ERR_DOCUMENT_EMPTY:
    case XML_ERR_DOCUMENT_END:
      return XmlFault::Kind::NoRoot;
    case XML_ERR_TAG_NAME_MISMATCH:
    case XML_ERR_TAG_NOT_FINISHED:
      return XmlFault::Kind::TagMismatch;
    case XML_ERR_INVALID_CHAR:
    case XML_ERR_INVALID_ENCODING:
      return XmlFault::Kind::BadCharacter;
    case XML_ERR_ENTITY_LOOP:
      return XmlFault::Kind::TooLarge;
    default:
      return XmlFault::Kind::Malformed;
  }
}

void take_fault(void* context, xmlError* error) {
  Made& made = *static_cast<Made*>(static_cast<xmlParserCtxt*>(context)->_private);
  if (made.first_fault || error->level != XML_ERR_FATAL) return;
  XmlFault fault;
  fault.kind = kind_of(error->code);
  fault.reason = error->message == nullptr ? "" : error->message;
  while (!fault.reason.empty() && fault.reason.back() == '\n') fault.reason.pop_back();
  fault.line = error->line;
  fault.column = error->int2;
  made.first_fault = std::move(fault);
}

XmlFault no_document() {
  XmlFault fault;
  fault.kind = XmlFault::Kind::NoRoot;
  fault.reason = "The text is no XML document.";
  return fault;
}

XmlFault too_large() {
  XmlFault fault;
  fault.kind = XmlFault::Kind::TooLarge;
  fault.reason = "The document is too large.";
  return fault;
}

bool is_blank(const xmlNode* node) {
  return node->type == XML_TEXT_NODE && xmlIsBlankNode(node) == 1;
}

xmlNode* following(const xmlNode* node, const xmlNode* top) {
  if (node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
  while (node != top && node->next == nullptr) node = node->parent;
  return node == top ? nullptr : node->next;
}

// So that the document is written as it was laid out.
void remember_white_space(const xmlNode* blank) {
  const bool breaks = xmlStrchr(blank->content, '\n') != nullptr;
  const Space space = breaks ? Space::Line : Space::Blank;
  if (blank->next != nullptr) {
    set_space_before(blank->next, space);
  } else if (blank->prev != nullptr) {
    set_space_at_end(blank->parent, space);
  }
}

// White space between elements is no text, but where xml:space keeps it.
void drop_white_space(xmlDoc* document) {
  xmlNode* top = xmlDocGetRootElement(document);
  for (xmlNode* node = top; node != nullptr;) {
    xmlNode* next = following(node, top);
    if (is_blank(node) && xmlNodeGetSpacePreserve(node->parent) != 1) {
      remember_white_space(node);
      xmlUnlinkNode(node);
      xmlFreeNode(node);
    }
    node = next;
  }
}

// What entities brought is counted too.
std::size_t bytes_of(xmlDoc* document) {
  std::size_t bytes = kNodeBytes;
  xmlNode* top = xmlDocGetRootElement(document);
  for (const xmlNode* node = top; node != nullptr; node = following(node, top)) {
    bytes += kNodeBytes;
    if (node->type != XML_ELEMENT_NODE) {
      bytes += node->content == nullptr ? 0 : static_cast<std::size_t>(xmlStrlen(node->content));
      continue;
    }
    for (const xmlAttr* each = node->properties; each != nullptr; each = each->next) {
      bytes += 2 * kNodeBytes;
      if (each->children != nullptr && each->children->content != nullptr) {
        bytes += static_cast<std::size_t>(xmlStrlen(each->children->content));
      }
    }
  }
  return bytes;
}

// The declaration is a node to scripts.
void add_declaration(xmlDoc* document, std::string_view text) {
  constexpr std::string_view kOpening = "<?xml";
  if (!text.starts_with(kOpening)) return;
  // "<?xml-stylesheet" and its like are instructions of their own.
  if (text.size() == kOpening.size() || static_cast<unsigned char>(text[kOpening.size()]) > ' ') {
    return;
  }
  const std::size_t end = text.find("?>");
  if (end == std::string_view::npos) return;
  std::string_view inside = text.substr(kOpening.size(), end - kOpening.size());
  while (!inside.empty() && static_cast<unsigned char>(inside.front()) <= ' ') {
    inside.remove_prefix(1);
  }
  xmlNode* declaration =
      xmlNewDocPI(document, BAD_CAST "xml", BAD_CAST std::string(inside).c_str());
  if (declaration == nullptr) throw std::bad_alloc();
  if (document->children == nullptr) {
    xmlAddChild(reinterpret_cast<xmlNode*>(document), declaration);
  } else {
    xmlAddPrevSibling(document->children, declaration);
  }
}

}  // namespace

void start_xml() {
  xmlInitParser();
  xmlSetExternalEntityLoader(read_nothing);
}

std::unique_ptr<platform::XmlDocument> Documents::empty_document() const {
  xmlDoc* document = xmlNewDoc(BAD_CAST "1.0");
  if (document == nullptr) throw std::bad_alloc();
  return std::make_unique<Tree>(document, kNodeBytes);
}

std::variant<std::unique_ptr<platform::XmlDocument>, XmlFault> Documents::parse(
    std::string_view utf8, bool keep_white_space) const {
  if (utf8.size() > kMaxTextBytes) return too_large();
  if (utf8.starts_with("\xEF\xBB\xBF")) utf8.remove_prefix(3);
  const Parser parser(xmlNewParserCtxt());
  if (!parser) throw std::bad_alloc();
  Made made;
  parser->_private = &made;
  parser->sax->startElementNs = start_element;
  parser->sax->characters = characters;
  parser->sax->ignorableWhitespace = characters;
  parser->sax->cdataBlock = cdata;
  parser->sax->serror = take_fault;
  // Entities stand for their text, which the parser bounds by what the document is long.
  constexpr int kOptions = XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_NOERROR |
                           XML_PARSE_NOWARNING | XML_PARSE_COMPACT | XML_PARSE_IGNORE_ENC;
  Document document(xmlCtxtReadMemory(parser.get(), utf8.data(), static_cast<int>(utf8.size()),
                                      nullptr, "UTF-8", kOptions));
  if (made.bytes > kMaxDocumentBytes) return too_large();
  if (!document) return made.first_fault.value_or(no_document());
  if (!keep_white_space) drop_white_space(document.get());
  const std::size_t bytes = bytes_of(document.get());
  if (bytes > kMaxDocumentBytes) return too_large();
  add_declaration(document.get(), utf8);
  return std::make_unique<Tree>(document.release(), bytes);
}

}  // namespace rk::xml
