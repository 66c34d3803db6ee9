#include "pagehost/components/charsets.h"

#include <array>
#include <utility>

#include "platform/code_page.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

std::string latin1_text(std::string_view bytes) {
  std::string out;
  for (const char c : bytes) append_code_point(out, static_cast<unsigned char>(c));
  return out;
}

std::string latin1_bytes(std::string_view utf8) {
  std::string out;
  for (const char16_t unit : Text(utf8).units()) {
    out += unit < 256 ? static_cast<char>(unit) : '?';
  }
  return out;
}

}  // namespace

std::optional<int> code_page_of_charset(std::string_view name) {
  static constexpr auto kNames = std::to_array<std::pair<std::string_view, int>>({
      {"utf-8", platform::kUtf8},
      {"utf8", platform::kUtf8},
      {"gb2312", platform::kGb2312},
      {"gbk", platform::kGb2312},
      {"gb18030", 936},
      {"unicode", kUtf16},
      {"utf-16", kUtf16},
      {"iso-8859-1", kLatin1},
      {"us-ascii", kLatin1},
      {"ascii", kLatin1},
      {"big5", 950},
      {"shift_jis", 932},
      {"shift-jis", 932},
      {"euc-kr", 949},
      {"ks_c_5601-1987", 949},
      {"windows-874", 874},
      {"windows-1250", 1250},
      {"windows-1251", 1251},
      {"windows-1252", 1252},
      {"windows-1253", 1253},
      {"windows-1254", 1254},
      {"windows-1255", 1255},
      {"windows-1256", 1256},
      {"windows-1257", 1257},
      {"windows-1258", 1258},
      {"x-ansi", 1252},
  });
  for (const auto& [known, code_page] : kNames) {
    if (equal_ignoring_case(known, name)) return code_page;
  }
  return std::nullopt;
}

std::string charset_decoded(std::string_view bytes, int code_page,
                            const platform::CodePages& code_pages) {
  if (code_page == kUtf16) return Text::from_bytes(bytes).string();
  if (code_page == kLatin1) return latin1_text(bytes);
  if (code_page == platform::kUtf8 && is_valid_utf8(bytes)) return std::string(bytes);
  return code_pages.to_utf8(bytes, code_page);
}

std::string charset_encoded(std::string_view utf8, int code_page,
                            const platform::CodePages& code_pages) {
  if (code_page == kUtf16) return Text(utf8).bytes();
  if (code_page == kLatin1) return latin1_bytes(utf8);
  if (code_page == platform::kUtf8) return std::string(utf8);
  return code_pages.from_utf8(utf8, code_page);
}

}  // namespace rk::pagehost
