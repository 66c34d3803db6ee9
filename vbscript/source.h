// What is compiled: the pieces of a page or script, in order, with the place each came from.
//
// A page is script between its script marks and page text outside them; includes put the pieces of
// one file between those of another. A statement may span pieces: an If opened in one and closed in
// another holds the page text between. All text is UTF-8. Plain data, for one thread.
#ifndef RK_VBSCRIPT_SOURCE_H_
#define RK_VBSCRIPT_SOURCE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace rk::vbscript {

struct SourcePiece {
  enum class Kind : std::uint8_t {
    Script,      // statements; the end of the piece ends a line
    Literal,     // page text that is written as it is
    Expression,  // an expression whose value is written
  };
  Kind kind = Kind::Script;
  std::string text;
  int file = 0;    // index into Source::files
  int line = 1;    // line of the piece's first character
  int column = 1;  // its column, in characters
};

struct Source {
  std::vector<std::string> files;  // as errors name them
  std::vector<SourcePiece> pieces;
};

// A place that errors name.
struct SourcePlace {
  int file = 0;
  int line = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_SOURCE_H_
