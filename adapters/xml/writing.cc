// Nodes as text. Not by libxml2's own writer: it gives characters of attributes as references
// where a document names no encoding, and carriage returns always.

#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <algorithm>
#include <new>

#include "adapters/xml/tree.h"
#include "adapters/xml/white_space.h"

namespace rk::xml {
namespace {

using platform::XmlNode;

xmlNode* of(const XmlNode* node) {
  return reinterpret_cast<xmlNode*>(const_cast<XmlNode*>(node));
}

std::string_view view_of(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

void write_escaped(std::string_view text, bool in_attribute, std::string& out) {
  for (const char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else if (in_attribute && c == '"') {
      out += "&quot;";
    } else if (in_attribute && (c == '\t' || c == '\n' || c == '\r')) {
      // As they stand they would be read as blanks.
      out += "&#" + std::to_string(static_cast<int>(c)) + ";";
    } else {
      out += c;
    }
  }
}

void write_name(const xmlNs* space, const xmlChar* name, std::string& out) {
  if (space != nullptr && space->prefix != nullptr) {
    out += view_of(space->prefix);
    out += ':';
  }
  out += view_of(name);
}

void write_quoted(std::string_view value, std::string& out) {
  out += "=\"";
  write_escaped(value, true, out);
  out += '"';
}

void write_attribute(const xmlAttr* attribute, std::string& out) {
  out += ' ';
  write_name(attribute->ns, attribute->name, out);
  xmlChar* value =
      xmlNodeGetContent(const_cast<xmlNode*>(reinterpret_cast<const xmlNode*>(attribute)));
  write_quoted(view_of(value), out);
  xmlFree(value);
}

void write_declarations(const xmlNode* element, std::string& out) {
  for (const xmlNs* each = element->nsDef; each != nullptr; each = each->next) {
    // The prefix "xml" is known without being declared.
    if (view_of(each->prefix) == "xml") continue;
    out += each->prefix == nullptr ? " xmlns" : " xmlns:";
    out += view_of(each->prefix);
    write_quoted(view_of(each->href), out);
  }
}

// "]]>" would end the section: it goes on in another one.
void write_cdata(std::string_view text, std::string& out) {
  out += "<![CDATA[";
  for (std::size_t end = text.find("]]>"); end != std::string_view::npos; end = text.find("]]>")) {
    out += text.substr(0, end + 2);
    out += "]]><![CDATA[";
    text.remove_prefix(end + 2);
  }
  out += text;
  out += "]]>";
}

void write_instruction(const xmlNode* node, std::string& out) {
  out += "<?";
  out += view_of(node->name);
  if (node->content != nullptr) out += ' ';
  out += view_of(node->content);
  out += "?>";
}

// Document types, and what else no script makes.
void write_by_engine(xmlNode* node, std::string& out) {
  xmlBuffer* buffer = xmlBufferCreate();
  if (buffer == nullptr) throw std::bad_alloc();
  xmlSaveCtxt* saving = xmlSaveToBuffer(buffer, "UTF-8", XML_SAVE_AS_XML | XML_SAVE_NO_DECL);
  if (saving != nullptr) {
    xmlSaveTree(saving, node);
    xmlSaveClose(saving);
  }
  out += view_of(xmlBufferContent(buffer));
  xmlBufferFree(buffer);
}

// Deeper lines stand beneath one another: a text of many short lines far down would else grow by
// two orders of magnitude.
constexpr int kMostTabs = 16;

// Space that was dropped comes back: a line of the node's own, or a blank.
void write_space(Space space, int depth, std::string& out) {
  if (space == Space::Blank) out += ' ';
  if (space != Space::Line) return;
  out += "\r\n";
  out.append(static_cast<std::size_t>(std::min(depth, kMostTabs)), '\t');
}

void write(xmlNode* node, int depth, std::string& out);

void write_children(const xmlNode* parent, int depth, std::string& out) {
  for (xmlNode* each = parent->children; each != nullptr; each = each->next) {
    write_space(space_before(each), depth, out);
    write(each, depth, out);
  }
}

// Elements lie kMaxDepth deep at most.
void write_element(const xmlNode* node, int depth, std::string& out) {
  out += '<';
  write_name(node->ns, node->name, out);
  write_declarations(node, out);
  for (const xmlAttr* each = node->properties; each != nullptr; each = each->next) {
    write_attribute(each, out);
  }
  if (node->children == nullptr) {
    out += "/>";
    return;
  }
  out += '>';
  write_children(node, depth + 1, out);
  write_space(space_at_end(node), depth, out);
  out += "</";
  write_name(node->ns, node->name, out);
  out += '>';
}

void write(xmlNode* node, int depth, std::string& out) {
  switch (node->type) {
    case XML_ELEMENT_NODE:
      return write_element(node, depth, out);
    case XML_ATTRIBUTE_NODE:
      return write_attribute(reinterpret_cast<xmlAttr*>(node), out);
    case XML_TEXT_NODE:
      return write_escaped(view_of(node->content), false, out);
    case XML_CDATA_SECTION_NODE:
      return write_cdata(view_of(node->content), out);
    case XML_COMMENT_NODE:
      out.append("<!--").append(view_of(node->content)).append("-->");
      return;
    case XML_PI_NODE:
      return write_instruction(node, out);
    case XML_ENTITY_REF_NODE:
      out.append("&").append(view_of(node->name)).append(";");
      return;
    case XML_DOCUMENT_FRAG_NODE:
      return write_children(node, depth, out);
    default:
      return write_by_engine(node, out);
  }
}

void add_text(const xmlNode* parent, std::string& out);

void add_space(Space space, std::string& out) {
  const bool parts =
      !out.empty() && std::string_view(" \t\r\n").find(out.back()) == std::string_view::npos;
  if (space != Space::None && parts) out += ' ';
}

void add_text_of(xmlNode* node, std::string& out) {
  switch (node->type) {
    case XML_ELEMENT_NODE:
      return add_text(node, out);
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
      out += view_of(node->content);
      return;
    case XML_ENTITY_REF_NODE: {
      xmlChar* text = xmlNodeGetContent(node);
      out += view_of(text);
      xmlFree(text);
      return;
    }
    default:
      return;
  }
}

void add_text(const xmlNode* parent, std::string& out) {
  for (xmlNode* each = parent->children; each != nullptr; each = each->next) {
    add_space(space_before(each), out);
    add_text_of(each, out);
  }
  add_space(space_at_end(parent), out);
}

}  // namespace

std::string Tree::xml(const Node* node) const {
  std::string out;
  write(of(node), 0, out);
  return out;
}

// A blank stands where white space was dropped.
std::string Tree::text(const Node* node) const {
  std::string out;
  switch (kind(node)) {
    case Kind::DocumentType:
      return out;
    case Kind::Element:
    case Kind::Document:
    case Kind::Fragment:
      add_text(of(node), out);
      return out;
    case Kind::EntityReference:
      add_text_of(of(node), out);
      return out;
    default:
      return value(node).value_or("");
  }
}

}  // namespace rk::xml
