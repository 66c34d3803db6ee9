// VariableStore: values under names without letter case, in the order in which they were first
// stored: the contents of the application or of a session. Not locked; its owner is.
#ifndef RK_PAGEHOST_PAGES_VARIABLE_STORE_H_
#define RK_PAGEHOST_PAGES_VARIABLE_STORE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pagehost/pages/name_values.h"
#include "value/value.h"

namespace rk::pagehost {

class VariableStore {
 public:
  struct Variable {
    std::string name;  // as first stored
    Value value;
  };

  const Value* find(std::string_view name) const;  // null where never stored
  void set(std::string_view name, Value value);
  void remove(std::string_view name);
  void clear();
  std::size_t size() const { return variables_.size(); }
  const Variable& at(std::size_t place) const { return variables_.at(place); }

 private:
  std::vector<Variable> variables_;
  std::unordered_map<std::string, std::size_t, NameHash, NameEqual> places_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_VARIABLE_STORE_H_
