#include "pagehost/pages/programs.h"

#include <utility>

#include "value/text.h"

namespace rk::pagehost {

std::string_view without_version(std::string_view name) {
  while (true) {
    const auto dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size()) return name;
    if (name.find_first_not_of("0123456789", dot + 1) != std::string_view::npos) return name;
    name = name.substr(0, dot);
  }
}

void Programs::add(std::string_view program_identifier, ObjectFactory factory) {
  factories_[lowered_ascii(program_identifier)] = std::move(factory);
}

const ObjectFactory* Programs::find(std::string_view program_identifier) const {
  const std::string name = lowered_ascii(program_identifier);
  auto found = factories_.find(name);
  if (found == factories_.end()) found = factories_.find(std::string(without_version(name)));
  return found == factories_.end() ? nullptr : &found->second;
}

}  // namespace rk::pagehost
