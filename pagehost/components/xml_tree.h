// XmlTree: one XML document as the DOM objects of scripts share it, with what they keep beside the
// nodes; and the reading of bytes and files into one. Of the page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_XML_TREE_H_
#define RK_PAGEHOST_COMPONENTS_XML_TREE_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagehost/components/text_stream.h"
#include "pagehost/pages/held_memory.h"
#include "pagehost/pages/programs.h"
#include "platform/http.h"
#include "platform/xml.h"
#include "value/object.h"

namespace rk::pagehost {

// What DOM objects stand on; copied into each document.
struct XmlServices {
  const platform::Xml* xml = nullptr;  // outlives the page, as the host does
  FileSystem system;
  std::string site_root;
  std::shared_ptr<platform::HttpClient> http;  // null: addresses cannot be loaded
  // The same for another page; empty: a document cannot be kept in the application.
  std::function<XmlServices(PageServices& page)> of_page = nullptr;
  bool patterns = true;  // a new document selects by XSL patterns, not by XPath
};

// Why the last load failed; number 0 where it did not.
struct XmlProblem {
  std::int32_t number = 0;
  std::string reason;
  std::string line_text;
  std::string address;
  int line = 0;
  int column = 0;
};

class XmlTree {
 public:
  explicit XmlTree(const XmlServices& given)
      : services(given),
        document(given.xml->empty_document()),
        patterns(given.patterns),
        held_(given.system.memory) {}
  // How nodes are read and selected is as in the other.
  void be_set_as(const XmlTree& other);

  // Takes the place of the document by one out of a text (UTF-8). False, with the problem noted and
  // an empty document, where it is none.
  bool read(std::string_view utf8);
  // The same of bytes, by their mark or the encoding that they declare.
  bool read_bytes(std::string_view bytes);
  bool fail(XmlProblem why);  // false

  // By the language and the prefixes that are set.
  std::vector<platform::XmlNode*> selected(const platform::XmlNode* from,
                                           std::string_view expression) const;

  // After each change, so that lists look again and the page's memory is counted.
  void changed();
  std::uint64_t changes() const { return changes_; }

  // As the file of it: with its declaration, each child of the document on a line.
  std::string text() const;
  // The same in the encoding that it declares, else in this one.
  std::string bytes(std::string_view undeclared = "utf-8") const;

  XmlServices services;
  std::unique_ptr<platform::XmlDocument> document;
  XmlProblem problem;
  platform::XmlPrefixes prefixes;
  bool keep_white_space = false;
  bool patterns;  // selections are XSL patterns, not XPath
  std::unordered_map<const platform::XmlNode*, std::string> data_types;
  // The objects that scripts hold, so that one node is one object. Not counted: each takes itself
  // out when it goes.
  std::unordered_map<const platform::XmlNode*, Object*> objects;

 private:
  std::uint64_t changes_ = 0;
  HeldBytes held_;
};

using XmlTreeRef = std::shared_ptr<XmlTree>;

// White space at both ends left out, as the text of nodes is given.
std::string_view without_outer_space(std::string_view text);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_XML_TREE_H_
