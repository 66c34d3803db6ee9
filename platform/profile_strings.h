// INI files by the rules of profile strings: section and key names without letter case, the first
// match wins, blanks around values do not count, the rest of the file stays as it was. All texts
// are bytes of the ANSI code page. Several threads may call.
#ifndef RK_PLATFORM_PROFILE_STRINGS_H_
#define RK_PLATFORM_PROFILE_STRINGS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace rk::platform {

class ProfileStrings {
 public:
  virtual ~ProfileStrings() = default;
  // The key's value, cut to `size` - 1 bytes; "" where file, section or key is missing.
  virtual std::string read(std::string_view section, std::string_view key, std::size_t size,
                           std::string_view path) = 0;
  // No key deletes the section, no value deletes the key. False where nothing could be written.
  virtual bool write(std::string_view section, std::optional<std::string_view> key,
                     std::optional<std::string_view> value, std::string_view path) = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_PROFILE_STRINGS_H_
