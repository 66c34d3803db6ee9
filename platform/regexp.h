// Regular expressions over 16-bit units, with the page language's dialect. Several threads may
// call the factory; a compiled expression may be used by several threads.
#ifndef RK_PLATFORM_REGEXP_H_
#define RK_PLATFORM_REGEXP_H_

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace rk::platform {

struct RegexpOptions {
  bool ignore_case = false;
  bool multiline = false;
};

// A stretch of the subject in units; the whole match first, then the groups. A group that took no
// part has no stretch.
struct RegexpMatch {
  struct Stretch {
    std::size_t start = 0;
    std::size_t length = 0;
  };
  std::vector<std::optional<Stretch>> stretches;
};

class Regexp {
 public:
  virtual ~Regexp() = default;
  // The first match at or after `from`, or nothing. Raises 28 where the match limit is reached.
  virtual std::optional<RegexpMatch> match(std::u16string_view subject, std::size_t from) const = 0;
};

class Regexps {
 public:
  virtual ~Regexps() = default;
  // Raises 5017 "Syntax error in regular expression" and its kin.
  virtual std::shared_ptr<const Regexp> compile(std::u16string_view pattern,
                                                RegexpOptions options) const = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_REGEXP_H_
