// The splitter: cuts the text of one page file into page text, script, and what stands for more
// (directives, includes, script blocks, object declarations). It knows no other file.
//
// The first "%>" ends a script, inside texts and comments too; "%\>" stands for "%>" there. Page
// text is kept to the byte. Pure; the pieces refer into the text that was given.
#ifndef RK_PAGEHOST_PAGES_PAGE_SPLITTER_H_
#define RK_PAGEHOST_PAGES_PAGE_SPLITTER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rk::pagehost {

// Attributes of a directive or tag: names in lower case, values without quotes.
using Attributes = std::vector<std::pair<std::string, std::string>>;
// Empty where it is not there.
std::string_view attribute(const Attributes& attributes, std::string_view lower_case_name);

struct PagePart {
  enum class Kind : std::uint8_t {
    Literal,
    Script,
    Expression,
    Directive,    // <%@ %>: attributes
    IncludeFile,  // text is the path, relative to the file
    IncludeVirtual,
    ScriptBlock,        // <script runat="Server">: attributes, text its content
    ObjectDeclaration,  // <object runat="Server">: attributes
    TypeLibrary,        // <!--METADATA TYPE="TypeLib"-->: attributes
    Unclosed,           // an opening without its end: text is the opening
  };
  Kind kind;
  std::string_view text;
  int line = 1;    // of the text's first character, from 1
  int column = 1;  // in characters, from 1
  Attributes attributes;
};

std::vector<PagePart> split_page(std::string_view utf8);

// An include that stands in the script of a block, which is not split any further.
struct BlockInclude {
  PagePart part;         // its line is of no use
  std::size_t from = 0;  // of the comment, in the block's text
  std::size_t past = 0;
};
std::optional<BlockInclude> first_include(std::string_view block_utf8);

// The code page that a directive of the file asks for, or 0; reads the bytes before they are text.
int code_page_directive(std::string_view bytes);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PAGE_SPLITTER_H_
