// XML documents by libxml2. Nothing outside of a text is ever read: no external entity, no DTD, no
// address. Several threads may parse; start_xml() comes once, before the first of them.
#ifndef RK_ADAPTERS_XML_DOCUMENTS_H_
#define RK_ADAPTERS_XML_DOCUMENTS_H_

#include <cstddef>

#include "platform/xml.h"

namespace rk::xml {

// A text past this is no document: feeds and data of pages take kilobytes.
inline constexpr std::size_t kMaxTextBytes = std::size_t{16} << 20;
// What one document may take; a node is some 150 bytes, so that small elements count for more than
// their text.
inline constexpr std::size_t kMaxDocumentBytes = std::size_t{128} << 20;
// Elements inside one another; what walks a tree may recurse.
inline constexpr int kMaxDepth = 256;
// An expression's length; the engine recurses over its steps.
inline constexpr std::size_t kMaxXPathBytes = 1024;
// Steps of one selection, about a second of a processor.
inline constexpr unsigned long kMaxXPathSteps = 20'000'000;

void start_xml();

class Documents final : public platform::Xml {
 public:
  std::unique_ptr<platform::XmlDocument> empty_document() const override;
  std::variant<std::unique_ptr<platform::XmlDocument>, platform::XmlFault> parse(
      std::string_view utf8, bool keep_white_space) const override;
};

}  // namespace rk::xml

#endif  // RK_ADAPTERS_XML_DOCUMENTS_H_
