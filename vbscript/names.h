// Names of one compilation, numbered: two spellings that differ in letter case only are one name.
#ifndef RK_VBSCRIPT_NAMES_H_
#define RK_VBSCRIPT_NAMES_H_

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace rk::vbscript {

using NameId = std::int32_t;
inline constexpr NameId kNoName = -1;

class Names {
 public:
  Names() = default;
  Names(const Names&) = delete;
  Names& operator=(const Names&) = delete;

  NameId id(std::string_view name);
  // kNoName where it was never numbered.
  NameId find(std::string_view name) const;
  // In lower case, and as first written.
  const std::string& folded(NameId id) const {
    return entries_[static_cast<std::size_t>(id)].folded;
  }
  const std::string& text(NameId id) const { return entries_[static_cast<std::size_t>(id)].text; }
  std::size_t size() const { return entries_.size(); }

 private:
  struct Entry {
    std::string folded;
    std::string text;
  };
  std::deque<Entry> entries_;
  std::unordered_map<std::string_view, NameId> ids_;
};

// Names without letter case, in any script.
std::string folded_name(std::string_view name);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_NAMES_H_
