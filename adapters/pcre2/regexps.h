// Regular expressions of scripts on PCRE2 over 16-bit units.
//
// The dialect is the page language's: what PCRE2 adds to it (look-behind, possessive quantifiers,
// verbs, inline options, its further escapes) is refused or read as the plain letter it is there.
// Expressions work on units, not on characters beyond the basic plane, and letter case beyond
// Latin-1 counts. Several threads may call.
#ifndef RK_ADAPTERS_PCRE2_REGEXPS_H_
#define RK_ADAPTERS_PCRE2_REGEXPS_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/regexp.h"

namespace rk::pcre2 {

// Steps of one match: about a second of a processor, after which the expression is taken for one
// that would never end.
inline constexpr std::uint32_t kMatchLimit = 10'000'000;
// Memory of one match, in KiB.
inline constexpr std::uint32_t kHeapLimitKiB = 64 * 1024;
// Units of one pattern; compiling takes memory in proportion.
inline constexpr std::size_t kMaxPatternUnits = 32 * 1024;

class Regexps final : public platform::Regexps {
 public:
  std::shared_ptr<const platform::Regexp> compile(std::u16string_view pattern,
                                                  platform::RegexpOptions options) const override;
};

// The pattern as PCRE2 is to read it. Raises 5017 and 5018 for what the dialect does not have.
std::u16string translated(std::u16string_view pattern, bool ignore_case);

}  // namespace rk::pcre2

#endif  // RK_ADAPTERS_PCRE2_REGEXPS_H_
