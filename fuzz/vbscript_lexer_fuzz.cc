// Any bytes as tokens: each lies in the text, they come in its order, and what is refused is
// refused with a place in the text.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "vbscript/lexer.h"
#include "vbscript/syntax_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  rk::vbscript::Source source;
  source.files.emplace_back("fuzz.vbs");
  source.pieces.emplace_back().text = std::string_view(reinterpret_cast<const char*>(data), size);
  try {
    const std::vector<rk::vbscript::Token> tokens = rk::vbscript::Lexer(source).tokens();
    std::uint32_t before = 0;
    for (const rk::vbscript::Token& token : tokens) {
      if (token.offset < before || token.offset > size) std::abort();
      before = token.offset;
    }
  } catch (const rk::vbscript::SyntaxError& error) {
    if (error.line() < 1 || error.column() < 1) std::abort();
  }
  return 0;
}
