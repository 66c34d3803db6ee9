// Profile strings that keep what they were asked for, and answer from a map.
#ifndef RK_TESTS_SUPPORT_RECORDING_PROFILE_STRINGS_H_
#define RK_TESTS_SUPPORT_RECORDING_PROFILE_STRINGS_H_

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "platform/profile_strings.h"

namespace rk::tests {

class RecordingProfileStrings final : public platform::ProfileStrings {
 public:
  std::string read(std::string_view section, std::string_view key, std::size_t size,
                   std::string_view path) override {
    last_size = size;
    const auto found = values.find({std::string(path), std::string(section), std::string(key)});
    return found == values.end() ? "" : found->second.substr(0, size - 1);
  }
  bool write(std::string_view section, std::optional<std::string_view> key,
             std::optional<std::string_view> value, std::string_view path) override {
    const auto shown = [](std::optional<std::string_view> text) {
      return text ? "'" + std::string(*text) + "'" : std::string("null");
    };
    writes.push_back(std::string(path) + " " + std::string(section) + " " + shown(key) + " " +
                     shown(value));
    return false;
  }

  std::map<std::tuple<std::string, std::string, std::string>, std::string> values;
  std::vector<std::string> writes;
  std::size_t last_size = 0;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_RECORDING_PROFILE_STRINGS_H_
