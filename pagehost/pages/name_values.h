// NameValues: names in any letter case, each with the values that were given under it, in the order
// of their first appearance: what a query string, a form or a cookie header holds. One thread.
#ifndef RK_PAGEHOST_PAGES_NAME_VALUES_H_
#define RK_PAGEHOST_PAGES_NAME_VALUES_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/code_page.h"
#include "value/text.h"

namespace rk::pagehost {

// Hash and equality of names without letter case (ASCII), for lookups without a copy.
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const noexcept;
};
struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    return equal_ignoring_case(a, b);
  }
};

class NameValues {
 public:
  struct Entry {
    std::string name;
    std::vector<std::string> values;
    std::string joined() const;  // ", " between
  };

  void add(std::string name, std::string value);
  const Entry* find(std::string_view name) const;  // null where there is none
  const std::vector<Entry>& entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::size_t, NameHash, NameEqual> places_;
};

// a=1&b=2, percent-encoded in a code page. A part without "=" is a value of the empty name.
NameValues parsed_form(std::string_view text, int code_page, const platform::CodePages& code_pages);

struct CookieText {
  std::string name;   // decoded
  std::string value;  // as sent
};
// The cookies of a Cookie header, the first of each name.
std::vector<CookieText> parsed_cookies(std::string_view header, int code_page,
                                       const platform::CodePages& code_pages);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_NAME_VALUES_H_
