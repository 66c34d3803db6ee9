// Code pages for fuzz targets: one byte a character in each, so that any bytes are text.
#ifndef RK_FUZZ_LATIN_PAGES_H_
#define RK_FUZZ_LATIN_PAGES_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"
#include "value/text.h"

namespace rk::fuzz {

class LatinPages final : public platform::CodePages {
 public:
  bool supports(int) const override { return true; }
  std::string to_utf8(std::string_view bytes, int, std::optional<std::size_t>*) const override {
    std::string out;
    for (const char c : bytes) append_code_point(out, static_cast<unsigned char>(c));
    return out;
  }
  std::string from_utf8(std::string_view utf8, int) const override { return std::string(utf8); }
};

}  // namespace rk::fuzz

#endif  // RK_FUZZ_LATIN_PAGES_H_
