// Any bytes as a script and as an expression alone: a tree, or an error with a place.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "vbscript/parser.h"
#include "vbscript/syntax_error.h"

namespace {

template <class Parse>
void parsed(Parse&& parse) {
  try {
    if (parse() == nullptr) std::abort();
  } catch (const rk::vbscript::SyntaxError& error) {
    if (error.line() < 1 || error.column() < 1) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  rk::vbscript::Source source;
  source.files.emplace_back("fuzz.vbs");
  source.pieces.emplace_back().text = std::string_view(reinterpret_cast<const char*>(data), size);
  parsed([&] { return rk::vbscript::Parser(source).script(); });
  parsed([&] { return rk::vbscript::Parser(source).expression_alone(); });
  return 0;
}
