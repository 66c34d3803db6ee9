// What fuzz targets share: the check that ends the process, and parts of an input.
#ifndef RK_FUZZ_CHECKS_H_
#define RK_FUZZ_CHECKS_H_

#include <cstddef>
#include <cstdlib>
#include <string_view>

namespace rk::fuzz {

inline void must(bool holds) {
  if (!holds) std::abort();
}

// The part of the input up to the next NUL, which goes with it.
inline std::string_view next_part(std::string_view& input) {
  const std::size_t end = input.find('\0');
  const std::string_view part = input.substr(0, end);
  input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
  return part;
}

}  // namespace rk::fuzz

#endif  // RK_FUZZ_CHECKS_H_
