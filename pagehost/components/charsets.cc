#include "pagehost/components/charsets.h"

#include <array>
#include <utility>

#include "platform/code_page.h"
#include "value/text.h"

namespace rk::pagehost {

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

}  // namespace rk::pagehost
