// Windows code pages by tables that are read out of ICU once a page and then only looked up.
//
// Known: 65001 (UTF-8), 874, 932, 936, 949, 950, 1250 to 1258. Several threads may call.
#ifndef RK_ADAPTERS_CODEPAGE_CODE_PAGES_H_
#define RK_ADAPTERS_CODEPAGE_CODE_PAGES_H_

#include <memory>

#include "platform/code_page.h"

namespace rk::codepage {

class IcuCodePages final : public platform::CodePages {
 public:
  IcuCodePages();
  ~IcuCodePages() override;

  bool supports(int code_page) const override;
  // A first byte whose second makes no character with it counts as one bad character; the second
  // goes with it only where it is not ASCII, so that no "<" or quote is swallowed.
  std::string to_utf8(std::string_view bytes, int code_page,
                      std::optional<std::size_t>* first_bad = nullptr) const override;
  // Half a surrogate pair becomes "?", in UTF-8 U+FFFD.
  std::string from_utf8(std::string_view utf8, int code_page) const override;
  bool is_lead_byte(unsigned char byte, int code_page) const override;

 private:
  struct Table;
  struct Slot;
  const Table& table(int code_page) const;

  std::unique_ptr<Slot[]> slots_;
};

}  // namespace rk::codepage

#endif  // RK_ADAPTERS_CODEPAGE_CODE_PAGES_H_
