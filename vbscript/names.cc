#include "vbscript/names.h"

#include "value/text.h"
#include "value/text_functions.h"

namespace rk::vbscript {

std::string folded_name(std::string_view name) {
  return is_ascii(name) ? lowered_ascii(name) : lower_case(name);
}

NameId Names::id(std::string_view name) {
  std::string folded = folded_name(name);
  const auto at = ids_.find(folded);
  if (at != ids_.end()) return at->second;
  const auto id = static_cast<NameId>(entries_.size());
  const Entry& entry = entries_.emplace_back(Entry{std::move(folded), std::string(name)});
  ids_.emplace(entry.folded, id);
  return id;
}

NameId Names::find(std::string_view name) const {
  const auto at = ids_.find(folded_name(name));
  return at == ids_.end() ? kNoName : at->second;
}

}  // namespace rk::vbscript
