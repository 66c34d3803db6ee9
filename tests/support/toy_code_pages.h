// A double-byte code page of four characters, so that services are tested without an engine:
// C4E3 is U+4F60, BAC3 is U+597D, D6D0 is U+4E2D, CEC4 is U+6587; bytes below 0x80 are ASCII.
#ifndef RK_TESTS_SUPPORT_TOY_CODE_PAGES_H_
#define RK_TESTS_SUPPORT_TOY_CODE_PAGES_H_

#include <array>
#include <string>

#include "platform/code_page.h"

namespace rk::tests {

class ToyCodePages final : public platform::CodePages {
 public:
  bool supports(int) const override { return true; }

  std::string to_utf8(std::string_view bytes, int code_page,
                      std::optional<std::size_t>* first_bad = nullptr) const override {
    if (code_page == platform::kUtf8) return std::string(bytes);
    std::string utf8;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (static_cast<unsigned char>(bytes[i]) < 0x80) {
        utf8 += bytes[i];
        continue;
      }
      const Pair* pair = find([&](const Pair& p) { return bytes.substr(i, 2) == p.bytes; });
      if (pair == nullptr && first_bad != nullptr && !*first_bad) *first_bad = i;
      utf8 += pair == nullptr ? "\xEF\xBF\xBD" : pair->utf8;
      if (pair != nullptr) ++i;
    }
    return utf8;
  }

  std::string from_utf8(std::string_view utf8, int code_page) const override {
    if (code_page == platform::kUtf8) return std::string(utf8);
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size();) {
      const auto first = static_cast<unsigned char>(utf8[i]);
      const std::size_t size = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
      const Pair* pair = find([&](const Pair& p) { return utf8.substr(i, size) == p.utf8; });
      if (size == 1) {
        bytes += utf8[i];
      } else {
        bytes += pair == nullptr ? "?" : pair->bytes;
      }
      i += size;
    }
    return bytes;
  }

  bool is_lead_byte(unsigned char byte, int code_page) const override {
    return code_page != platform::kUtf8 && byte > 0x80 && byte != 0xFF;
  }

 private:
  struct Pair {
    std::string_view bytes;
    std::string_view utf8;
  };
  template <class Matches>
  static const Pair* find(Matches matches) {
    static constexpr std::array<Pair, 4> kPairs = {{{"\xC4\xE3", "\xE4\xBD\xA0"},
                                                    {"\xBA\xC3", "\xE5\xA5\xBD"},
                                                    {"\xD6\xD0", "\xE4\xB8\xAD"},
                                                    {"\xCE\xC4", "\xE6\x96\x87"}}};
    for (const Pair& pair : kPairs) {
      if (matches(pair)) return &pair;
    }
    return nullptr;
  }
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_TOY_CODE_PAGES_H_
